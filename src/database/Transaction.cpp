#include "database/Transaction.h"

#include "app/errors/DbException.h"

#include <QSqlDatabase>
#include <QSqlQuery>

namespace Stemhaven {

namespace {

void execute(QSqlDatabase& database, const QString& statement) {
    QSqlQuery query(database);
    if (!query.exec(statement))
        throw DbException(database, &query, QStringLiteral("Query had an error"));
}

} // namespace

Transaction::Transaction(QSqlDatabase& database) : m_database(database) {
    execute(m_database, QStringLiteral("BEGIN IMMEDIATE"));
}

Transaction::~Transaction() {
    if (!m_committed)
        QSqlQuery(m_database).exec(QStringLiteral("ROLLBACK"));
}

void Transaction::commit() {
    execute(m_database, QStringLiteral("COMMIT"));
    m_committed = true;
}

} // namespace Stemhaven
