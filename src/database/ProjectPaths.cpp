#include "database/ProjectPaths.h"

#include "app/errors/DbException.h"
#include "database/ProjectStatements.h"
#include "database/SqlText.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <functional>

namespace Stemhaven {

namespace {

/// The statement's first two columns are the two parts of the path.
void forEachPath(
    QSqlDatabase& database, const QString& statement,
    const std::function<void(const QString& path, const QSqlQuery& query)>& onRow) {
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(statement))
        throw DbException(&query, QStringLiteral("Query had an error"));
    while (query.next())
        onRow(unescape(query.value(0).toString()) + unescape(query.value(1).toString()), query);
}

} // namespace

QSet<QString> readProjectPaths(QSqlDatabase& database) {
    QSet<QString> paths;
    forEachPath(database, ProjectStatements::selectPaths(), [&](const QString& path, const QSqlQuery&) {
        paths.insert(path);
    });
    return paths;
}

QHash<QString, qint64> readModificationTimes(QSqlDatabase& database, const QSet<QString>& paths) {
    QHash<QString, qint64> times;
    times.reserve(paths.size());
    forEachPath(
        database, ProjectStatements::selectModificationTimes(),
        [&](const QString& path, const QSqlQuery& query) {
            // Shares the texts of the set: for 100,000 records, copies would take megabytes.
            if (const auto known = paths.constFind(path); known != paths.cend())
                times.insert(*known, query.value(2).toLongLong());
        });
    return times;
}

} // namespace Stemhaven
