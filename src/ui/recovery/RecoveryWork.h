#pragma once

#include "project/RecoveryRun.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <thread>

/// The search for damaged bundles, or their repair, on a thread of its own. One at a time; functions and
/// signals are on the GUI thread.
class RecoveryWork : public QObject {
    Q_OBJECT

public:
    explicit RecoveryWork(QObject* parent);
    /// Stops what goes on and waits for it, so a bundle that is being repaired is finished. A file system
    /// that does not let it end is left alone after 10 s; no repair leaves a bundle worse when it is cut off.
    ~RecoveryWork() override;
    Q_DISABLE_COPY(RecoveryWork)

    void search(const QStringList& folders);
    /// In their order. A failure does not stop the rest.
    void repair(const QList<Stemhaven::RecoverableProject>& projects);

    /// Ends the search, or the repair after the bundle that it is at, and does not wait for that.
    void stop();

    /// Until searchEnded(), searchFailed() or repairEnded().
    bool isWorking() const { return m_isWorking; }

signals:
    /// A few times a second.
    void searched(const Stemhaven::RecoverySearch::Progress& progress);
    /// Also where it was stopped, with what had been found by then.
    void searchEnded(const Stemhaven::RecoverySearch::Result& result);
    void searchFailed();
    /// position counts in the list of those that are being repaired.
    void repaired(int position, const Stemhaven::RecoveryOutcome& outcome);
    void repairEnded();

private:
    using StopFlag = std::atomic<bool>;

    void start(const std::function<void(const StopFlag& isStopped)>& body);
    std::function<void(const std::function<void(RecoveryWork& work)>& what)> poster();

    std::shared_ptr<StopFlag> m_isStopped;
    std::thread m_thread;
    std::future<void> m_end;
    bool m_isWorking = false;
};
