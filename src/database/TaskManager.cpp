#include "database/TaskManager.h"

#include "app/Paths.h"
#include "app/errors/DbException.h"
#include "app/errors/ErrorHandler.h"
#include "app/errors/Guarded.h"
#include "database/Connection.h"
#include "database/SimpleTask.h"
#include "database/SqliteLibrary.h"

#include <QDebug>
#include <QDir>
#include <QScopeGuard>
#include <QSqlQuery>
#include <QThreadPool>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Stemhaven {

namespace {

const QString driver = QStringLiteral("QSQLITE");
const QString mainConnection = QStringLiteral("main_db_connection");
const QString rootPathsConnection = QStringLiteral("root_paths_db_connection");

} // namespace

TaskManager& TaskManager::instance() {
    static TaskManager manager(mainDatabasePath(), rootPathsDatabasePath());
    return manager;
}

TaskManager::TaskManager(QString mainPath, QString rootPathsPath)
    : m_mainPath(std::move(mainPath)),
      m_rootPathsPath(std::move(rootPathsPath)),
      m_mainDatabase(QSqlDatabase::addDatabase(driver, mainConnection)),
      m_rootPathsDatabase(QSqlDatabase::addDatabase(driver, rootPathsConnection)) {
    m_anchor->manager = this;
}

TaskManager::~TaskManager() {
    shutDown();
    {
        const std::lock_guard lock(m_anchor->mutex);
        m_anchor->manager = nullptr;
    }
    m_mainDatabase = {};
    m_rootPathsDatabase = {};
    QSqlDatabase::removeDatabase(mainConnection);
    QSqlDatabase::removeDatabase(rootPathsConnection);
}

void TaskManager::shutDown() {
    {
        const std::lock_guard lock(m_queueMutex);
        m_stopRequested = true;
        *m_ending = true;
        // Enough for whatever the program asks of a catalogue in the ordinary way.
        constexpr std::chrono::milliseconds patience(500);
        if (m_interruptFrom == 0)
            m_interruptFrom = (std::chrono::steady_clock::now() + patience).time_since_epoch().count();
    }
    m_queueChanged.notify_all();
    {
        const std::lock_guard transition(m_transitionMutex);
        if (m_worker.joinable())
            m_worker.join();
        writeQueuedEdits();
        std::deque<std::shared_ptr<Task>> dropped;
        {
            const std::lock_guard lock(m_queueMutex);
            dropped.swap(m_queue);
            m_stopped = true;
        }
        // A dropped task may own a query or a model, which want their connection when they end.
        dropped.clear();
        closeConnections();
    }
    answerStops();
}

bool TaskManager::isStatementGivenUp() const {
    const auto from = m_interruptFrom.load();
    return from != 0 && !m_isEdit && std::chrono::steady_clock::now().time_since_epoch().count() >= from;
}

bool TaskManager::isLockAwaited(std::chrono::milliseconds waited) const {
    constexpr std::chrono::seconds longest(5);
    // After the moment from which statements are interrupted. All edits that are left wait that long
    // together.
    constexpr std::chrono::milliseconds longestAtEnd(900);
    const std::chrono::steady_clock::time_point interruptFrom(
        std::chrono::steady_clock::duration(m_interruptFrom.load()));
    if (interruptFrom == std::chrono::steady_clock::time_point())
        return waited < longest;
    return m_isEdit && std::chrono::steady_clock::now() < interruptFrom + longestAtEnd;
}

void TaskManager::writeQueuedEdits() {
    // Nothing waits for their callbacks, and follow-ups they have none.
    while (const auto edit = takeEdit()) {
        const bool done = loggingFailures(QStringLiteral("TaskManager: could not finish at the end!"), [&] {
            edit->runUnder(*this);
            openConnections();
            edit->exec();
        });
        if (done)
            continue;
        const std::lock_guard lock(m_queueMutex);
        m_queue.push_front(edit);
        return;
    }
}

std::shared_ptr<Task> TaskManager::takeEdit() {
    const std::lock_guard lock(m_queueMutex);
    const auto found = std::find_if(
        m_queue.begin(), m_queue.end(), [](const auto& task) { return task->outlastsShutDown(); });
    if (found == m_queue.end())
        return nullptr;
    auto edit = std::move(*found);
    m_queue.erase(found);
    return edit;
}

bool TaskManager::mayRun() const {
    return !m_stopRequested && !m_stopped;
}

void TaskManager::addTask(std::shared_ptr<Task> task) {
    {
        const std::lock_guard lock(m_queueMutex);
        m_queue.push_back(std::move(task));
        m_queueChanged.notify_all();
        if (!mayRun() || m_running)
            return;
        m_running = true;
    }
    startWorker();
}

void TaskManager::addTask(std::shared_ptr<Task> task, const std::shared_ptr<Task>& parent) {
    if (parent)
        parent->addNextTask(std::move(task));
    else
        addTask(std::move(task));
}

void TaskManager::deleteQuery(QSqlQuery* query) {
    // Owned by the task, so that a dropped task frees it too.
    auto task = std::make_shared<SimpleTask>(
        [owned = std::shared_ptr<QSqlQuery>(query)]() mutable { owned.reset(); });
    {
        const std::lock_guard lock(m_queueMutex);
        // Ahead of the others: a result is not kept in memory while a long queue is worked off.
        m_queue.push_front(std::move(task));
        m_queueChanged.notify_all();
        if (!mayRun() || m_running)
            return;
        m_running = true;
    }
    startWorker();
}

