#include "database/Connection.h"

#include "app/errors/DbException.h"
#include "database/SqliteLibrary.h"
#include "platform/PrivateFiles.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace Stemhaven {

namespace {

void run(QSqlDatabase& database, const char* statement) {
    QSqlQuery query(database);
    if (!query.exec(QLatin1String(statement)))
        qWarning() << "Could not set up the database connection!" << DbException(database, &query, statement);
}

} // namespace

void openDatabase(QSqlDatabase& database, const QString& path, const QString& failureMessage) {
    if (database.isOpen())
        return;
    QDir().mkpath(QFileInfo(path).absolutePath());
    // SQLite makes its other files with the permissions of this one.
    makePrivateFile(path);
    database.setDatabaseName(path);
    if (!database.open())
        throw DbException(database, failureMessage);
    run(database, "PRAGMA busy_timeout=5000");
    SqliteLibrary::harden(database);
}

void prepareMainConnection(QSqlDatabase& database) {
    run(database, "PRAGMA journal_mode=WAL");
    run(database, "PRAGMA synchronous=NORMAL");
    ensureLookUpTables(database);
}

void ensureLookUpTables(QSqlDatabase& database) {
    QSqlQuery table(database);
    if (!table.exec(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type='table' AND name='projects'")) ||
        !table.next())
        return;
    table.finish();
    run(database,
        "CREATE TABLE IF NOT EXISTS former_identities (project_id INTEGER NOT NULL, SUFID TEXT NOT NULL, "
        "PRIMARY KEY (project_id, SUFID)) WITHOUT ROWID");
    run(database, "CREATE INDEX IF NOT EXISTS projects_by_sufid ON projects(SUFID)");
    run(database, "CREATE INDEX IF NOT EXISTS projects_by_path ON projects(filename, filepath)");
    run(database,
        "CREATE INDEX IF NOT EXISTS collections_by_project ON collections_projects_map(project_id, "
        "collection_id)");
    run(database, "CREATE INDEX IF NOT EXISTS tags_by_project ON project_tag_map(project_id, tag_id)");
}

void checkpoint(QSqlDatabase& database) {
    if (!database.isOpen())
        return;
    // Nothing is lost where this fails: the log stays, and the next checkpoint takes it up.
    QSqlQuery(database).exec(QStringLiteral("PRAGMA wal_checkpoint(PASSIVE)"));
}

} // namespace Stemhaven
