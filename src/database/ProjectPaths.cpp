#include "database/ProjectPaths.h"

#include "app/errors/DbException.h"
#include "database/ProjectStatements.h"
#include "database/SqlText.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

namespace Stemhaven {

QSet<QString> readProjectPaths(QSqlDatabase& database) {
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(ProjectStatements::selectPaths()))
        throw DbException(&query, QStringLiteral("Query had an error"));
    QSet<QString> paths;
    while (query.next())
        paths.insert(unescape(query.value(0).toString()) + unescape(query.value(1).toString()));
    return paths;
}

} // namespace Stemhaven
