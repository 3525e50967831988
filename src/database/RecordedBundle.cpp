#include "database/RecordedBundle.h"

#include "app/errors/DbException.h"
#include "database/ProjectStatements.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

namespace Stemhaven {

QHash<QString, RecordedBundle> readRecordedBundles(QSqlDatabase& database) {
    enum Column { Filepath, Filename, Sufid, LastModified, LastUpdated };

    constexpr qint64 nanosecondsPerSecond = 1'000'000'000;

    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(ProjectStatements::selectRecordedBundles()))
        throw DbException(&query, QStringLiteral("Query had an error"));
    QHash<QString, RecordedBundle> bundles;
    while (query.next()) {
        bundles.insert(
            query.value(Filepath).toString() + query.value(Filename).toString(),
            {SystemUniqueFileID::fromString(query.value(Sufid).toString()),
             query.value(LastModified).toLongLong(),
             query.value(LastUpdated).toLongLong() * nanosecondsPerSecond});
    }
    return bundles;
}

} // namespace Stemhaven
