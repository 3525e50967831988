#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class QSqlDatabase;
class QString;

namespace Stemhaven {

class Exception;
class Outage;
class TaskManager;

/// A piece of work for the task manager's worker thread, with callbacks on the GUI thread and follow-up
/// tasks.
///
/// Always held by shared pointer. exec() runs on the worker; every callback it posts runs on the GUI thread;
/// the follow-ups run on the worker after all of them have ended, also when the task failed. A callback may
/// append follow-ups to the task that it was called for: that is how a step comes to depend on the result of
/// the one before.
class Task : public std::enable_shared_from_this<Task> {
public:
    using SuccessCallback = std::function<void(std::shared_ptr<Task>)>;
    using ErrorCallback = std::function<void(std::shared_ptr<Task>, const Exception&)>;

    /// Does the work and returns how many callbacks it posted.
    virtual unsigned short exec() = 0;

    /// Whether the work must be done even when the manager is shutting down; its callbacks are not called
    /// then.
    virtual bool outlastsShutDown() const { return false; }

    virtual ~Task();
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;

    void setSuccessCallback(SuccessCallback callback);
    void setErrorCallback(ErrorCallback callback);

    /// From any thread, until the last of this task's callbacks has ended.
    void addNextTask(std::shared_ptr<Task> task);

    /// Runs the follow-ups in order, each with its own follow-ups before its next sibling. On the worker.
    void runNextTasks();

    /// Blocks until the posted callbacks of task have ended, then runs its follow-ups. On the worker.
    static void
    waitForCallbacksThenRunNextSubTasks(const std::shared_ptr<Task>& task, const unsigned short& posted);

protected:
    /// database outlives the task. Null for a task that uses none.
    explicit Task(QSqlDatabase* database);

    QSqlDatabase& database() const { return *m_database; }

    TaskManager* manager() const { return m_manager; }

    Outage& outage() const;

    /// Whether the end has begun, from which on nobody can be told of anything.
    bool callbacksHaveCeased() const;

    /// Posts a callback, if there is one; its failure is logged by the runner that is called with it. Returns
    /// the number of callbacks posted, 0 or 1.
    unsigned short post(std::function<void()> runner);
    unsigned short postSuccess();
    unsigned short postError(const Exception& error);
    /// Posts the error, or logs it under headline where there is no error callback.
    unsigned short postOrLogError(const QString& headline, const Exception& error);

private:
    friend class TaskManager;
    class CompletionToken;

    void runUnder(TaskManager& manager);
    void waitForCallbacks(unsigned short posted);
    std::shared_ptr<Task> nextTask(std::size_t index) const;

    QSqlDatabase* m_database;
    TaskManager* m_manager = nullptr;
    std::shared_ptr<const std::atomic<bool>> m_managerIsEnding;
    SuccessCallback m_successCallback;
    ErrorCallback m_errorCallback;
    mutable std::mutex m_nextTasksMutex;
    std::vector<std::shared_ptr<Task>> m_nextTasks;
    unsigned short m_completedCallbacks = 0;
};

} // namespace Stemhaven
