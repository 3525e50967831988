#include "database/DatabaseFile.h"

#include "database/DatabaseInitStatements.h"
#include "database/RootPathStatements.h"
#include "database/SchemaCheck.h"
#include "database/SqlText.h"
#include "database/SqliteLibrary.h"
#include "platform/PrivateFiles.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <atomic>
#include <utility>

namespace Stemhaven {

namespace {

QString anyConnectionName() {
    static std::atomic<unsigned> counter = 0;
    return QStringLiteral("database_file_connection_%1").arg(counter++);
}

/// Whether it is the file's contents that SQLite cannot make sense of.
bool saysDamaged(const QSqlError& error) {
    constexpr int corrupt = 11;
    constexpr int notADatabase = 26;
    constexpr int kind = 0xff;
    const int code = error.nativeErrorCode().toInt() & kind;
    return code == corrupt || code == notADatabase;
}

} // namespace

DatabaseFile::DatabaseFile(const QString& path, Access access, const QString& connectionName)
    : m_connection(connectionName.isEmpty() ? anyConnectionName() : connectionName) {
    auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    database.setDatabaseName(path);
    database.setConnectOptions(
        access == Access::ReadOnly ? QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=5000")
                                   : QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    // SQLite would make a missing file.
    if (!QFileInfo::exists(path))
        m_error = QStringLiteral("no such file");
    else if (!database.open())
        m_error = database.lastError().text();
    else
        SqliteLibrary::harden(database);
}

DatabaseFile::~DatabaseFile() {
    QSqlDatabase::database(m_connection, false).close();
    QSqlDatabase::removeDatabase(m_connection);
}

bool DatabaseFile::isOpen() const {
    return QSqlDatabase::database(m_connection, false).isOpen();
}

void DatabaseFile::giveUpWhen(std::function<bool()> isGivenUp) {
    m_isGivenUp = std::move(isGivenUp);
    if (m_isGivenUp && isOpen())
        SqliteLibrary::interruptWhen(QSqlDatabase::database(m_connection, false), m_isGivenUp);
}

bool DatabaseFile::run(QSqlQuery& query, const QString& statement) {
    query.setForwardOnly(true);
    const bool done = query.exec(statement);
    m_error = query.lastError().text();
    return done;
}

DatabaseFile::Condition DatabaseFile::check(Check check) {
    // First, since the check itself computes what the schema says.
    if (const auto part = foreignPartOf(QSqlDatabase::database(m_connection, false)); !part.isEmpty()) {
        m_error = part;
        return Condition::Foreign;
    }
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    const bool done =
        run(query,
            check == Check::Quick ? QStringLiteral("PRAGMA quick_check(1)")
                                  : QStringLiteral("PRAGMA integrity_check(1)"));
    if (!done || !query.next()) {
        m_error = query.lastError().text();
        return saysDamaged(query.lastError()) ? Condition::Damaged : Condition::Unknown;
    }
    const QString finding = query.value(0).toString();
    if (finding == QLatin1String("ok"))
        return Condition::Sound;
    m_error = finding;
    return Condition::Damaged;
}

std::optional<QString> DatabaseFile::version() {
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!run(query, DatabaseInitStatements(currentDatabaseVersion).selectVersion()))
        return std::nullopt;
    if (!query.next()) {
        m_error = QStringLiteral("no row");
        return std::nullopt;
    }
    return query.value(QStringLiteral("database_version")).toString();
}

bool DatabaseFile::hasTable(const QString& name) {
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    return run(query,
               QStringLiteral("SELECT 1 FROM sqlite_master WHERE type='table' AND name='%1'")
                   .arg(escape(name))) &&
        query.next();
}

std::optional<QStringList> DatabaseFile::rootPaths() {
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!isOpen() || !run(query, RootPathStatements::selectAll()))
        return std::nullopt;
    QStringList paths;
    while (query.next())
        paths += query.value(QStringLiteral("root_search_path")).toString();
    return paths;
}

bool DatabaseFile::copyTo(const QString& path) {
    // Through the driver's own SQLite and not a second one in the process, whose closing of the file would
    // end the locks of the first. The statement reads in one transaction, so what others write meanwhile is
    // not in the copy.
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    // SQLite writes into an empty file, too.
    makePrivateFile(path);
    return run(query, QStringLiteral("VACUUM INTO '%1'").arg(escape(path)));
}

} // namespace Stemhaven
