#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QSqlQuery;

namespace Stemhaven {

/// A database file beside the worker's work: a copy, one that came out of a backup, or a live one. Open on a
/// connection of its own while the object lives; its contents are only read. One thread at a time.
class DatabaseFile {
public:
    /// ReadWrite is for live files: it also reads what a killed program left half written, since SQLite may
    /// put that right then. ReadOnly changes nothing, but may leave empty files of SQLite's beside the
    /// database.
    enum class Access { ReadOnly, ReadWrite };
    /// Unknown where the file cannot be read, is locked or the check was given up; Foreign where it holds
    /// what this program never writes and must not work with.
    enum class Condition { Sound, Damaged, Foreign, Unknown };
    /// Quick leaves out whether the indexes agree with their tables, which is most of the time.
    enum class Check { Quick, Whole };

    /// A missing file is not made. connectionName is free again once the object is gone; an empty one stands
    /// for any.
    explicit DatabaseFile(
        const QString& path, Access access = Access::ReadOnly, const QString& connectionName = {});
    /// Closes and removes the connection.
    ~DatabaseFile();
    Q_DISABLE_COPY_MOVE(DatabaseFile)

    bool isOpen() const;

    /// Asked while a call goes on, which fails once the answer is true.
    void giveUpWhen(std::function<bool()> isGivenUp);

    Condition check(Check check);

    /// What the main database says that it is of; the first row counts. Nothing where it does not say.
    std::optional<QString> version();
    bool hasTable(const QString& name);
    /// The watched folders, of the root-paths database. Nothing where they cannot be read.
    std::optional<QStringList> rootPaths();

    /// Writes what the database holds now into a new file that only its user may read, in one piece, though
    /// others may be writing to it. They do not wait for it where the database has a write-ahead log.
    bool copyTo(const QString& path);

    /// Why the last call failed.
    QString error() const { return m_error; }

private:
    bool run(QSqlQuery& query, const QString& statement);

    QString m_connection;
    QString m_error;
    std::function<bool()> m_isGivenUp;
};

} // namespace Stemhaven
