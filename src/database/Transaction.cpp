#include "database/Transaction.h"

#include "app/errors/DbException.h"

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace Stemhaven {

Transaction::Transaction(QSqlDatabase& database) : m_database(database) {
    // A reader that wants to write later may be refused it.
    QSqlQuery query(m_database);
    execute(query, QStringLiteral("BEGIN IMMEDIATE"));
}

Transaction::~Transaction() {
    if (!m_committed)
        QSqlQuery(m_database).exec(QStringLiteral("ROLLBACK"));
}

void Transaction::execute(QSqlQuery& query, const QString& statement) const {
    qDebug() << "Transaction::execute() -> " << statement;
    if (!query.exec(statement))
        throw DbException(m_database, &query, QStringLiteral("Query had an error"));
}

void Transaction::commit() {
    QSqlQuery query(m_database);
    execute(query, QStringLiteral("COMMIT"));
    m_committed = true;
}

} // namespace Stemhaven
