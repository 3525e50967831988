#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

/// The rows that are left of a query, columns joined by "|".
inline QStringList rowsOf(QSqlQuery& query) {
    QStringList rows;
    while (query.next()) {
        QStringList columns;
        for (int column = 0; query.value(column).isValid(); ++column)
            columns.append(query.value(column).toString());
        rows.append(columns.join(QLatin1Char('|')));
    }
    return rows;
}

/// The rows of the last statement, on a connection of our own to a database file that may be in use. "error"
/// for each statement that fails.
inline QStringList outsideRows(const QString& path, const QStringList& statements) {
    const auto name = QStringLiteral("outside");
    QStringList rows;
    {
        auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(path);
        database.open();
        QSqlQuery query(database);
        for (const auto& statement : statements) {
            if (!query.exec(statement))
                rows.append(QStringLiteral("error"));
        }
        rows += rowsOf(query);
    }
    QSqlDatabase::removeDatabase(name);
    return rows;
}
