#pragma once

#include "database/Outage.h"
#include "database/Task.h"

#include <QObject>
#include <QSqlDatabase>
#include <QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

class QSqlQuery;

namespace Stemhaven {

struct ProjectDetails;

/// The one road to the databases: owns both connections and the worker thread that alone uses them.
///
/// Tasks run in the order in which they were added. The worker lives while there are tasks; when none has
/// come for a moment it checkpoints the main database and ends. All functions may be called from any thread,
/// and none but shutDown() waits for the worker.
class TaskManager : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TaskManager)

public:
    /// The manager of the program's own databases.
    static TaskManager& instance();

    /// Nothing is opened before the first task. Connection names are fixed, so there is one manager at a
    /// time.
    TaskManager(QString mainPath, QString rootPathsPath);
    /// Shuts down.
    ~TaskManager() override;

    /// Finishes the task that is running and the user's edits, drops the others and closes the connections,
    /// for good. Waits for the worker, but has a statement that runs on, and is no edit's, interrupted.
    /// Called in main, since the SQL library does not outlive it: its own statics are the first to go.
    void shutDown();

    void addTask(std::shared_ptr<Task> task);
    /// As addTask, or as a follow-up of parent when there is one.
    void addTask(std::shared_ptr<Task> task, const std::shared_ptr<Task>& parent);

    /// Whether nothing is queued or being run.
    bool isIdle();

    /// Lets the running task finish, writes the user's edits that are queued, as whoever stops the manager
    /// may replace the files, keeps the other tasks and closes the connections. wasStopped() is emitted then,
    /// from a pool thread. Does nothing where the manager is stopped or about to be.
    void stop();
    /// Ends a stop, one that has not taken effect yet once it has, and runs what was queued meanwhile.
    void restart();

    /// Destroys the query on the worker.
    void deleteQuery(QSqlQuery* query);

    /// What tasks are to use. Nobody but the worker touches the connections themselves.
    QSqlDatabase& mainDatabase() { return m_mainDatabase; }

    QSqlDatabase& rootPathsDatabase() { return m_rootPathsDatabase; }

    const QString& mainPath() const { return m_mainPath; }

    const QString& rootPathsPath() const { return m_rootPathsPath; }

    using RecordCallback = std::function<void(const std::shared_ptr<Task>&, long long projectId)>;
    using RecordErrorCallback = std::function<void(const DbException&)>;

    /// Inserts a record for a bundle, writes the bundle's note and, where the user wishes it, gives it the
    /// genre named after its folder. Reads the bundle at once and throws where that fails (Exception,
    /// IOException, Plist::Error); nothing is queued then. The callbacks run on the GUI thread.
    void addProject(
        const ProjectDetails& details, const std::shared_ptr<Task>& parent = {},
        RecordCallback onSuccess = {}, RecordErrorCallback onError = {});

    /// Rewrites what the record has from the bundle, never what it has from the user, and the bundle's note.
    /// Throws as addProject does.
    void updateProject(
        const ProjectDetails& details, long long projectId, const std::shared_ptr<Task>& parent = {},
        RecordCallback onSuccess = {}, RecordErrorCallback onError = {});

    /// Gives every project without a genre the genre named after its folder, making genres as needed.
    void retroactivelyAssignGenreByDir();

signals:
    /// Once for each stop(), with the connections closed. A shut-down counts as the effect of a stop before
    /// it.
    void wasStopped();

private:
    friend class Task;

    /// What a job in the pool has of the manager, which may be gone before the job's turn comes.
    struct Anchor {
        std::mutex mutex; // held by a job that uses the manager
        TaskManager* manager;
    };

    bool isStatementGivenUp() const;
    /// Whether a statement that has waited so long for another program is to wait on.
    bool isLockAwaited(std::chrono::milliseconds waited) const;
    void writeQueuedEdits();
    std::shared_ptr<Task> takeEdit();
    void carryOutStop();
    void answerStops();
    bool resume();
    void startWorker();
    void runTasks();
    void runQueuedTasks();
    std::shared_ptr<Task> takeTask();
    void openConnections();
    void openConnection(QSqlDatabase& database, const QString& path, const QString& failureMessage);
    void closeConnections();
    Outage& outageOf(const QSqlDatabase& database);
    bool mayRun() const;

    QString m_mainPath;
    QString m_rootPathsPath;
    QSqlDatabase m_mainDatabase;
    QSqlDatabase m_rootPathsDatabase;
    Outage m_mainOutage{m_mainDatabase};
    Outage m_rootPathsOutage{m_rootPathsDatabase};
    bool m_isOpenFailureReported = false; // used where the connections are

    std::mutex m_queueMutex;                // the queue, and every change of the flags
    std::condition_variable m_queueChanged; // a task was added, or a stop requested
    std::deque<std::shared_ptr<Task>> m_queue;
    std::atomic<bool> m_stopRequested = false;
    std::atomic<bool> m_stopped = false;
    std::atomic<bool> m_running = false;
    bool m_restartRequested = false; // while a stop has not been answered
    int m_unansweredStops = 0;
    /// By the steady clock, in its own unit; 0 while nothing ends.
    std::atomic<std::chrono::steady_clock::rep> m_interruptFrom = 0;
    bool m_isEdit = false; // what is run; used where the connections are
    const std::function<bool()> m_isGivenUp = [this] {
        return isStatementGivenUp();
    };
    const std::function<bool(std::chrono::milliseconds)> m_isWorthWaiting = [this](auto waited) {
        return isLockAwaited(waited);
    };
    /// Shared with the tasks, whose callbacks are dropped from then on.
    const std::shared_ptr<std::atomic<bool>> m_ending = std::make_shared<std::atomic<bool>>(false);

    std::mutex m_transitionMutex; // the thread object; held while joining, so never taken by the worker
    std::thread m_worker;

    const std::shared_ptr<Anchor> m_anchor = std::make_shared<Anchor>();
};

} // namespace Stemhaven
