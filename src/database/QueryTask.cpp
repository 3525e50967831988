#include "database/QueryTask.h"

#include "app/errors/DbException.h"
#include "database/CallbackRunners.h"
#include "database/Outage.h"
#include "database/RowCount.h"
#include "database/TaskManager.h"

#include <QDebug>
#include <QPointer>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <utility>

namespace Stemhaven {

QueryTask::QueryTask(QString sql, QSqlDatabase& database) : Task(&database), m_sql(std::move(sql)) {}

void QueryTask::setQueryCallback(QueryCallback callback) {
    m_queryCallback = std::move(callback);
}

void QueryTask::setOnInsertCallback(OnInsertCallback callback) {
    m_onInsertCallback = std::move(callback);
}

void QueryTask::setSqlErrorCallback(SqlErrorCallback callback) {
    m_sqlErrorCallback = std::move(callback);
}

unsigned short QueryTask::exec() {
    try {
        return execute();
    } catch (const DbException& failure) {
        const auto error = outage().logged("Exception caught in QueryTask::exec()!", failure);
        if (m_sqlErrorCallback) {
            return post([this, error, self = shared_from_this()] {
                invokeSqlErrorCallback(m_sqlErrorCallback, self, error);
            });
        }
    } catch (const std::exception& error) {
        qCritical() << "Exception caught in QueryTask::exec()!" << error.what();
    } catch (...) {
        qCritical() << "Unknown exception caught in QueryTask::exec()!";
    }
    return 0;
}

unsigned short QueryTask::execute() {
    qDebug() << "QueryTask::exec() -> " << m_sql;
    auto query = std::make_unique<QSqlQuery>(database());
    query->exec(m_sql);
    if (query->lastError().type() != QSqlError::NoError)
        throw DbException(query.get(), QStringLiteral("Query had an error"));
    return postResults(std::move(query));
}

unsigned short QueryTask::postResults(std::unique_ptr<QSqlQuery> query) {
    const auto self = shared_from_this();
    unsigned short posted = 0;
    outage().succeeded();
    if (!query->isSelect()) {
        if (m_onInsertCallback && m_sql.contains(QLatin1String("insert"), Qt::CaseInsensitive)) {
            const auto insertId = query->lastInsertId().toLongLong();
            posted +=
                post([this, self, insertId] { invokeOnInsertCallback(m_onInsertCallback, self, insertId); });
        }
    } else if (m_queryCallback) {
        const int rows = rowCount(query.get());
        // The query goes back to the worker when the posted call ends, delivered or not.
        const std::shared_ptr<QSqlQuery> shared(
            query.release(), [manager = QPointer(manager())](QSqlQuery* finished) {
                if (manager)
                    manager->deleteQuery(finished);
                else
                    delete finished;
            });
        posted += post(
            [this, self, rows, shared] { invokeQueryCallback(m_queryCallback, self, rows, shared.get()); });
    }
    posted += postSuccess();
    return posted;
}

} // namespace Stemhaven
