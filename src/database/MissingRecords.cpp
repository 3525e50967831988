#include "database/MissingRecords.h"

#include "app/errors/DbException.h"
#include "database/ProjectStatements.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

namespace Stemhaven {

namespace {

void addFirstColumn(QSet<qint64>& ids, QSqlQuery& query, bool hasRun) {
    if (!hasRun)
        throw DbException(&query, QStringLiteral("Query had an error"));
    while (query.next())
        ids.insert(query.value(0).toLongLong());
}

} // namespace

QSet<qint64> readMissingRecords(QSqlDatabase& database, const QSet<QString>& missingPaths) {
    QSet<qint64> ids;
    QSqlQuery query(database);
    query.setForwardOnly(true);
    addFirstColumn(ids, query, query.exec(ProjectStatements::selectWithoutPlace()));
    if (missingPaths.isEmpty())
        return ids;
    // One look-up in the index for each: mostly a few of very many are missing.
    const bool isPrepared = query.prepare(ProjectStatements::selectIdByPath());
    for (const QString& path : missingPaths) {
        const auto nameAt = path.lastIndexOf(QLatin1Char('/')) + 1;
        query.bindValue(0, path.left(nameAt));
        query.bindValue(1, path.mid(nameAt));
        addFirstColumn(ids, query, isPrepared && query.exec());
    }
    return ids;
}

} // namespace Stemhaven
