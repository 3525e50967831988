#include "database/CallbackRunners.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"

#include <QString>

namespace Stemhaven {

void invokeCallback(const Task::SuccessCallback& callback, const std::shared_ptr<Task>& task) {
    loggingFailures(QStringLiteral("Task callback error!"), [&] { callback(task); });
}

void invokeErrorCallback(
    const Task::ErrorCallback& callback, const std::shared_ptr<Task>& task, const Exception& error) {
    loggingFailures(QStringLiteral("Task error callback error!"), [&] { callback(task, error); });
}

void invokeSqlErrorCallback(
    const QueryTask::SqlErrorCallback& callback, const std::shared_ptr<Task>& task,
    const DbException& error) {
    loggingFailures(QStringLiteral("Sql error callback error!"), [&] { callback(task, error); });
}

void invokeQueryCallback(
    const QueryTask::QueryCallback& callback, const std::shared_ptr<Task>& task, int rowCount,
    QSqlQuery* query) {
    loggingFailures(QStringLiteral("Query callback error!"), [&] { callback(task, rowCount, query); });
}

void invokeOnInsertCallback(
    const QueryTask::OnInsertCallback& callback, const std::shared_ptr<Task>& task, long long insertId) {
    loggingFailures(QStringLiteral("On insert callback error!"), [&] { callback(task, insertId); });
}

} // namespace Stemhaven
