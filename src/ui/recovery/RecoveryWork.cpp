#include "ui/recovery/RecoveryWork.h"

#include "app/Shutdown.h"
#include "app/errors/Guarded.h"

#include <QDebug>
#include <QPointer>

#include <chrono>
#include <utility>

using Stemhaven::RecoverableProject;
using Stemhaven::RecoverySearch;

namespace {

constexpr std::chrono::seconds patienceAtEnd(10);

} // namespace

RecoveryWork::RecoveryWork(QObject* parent) : QObject(parent) {}

RecoveryWork::~RecoveryWork() {
    stop();
    if (!m_thread.joinable())
        return;
    if (m_end.wait_for(patienceAtEnd) == std::future_status::ready) {
        m_thread.join();
        return;
    }
    qWarning() << "The repair or the search for damaged projects does not end. Leaving it behind.";
    m_thread.detach();
}

/// What it returns queues a call on the GUI thread, for as long as this object lives. Used on any thread.
std::function<void(const std::function<void(RecoveryWork& work)>& what)> RecoveryWork::poster() {
    return [self = QPointer(this)](const std::function<void(RecoveryWork&)>& what) {
        Stemhaven::Shutdown::post([self, what] {
            if (self)
                what(*self);
        });
    };
}

void RecoveryWork::search(const QStringList& folders) {
    start([folders, post = poster()](const StopFlag& isStopped) {
        RecoverySearch search;
        search.progressed = [&post](RecoverySearch::Progress progress) {
            post([progress](RecoveryWork& work) { emit work.searched(progress); });
        };
        search.isStopped = [&isStopped] {
            return isStopped.load();
        };
        RecoverySearch::Result result;
        const bool succeeded = Stemhaven::loggingFailures(
            QStringLiteral("Error occurred while searching for recoverable projects"),
            [&] { result = search.find(folders); });
        qInfo() << "Finished search for recoverable projects";
        post([succeeded, result](RecoveryWork& work) {
            work.m_isWorking = false;
            if (succeeded)
                emit work.searchEnded(result);
            else
                emit work.searchFailed();
        });
    });
}

void RecoveryWork::repair(const QList<RecoverableProject>& projects) {
    start([projects, post = poster()](const StopFlag& isStopped) {
        for (int position = 0; position < projects.size() && !isStopped; ++position) {
            const auto outcome = Stemhaven::tryToRecover(projects[position]);
            post([position, outcome](RecoveryWork& work) { emit work.repaired(position, outcome); });
        }
        post([](RecoveryWork& work) {
            work.m_isWorking = false;
            emit work.repairEnded();
        });
    });
}

void RecoveryWork::start(const std::function<void(const StopFlag& isStopped)>& body) {
    if (m_isWorking)
        return;
    // It has reported its end.
    if (m_thread.joinable())
        m_thread.join();
    m_isStopped = std::make_shared<StopFlag>(false);
    std::packaged_task<void()> task([body, isStopped = m_isStopped] { body(*isStopped); });
    m_end = task.get_future();
    m_thread = std::thread(std::move(task));
    m_isWorking = true;
}

void RecoveryWork::stop() {
    if (m_isStopped)
        *m_isStopped = true;
}
