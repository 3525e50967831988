#include "database/Task.h"

#include "app/Shutdown.h"
#include "app/errors/Exception.h"
#include "app/errors/Guarded.h"
#include "database/CallbackRunners.h"
#include "database/TaskManager.h"

#include <QString>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <utility>

namespace Stemhaven {

namespace {

// Guards the counters of completed callbacks of all tasks.
std::mutex callbackMutex;                  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
std::condition_variable callbackCompleted; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

} // namespace

/// Its end counts as the completion of a posted callback, whether that was called or destroyed undelivered.
class Task::CompletionToken {
public:
    explicit CompletionToken(std::shared_ptr<Task> task) : m_task(std::move(task)) {}

    ~CompletionToken() {
        const std::lock_guard lock(callbackMutex);
        ++m_task->m_completedCallbacks;
        callbackCompleted.notify_all();
    }

    CompletionToken(const CompletionToken&) = delete;
    CompletionToken& operator=(const CompletionToken&) = delete;

private:
    std::shared_ptr<Task> m_task;
};

Task::Task(QSqlDatabase* database) : m_database(database) {}

Task::~Task() = default;

void Task::setSuccessCallback(SuccessCallback callback) {
    m_successCallback = std::move(callback);
}

void Task::setErrorCallback(ErrorCallback callback) {
    m_errorCallback = std::move(callback);
}

void Task::addNextTask(std::shared_ptr<Task> task) {
    const std::lock_guard lock(m_nextTasksMutex);
    m_nextTasks.push_back(std::move(task));
}

std::shared_ptr<Task> Task::nextTask(std::size_t index) const {
    const std::lock_guard lock(m_nextTasksMutex);
    return index < m_nextTasks.size() ? m_nextTasks[index] : nullptr;
}

Outage& Task::outage() const {
    return m_manager->outageOf(*m_database);
}

void Task::runUnder(TaskManager& manager) {
    m_manager = &manager;
    m_managerIsEnding = manager.m_ending;
    manager.m_isEdit = outlastsShutDown();
}

bool Task::callbacksHaveCeased() const {
    return Shutdown::hasBegun() || (m_managerIsEnding && *m_managerIsEnding);
}

void Task::runNextTasks() {
    // By index, as a follow-up's callback may append to this very list.
    for (std::size_t index = 0; const auto next = nextTask(index); ++index) {
        // Follow-ups depend on callbacks, and there are none any more.
        if (callbacksHaveCeased())
            return;
        loggingFailures(QStringLiteral("Running next task failed."), [&] {
            next->runUnder(*m_manager);
            const auto posted = next->exec();
            waitForCallbacksThenRunNextSubTasks(next, posted);
        });
    }
}

void Task::waitForCallbacksThenRunNextSubTasks(
    const std::shared_ptr<Task>& task, const unsigned short& posted) {
    if (posted > 0)
        task->waitForCallbacks(posted);
    task->runNextTasks();
}

void Task::waitForCallbacks(unsigned short posted) {
    using namespace std::chrono_literals;
    constexpr std::chrono::nanoseconds longest = 100'000'000ns;

    // The rounds bound how late a shut-down is noticed; a callback that ends wakes the wait at once.
    std::chrono::nanoseconds delay = posted * 1500ns;
    std::unique_lock lock(callbackMutex);
    for (long long round = 2; m_completedCallbacks < posted && !callbacksHaveCeased(); ++round) {
        callbackCompleted.wait_for(lock, delay);
        if (delay < longest)
            delay = std::min<std::chrono::nanoseconds>(delay * (round * round * round), longest);
    }
}

unsigned short Task::post(std::function<void()> runner) {
    const auto token = std::make_shared<CompletionToken>(shared_from_this());
    auto call = [this, token, runner = std::move(runner)] {
        if (!callbacksHaveCeased())
            runner();
    };
    return Shutdown::post(std::move(call)) ? 1 : 0;
}

unsigned short Task::postSuccess() {
    if (!m_successCallback)
        return 0;
    return post([this, self = shared_from_this()] { invokeCallback(m_successCallback, self); });
}

unsigned short Task::postError(const Exception& error) {
    if (!m_errorCallback)
        return 0;
    const std::shared_ptr<const Exception> copy(error.clone());
    return post(
        [this, copy, self = shared_from_this()] { invokeErrorCallback(m_errorCallback, self, *copy); });
}

unsigned short Task::postOrLogError(const QString& headline, const Exception& error) {
    if (m_errorCallback)
        return postError(error);
    loggingFailures(headline, [&] { error.raise(); });
    return 0;
}

} // namespace Stemhaven
