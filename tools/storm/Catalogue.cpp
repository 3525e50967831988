#include "Catalogue.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <stdexcept>

namespace Storm {

namespace {

const QString connectionName = QStringLiteral("storm");

} // namespace

Catalogue::Catalogue(const QString& databasePath)
    : m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName)) {
    m_database.setDatabaseName(databasePath);
    m_database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=30000"));
    // Opening makes the file where it is missing, and the folder above it is the program's to make.
    if (QFile::exists(databasePath))
        m_database.open();
}

Catalogue::~Catalogue() {
    m_database = {};
    QSqlDatabase::removeDatabase(connectionName);
}

std::vector<Record> Catalogue::records() const {
    std::vector<Record> records;
    if (!m_database.isOpen())
        return records;
    QSqlQuery query(m_database);
    query.exec(QStringLiteral("SELECT project_id, filepath || filename, bpm, SUFID, star_rating, notes FROM "
                              "projects ORDER BY project_id"));
    while (query.next()) {
        records.push_back(
            {query.value(0).toLongLong(),
             query.value(1).toString().toStdString(),
             query.value(2).toDouble(),
             query.value(3).toString().toStdString(),
             {query.value(4).toInt(), query.value(5).toString().toStdString()}});
    }
    return records;
}

void Catalogue::setUserData(std::int64_t recordId, const UserData& userData) const {
    QSqlQuery query(m_database);
    query.prepare(QStringLiteral("UPDATE projects SET star_rating=?, notes=? WHERE project_id=?"));
    query.addBindValue(userData.stars);
    query.addBindValue(QString::fromStdString(userData.notes));
    query.addBindValue(static_cast<qlonglong>(recordId));
    if (!query.exec() || query.numRowsAffected() != 1)
        throw std::runtime_error("User data could not be set: " + query.lastError().text().toStdString());
}

} // namespace Storm
