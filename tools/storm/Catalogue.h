#pragma once

#include "LibraryModel.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <string>
#include <vector>

namespace Storm {

struct Record {
    std::int64_t id = 0;
    std::string path;
    double tempo = 0;
    /// Empty where a record has given its identity up.
    std::string sufid;
    UserData userData;
};

/// The program's database, seen and changed from outside while the program may be using it.
class Catalogue {
public:
    explicit Catalogue(const QString& databasePath);
    ~Catalogue();
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    /// None while there is no database, or none that can be read just now.
    std::vector<Record> records() const;
    /// How many rows there are that the program makes with the database, joined by "|": of the version, then
    /// of each kind of status. Empty while there are no such tables.
    std::string initialRows() const;
    /// Throws when it could not be written.
    void setUserData(std::int64_t recordId, const UserData& userData) const;

private:
    /// Of the entry of that name, which is made where there is none.
    QVariant idOf(const QString& table, const QString& column, const std::string& name) const;
    QSqlQuery execute(const QString& statement, const QVariantList& values) const;

    QSqlDatabase m_database;
};

} // namespace Storm
