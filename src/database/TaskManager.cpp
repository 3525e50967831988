#include "database/TaskManager.h"

#include "app/Paths.h"
#include "app/errors/Guarded.h"
#include "database/Connection.h"
#include "database/SimpleTask.h"

#include <QDebug>
#include <QScopeGuard>
#include <QSqlQuery>
#include <QThreadPool>

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
      m_rootPathsDatabase(QSqlDatabase::addDatabase(driver, rootPathsConnection)) {}

TaskManager::~TaskManager() {
    shutDown();
    m_mainDatabase = {};
    m_rootPathsDatabase = {};
    QSqlDatabase::removeDatabase(mainConnection);
    QSqlDatabase::removeDatabase(rootPathsConnection);
}

void TaskManager::shutDown() {
    std::deque<std::shared_ptr<Task>> dropped;
    {
        const std::lock_guard lock(m_queueMutex);
        m_stopRequested = true;
        *m_ending = true;
    }
    const std::lock_guard transition(m_transitionMutex);
    if (m_worker.joinable())
        m_worker.join();
    {
        const std::lock_guard lock(m_queueMutex);
        dropped.swap(m_queue);
    }
    runWhatOutlastsShutDown(dropped);
    // A dropped task may own a query or a model, which want their connection when they end.
    dropped.clear();
    closeConnections();
}

void TaskManager::runWhatOutlastsShutDown(const std::deque<std::shared_ptr<Task>>& tasks) {
    for (const auto& task : tasks) {
        if (!task->outlastsShutDown())
            continue;
        loggingFailures(QStringLiteral("TaskManager: could not finish at the end!"), [&] {
            openConnections();
            task->runUnder(*this);
            task->exec();
        });
    }
}

bool TaskManager::mayRun() const {
    return !m_stopRequested && !m_stopped;
}

void TaskManager::addTask(std::shared_ptr<Task> task) {
    {
        const std::lock_guard lock(m_queueMutex);
        m_queue.push_back(std::move(task));
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

void TaskManager::stop() {
    QThreadPool::globalInstance()->start([this] {
        {
            const std::lock_guard lock(m_queueMutex);
            if (m_stopped)
                return;
            m_stopRequested = true;
        }
        {
            const std::lock_guard transition(m_transitionMutex);
            if (m_worker.joinable())
                m_worker.join();
            closeConnections();
            const std::lock_guard lock(m_queueMutex);
            m_stopped = true;
        }
        emit wasStopped();
    });
}

void TaskManager::restart() {
    {
        const std::lock_guard lock(m_queueMutex);
        if (!m_stopped || *m_ending)
            return;
        m_stopped = false;
        m_stopRequested = false;
        if (m_queue.empty() || m_running)
            return;
        m_running = true;
    }
    startWorker();
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

std::shared_ptr<Task> TaskManager::takeTask() {
    bool checkpointed = false;
    while (true) {
        {
            const std::lock_guard lock(m_queueMutex);
            if (!m_stopRequested && !m_queue.empty()) {
                auto task = std::move(m_queue.front());
                m_queue.pop_front();
                return task;
            }
            if (checkpointed || m_stopRequested) {
                m_running = false;
                return nullptr;
            }
        }
        checkpoint(m_mainDatabase);
        checkpointed = true;
    }
}

void TaskManager::openConnections() {
    const bool wasOpen = m_mainDatabase.isOpen();
    openDatabase(m_mainDatabase, m_mainPath, QStringLiteral("Could not open main database!"));
    if (!wasOpen)
        prepareMainConnection(m_mainDatabase);
    openDatabase(m_rootPathsDatabase, m_rootPathsPath, QStringLiteral("Could not open root paths database!"));
}

void TaskManager::closeConnections() {
    m_mainDatabase.close();
    m_rootPathsDatabase.close();
}

} // namespace Stemhaven
