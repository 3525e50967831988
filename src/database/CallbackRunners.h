#pragma once

#include "database/QueryTask.h"
#include "database/Task.h"

/// What calls a task's callback on the GUI thread: whatever the callback throws is logged under its kind.
namespace Stemhaven {

void invokeCallback(const Task::SuccessCallback& callback, const std::shared_ptr<Task>& task);

void invokeErrorCallback(
    const Task::ErrorCallback& callback, const std::shared_ptr<Task>& task, const Exception& error);

void invokeSqlErrorCallback(
    const QueryTask::SqlErrorCallback& callback, const std::shared_ptr<Task>& task, const DbException& error);

void invokeQueryCallback(
    const QueryTask::QueryCallback& callback, const std::shared_ptr<Task>& task, int rowCount,
    QSqlQuery* query);

void invokeOnInsertCallback(
    const QueryTask::OnInsertCallback& callback, const std::shared_ptr<Task>& task, long long insertId);

} // namespace Stemhaven
