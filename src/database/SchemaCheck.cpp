#include "database/SchemaCheck.h"

#include "app/logging/PrintableText.h"
#include "database/DatabaseInitStatements.h"
#include "database/SqlText.h"
#include "database/SqliteLibrary.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

namespace Stemhaven {

namespace {

/// Of both databases.
QStringList tableNames() {
    const DatabaseInitStatements statements(currentDatabaseVersion);
    auto texts = statements.initMainSQL();
    texts.append(statements.initRootPathsSQL());
    static const QRegularExpression table(QStringLiteral("CREATE TABLE IF NOT EXISTS (\\w+)"));
    QStringList names;
    for (const auto& text : texts)
        names.append(table.match(text).captured(1));
    return names;
}

/// Kind and name of the first thing in the schema that would be run or computed when our tables are used.
QString selectForeignObject() {
    return QStringLiteral(
               "WITH ours AS (SELECT * FROM sqlite_master WHERE lower(tbl_name) IN ('%1') OR "
               "lower(name) IN ('%1')), "
               "tables AS (SELECT * FROM ours WHERE type='table' AND rootpage<>0) "
               "SELECT type, name FROM ours WHERE type IN ('view', 'trigger') "
               "UNION ALL SELECT 'virtual table', name FROM ours WHERE type='table' AND rootpage=0 "
               "UNION ALL SELECT 'check', name FROM tables WHERE upper(sql) LIKE '%CHECK%' "
               "UNION ALL SELECT 'column', tables.name || '.' || c.name "
               "FROM tables, pragma_table_xinfo(tables.name) c WHERE c.hidden<>0 OR length(c.dflt_value)>64 "
               "UNION ALL SELECT 'index', i.name FROM tables, pragma_index_list(tables.name) i "
               "WHERE i.partial OR EXISTS (SELECT 1 FROM pragma_index_xinfo(i.name) WHERE cid=-2) LIMIT 1")
        .replace(QStringLiteral("%1"), tableNames().join(QStringLiteral("', '")));
}

QString described(const QString& kind, const QString& name) {
    constexpr int longest = 100;
    return QStringLiteral("%1 \"%2\"").arg(kind, Logging::printable(name.left(longest)));
}

QStringList columnsOf(const QSqlDatabase& database, const QString& table) {
    QStringList columns;
    QSqlQuery query(database);
    query.exec(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(escape(table)));
    while (query.next())
        columns.append(query.value(0).toString());
    return columns;
}

bool hasTooLargeValue(const QSqlDatabase& database, const QString& table) {
    constexpr int tooBig = 18;
    QStringList conditions;
    for (auto column : columnsOf(database, table)) {
        column.replace(QLatin1Char('"'), QLatin1String("\"\""));
        conditions.append(QStringLiteral("length(\"%1\")>%2").arg(column).arg(SqliteLibrary::largestValue));
    }
    if (conditions.isEmpty())
        return false;
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT 1 FROM %1 WHERE %2 LIMIT 1")
                   .arg(table, conditions.join(QStringLiteral(" OR "))));
    return query.next() || query.lastError().nativeErrorCode().toInt() == tooBig;
}

} // namespace

QString foreignPartOf(const QSqlDatabase& database) {
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (query.exec(selectForeignObject()) && query.next())
        return described(query.value(0).toString(), query.value(1).toString());
    query.finish();
    if (QFileInfo(database.databaseName()).size() <= SqliteLibrary::largestValue)
        return {};
    for (const auto& table : tableNames()) {
        if (hasTooLargeValue(database, table))
            return described(QStringLiteral("too large value"), table);
    }
    return {};
}

} // namespace Stemhaven
