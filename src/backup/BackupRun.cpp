#include "backup/BackupRun.h"

#include "database/DatabaseInit.h"
#include "database/TaskManager.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QPointer>

#include <utility>

namespace Stemhaven {

BackupRun::BackupRun(TaskManager& tasks, QObject* parent) : QObject(parent), m_tasks(tasks) {
    // Comes from another thread, and to this one therefore queued.
    connect(&tasks, &TaskManager::wasStopped, this, &BackupRun::takeStopped);
}

BackupRun::~BackupRun() {
    blockSignals(true);
    m_isCancelled = true;
    // Not by a join: the work may be waiting for this thread, with a connection to what it would take back.
    while (m_thread.joinable())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    if (isUnderWay())
        restartTasks();
}

void BackupRun::stopTasks() {
    if (m_phase != Phase::Idle)
        return;
    m_phase = Phase::Stopping;
    m_tasks.stop();
}

void BackupRun::takeStopped() {
    if (m_phase == Phase::Stopping) {
        m_phase = Phase::Stopped;
        emit tasksStopped();
    } else if (m_phase == Phase::StoppingAgain) {
        m_phase = Phase::Working;
        std::exchange(m_initialisation, nullptr)->set_value(m_isInitialised);
    }
}

void BackupRun::start(const Work& work) {
    if (m_phase != Phase::Stopped)
        return;
    m_phase = Phase::Working;
    m_thread = std::thread([this, work] {
        const auto observer = [this](const BackupProgress& progress) {
            QMetaObject::invokeMethod(
                this, [this, progress] { emit progressed(progress); }, Qt::QueuedConnection);
            return !m_isCancelled;
        };
        const auto result = work(observer, [this] { return initialise(); });
        QMetaObject::invokeMethod(
            this, [this, result] { finish(result); }, Qt::QueuedConnection);
    });
}

void BackupRun::giveUp() {
    if (m_phase == Phase::Stopped)
        restartTasks();
}

/// On the work's thread.
bool BackupRun::initialise() {
    const auto outcome = std::make_shared<std::promise<bool>>();
    auto future = outcome->get_future();
    QMetaObject::invokeMethod(
        this, [this, outcome] { beginInitialisation(outcome); }, Qt::QueuedConnection);
    return future.get();
}

void BackupRun::beginInitialisation(const std::shared_ptr<std::promise<bool>>& outcome) {
    m_initialisation = outcome;
    m_phase = Phase::Initialising;
    m_tasks.restart();
    const auto end = [run = QPointer(this)](bool succeeded) {
        if (run)
            run->endInitialisation(succeeded);
    };
    initDatabase(
        m_tasks, [end] { end(true); }, [end] { end(false); });
}

void BackupRun::endInitialisation(bool succeeded) {
    if (m_phase != Phase::Initialising)
        return;
    m_isInitialised = succeeded;
    m_phase = Phase::StoppingAgain;
    m_tasks.stop();
}

void BackupRun::finish(const BackupResult& result) {
    m_thread.join();
    restartTasks();
    emit finished(result);
}

void BackupRun::restartTasks() {
    m_phase = Phase::Ended;
    m_tasks.restart();
}

} // namespace Stemhaven
