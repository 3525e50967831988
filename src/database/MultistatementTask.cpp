#include "database/MultistatementTask.h"

#include "app/errors/DbException.h"
#include "database/CallbackRunners.h"
#include "database/Outage.h"
#include "database/Transaction.h"

#include <QDebug>
#include <QSqlError>
#include <QSqlQuery>

#include <optional>
#include <utility>

namespace Stemhaven {

MultistatementTask::MultistatementTask(QList<QString> statements, QSqlDatabase& database, Scope scope)
    : Task(&database),
      m_statements(std::move(statements)),
      m_scope(scope) {}

void MultistatementTask::setSqlErrorCallback(SqlErrorCallback callback) {
    m_sqlErrorCallback = std::move(callback);
}

unsigned short MultistatementTask::exec() {
    try {
        executeAll();
        outage().succeeded();
        return postSuccess();
    } catch (const DbException& failure) {
        const auto error = outage().logged("Exception caught in MultistatementTask::exec()!", failure);
        if (m_sqlErrorCallback) {
            return post([this, error, self = shared_from_this()] {
                invokeSqlErrorCallback(m_sqlErrorCallback, self, error);
            });
        }
    } catch (const std::exception& error) {
        qCritical() << "Exception caught in MultistatementTask::exec()!" << error.what();
    } catch (...) {
        qCritical() << "Unknown exception caught in QueryTask::exec()!";
    }
    return 0;
}

void MultistatementTask::executeAll() {
    std::optional<Transaction> transaction;
    if (m_scope == Scope::Transaction)
        transaction.emplace(database());
    QSqlQuery query(database());
    for (const auto& statement : std::as_const(m_statements)) {
        qDebug() << "MultistatementTask::exec() -> " << statement;
        query.exec(statement);
        if (query.lastError().type() != QSqlError::NoError)
            throw DbException(&query, QStringLiteral("Query had an error"));
        if (query.isSelect())
            qWarning() << "Multistatement query was SELECT. Result set is ignored!";
        query.finish();
    }
    if (transaction)
        transaction->commit();
}

} // namespace Stemhaven
