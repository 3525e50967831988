#pragma once

#include "backup/BackupSteps.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <thread>

namespace Stemhaven {

class TaskManager;

/// One export or import in the running program, on a thread of its own, while the task manager is stopped.
/// Whatever comes of it, the manager runs again afterwards. Used on the GUI thread, once.
class BackupRun : public QObject {
    Q_OBJECT

public:
    /// Called on the work's thread. initialise does what BackupImport::Initialise is to do.
    using Work =
        std::function<BackupResult(const BackupObserver& observer, const std::function<bool()>& initialise)>;

    /// tasks outlives this object.
    explicit BackupRun(TaskManager& tasks, QObject* parent = nullptr);
    /// Cancels work that goes on, and runs the event loop until its end.
    ~BackupRun() override;
    Q_DISABLE_COPY_MOVE(BackupRun)

    /// Stops the manager; a second call does nothing.
    void stopTasks();
    /// Once the manager is stopped.
    void start(const Work& work);
    /// Instead of start().
    void giveUp();

    /// Heard at the next step at which the work can still be cancelled.
    void cancel() { m_isCancelled = true; }

    /// From stopTasks() on until the manager has been restarted.
    bool isUnderWay() const { return m_phase != Phase::Idle && m_phase != Phase::Ended; }

signals:
    void tasksStopped();
    void progressed(const Stemhaven::BackupProgress& progress);
    /// The manager runs again.
    void finished(const Stemhaven::BackupResult& result);

private:
    enum class Phase { Idle, Stopping, Stopped, Working, Initialising, StoppingAgain, Ended };

    void takeStopped();
    bool initialise();
    void beginInitialisation(const std::shared_ptr<std::promise<bool>>& outcome);
    void endInitialisation(bool succeeded);
    void finish(const BackupResult& result);
    void restartTasks();

    TaskManager& m_tasks;
    Phase m_phase = Phase::Idle;
    std::shared_ptr<std::promise<bool>> m_initialisation;
    bool m_isInitialised = false;
    std::atomic<bool> m_isCancelled = false;
    std::thread m_thread;
};

} // namespace Stemhaven