void TaskManager::startWorker() {
    const std::lock_guard transition(m_transitionMutex);
    if (m_worker.joinable())
        m_worker.join();
    {
        const std::lock_guard lock(m_queueMutex);
        if (!mayRun()) {
            m_running = false;
            return;
        }
    }
    m_worker = std::thread([this] { runTasks(); });
}

bool TaskManager::isIdle() {
    const std::lock_guard lock(m_queueMutex);
    return m_queue.empty() && !m_running;
}

void TaskManager::stop() {
    {
        const std::lock_guard lock(m_queueMutex);
        if (*m_ending || (m_stopRequested && !m_restartRequested))
            return;
        ++m_unansweredStops;
        m_stopRequested = true;
        // A stop before the one that is to be restarted from: its job answers this one, too.
        if (std::exchange(m_restartRequested, false))
            return;
    }
    m_queueChanged.notify_all();
    QThreadPool::globalInstance()->start([anchor = m_anchor] {
        const std::lock_guard lock(anchor->mutex);
        if (anchor->manager)
            anchor->manager->carryOutStop();
    });
}

void TaskManager::carryOutStop() {
    {
        const std::lock_guard transition(m_transitionMutex);
        if (m_worker.joinable())
            m_worker.join();
        if (!*m_ending)
            writeQueuedEdits();
        closeConnections();
        const std::lock_guard lock(m_queueMutex);
        m_stopped = true;
    }
    answerStops();
}

void TaskManager::answerStops() {
    while (true) {
        bool isAnswer = false;
        {
            const std::lock_guard lock(m_queueMutex);
            // Restarted in answer to the signal; a stop since then has a job of its own.
            if (!m_stopped)
                return;
            isAnswer = m_unansweredStops > 0;
            if (isAnswer)
                --m_unansweredStops;
            else if (!m_restartRequested || *m_ending || !resume())
                return;
        }
        if (!isAnswer) {
            startWorker();
            return;
        }
        emit wasStopped();
    }
}

void TaskManager::restart() {
    {
        const std::lock_guard lock(m_queueMutex);
        if (!m_stopRequested || *m_ending)
            return;
        if (!m_stopped || m_unansweredStops > 0) {
            m_restartRequested = true;
            return;
        }
        if (!resume())
            return;
    }
    startWorker();
}

/// Under the queue's mutex. Returns whether a worker is to be started.
bool TaskManager::resume() {
    m_stopped = false;
    m_stopRequested = false;
    m_restartRequested = false;
    if (m_queue.empty() || m_running)
        return false;
    m_running = true;
    return true;
}

void TaskManager::runTasks() {
    loggingFailures(QStringLiteral("TaskManager: could not run tasks!"), [this] {
        // Before the failure is logged: whoever reacts to it finds that a new worker can be started.
        auto failed = qScopeGuard([this] {
            const std::lock_guard lock(m_queueMutex);
            m_running = false;
        });
        openConnections();
        runQueuedTasks();
        failed.dismiss();
    });
}

void TaskManager::runQueuedTasks() {
    while (const auto task = takeTask()) {
        task->runUnder(*this);
        const auto posted = task->exec();
        Task::waitForCallbacksThenRunNextSubTasks(task, posted);
    }
}

/// Null once there is nothing more to do. A checkpoint costs several writes that wait for the disk, so it is
/// kept for when no task has come for a while: who hands in one after the other does not pay it each time.
std::shared_ptr<Task> TaskManager::takeTask() {
    constexpr std::chrono::milliseconds untilQuiet(100);
    const auto hasNews = [this] {
        return m_stopRequested || !m_queue.empty();
    };
    std::unique_lock lock(m_queueMutex);
    if (!m_queueChanged.wait_for(lock, untilQuiet, hasNews)) {
        lock.unlock();
        checkpoint(m_mainDatabase);
        lock.lock();
    }
    if (m_stopRequested || m_queue.empty()) {
        m_running = false;
        return nullptr;
    }
    auto task = std::move(m_queue.front());
    m_queue.pop_front();
    return task;
}

void TaskManager::openConnections() {
    const bool wasOpen = m_mainDatabase.isOpen();
    openConnection(m_mainDatabase, m_mainPath, QStringLiteral("Could not open main database!"));
    if (!wasOpen)
        prepareMainConnection(m_mainDatabase);
    openConnection(
        m_rootPathsDatabase, m_rootPathsPath, QStringLiteral("Could not open root paths database!"));
    m_isOpenFailureReported = false;
}

void TaskManager::openConnection(QSqlDatabase& database, const QString& path, const QString& failureMessage) {
    try {
        openDatabase(database, path, failureMessage);
    } catch (const DbException&) {
        // Each task that is queued is another attempt; the user hears of the first.
        if (!std::exchange(m_isOpenFailureReported, true)) {
            ErrorHandler::instance().reportError(
                tr("Could not open the database"),
                Exception(
                    tr("Stemhaven cannot open the file %1. Nothing can be shown or saved without it. Check "
                       "that you may read and write it and that the disk is not full, and start Stemhaven "
                       "again.")
                        .arg(QDir::toNativeSeparators(path))),
                QtCriticalMsg);
        }
        throw;
    }
    SqliteLibrary::interruptWhen(database, m_isGivenUp);
    SqliteLibrary::waitWhile(database, m_isWorthWaiting);
}

void TaskManager::closeConnections() {
    m_mainDatabase.close();
    m_mainOutage.connectionClosed();
    m_rootPathsDatabase.close();
    m_rootPathsOutage.connectionClosed();
}

Outage& TaskManager::outageOf(const QSqlDatabase& database) {
    return &database == &m_rootPathsDatabase ? m_rootPathsOutage : m_mainOutage;
}

} // namespace Stemhaven
