#pragma once

#include "monitor/RecordedBundles.h"

#include <QFuture>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <set>

namespace Stemhaven {

/// The walk over all root folders for bundles without a record or a note, and for those that have come to the
/// path of another one's record. One walk at a time, on the global thread pool.
///
/// A request during a walk has it make one more pass; however many requests come, it is one. The walk ends
/// early when the shut-down begins or the search is destroyed, and counts as unsettled then.
class ProjectSearch {
public:
    struct Callbacks {
        // On the pool thread:
        std::function<QStringList()> roots;
        /// Blocks while too many checks are under way. Returns early when giveUp says so.
        std::function<void(const std::function<bool()>& giveUp)> waitForRoom;
        std::function<void(const QString& bundlePath)> check;
        /// Some ten times a second at most.
        std::function<void(int bundlesFound)> progressed;
        /// A pass has looked everywhere: what is on record below the roots and is not there.
        std::function<void(const QStringList& roots, const QSet<QString>& missing)> looked;
        /// The last pass is over; the checks may not be. Answered by a call of settled() when they are.
        /// recordedBefore is the revision of the recorded bundles at the beginning.
        std::function<void(quint64 recordedBefore, bool restartWanted)> walked;
    };

    ProjectSearch(std::shared_ptr<const RecordedBundles> recorded, Callbacks callbacks);

    ~ProjectSearch() { stop(); }

    ProjectSearch(const ProjectSearch&) = delete;
    ProjectSearch& operator=(const ProjectSearch&) = delete;

    /// Ends the walk and waits for it. No search begins any more.
    void stop();

    /// Ends the walk where it is, without waiting for that. It counts as over, though not all was seen.
    void interrupt();

    /// False, with nothing done, when searches have come to an end for good.
    bool request(bool restartWhenDone);

    /// Everything that the last walk caused has been written.
    void settled();

    /// Whether a walk is going on or has not been settled: what is on disk may not be in the catalogue yet.
    bool isUnsettled() const;

    /// Whether a walk is going on. Without a lock.
    bool isWalking() const { return m_inProgress; }

    /// Whether the last walk could not read a root, say because it was not there. From any thread.
    bool wasUnreadable(const QString& root) const;

private:
    void run();
    void walkRoots(const RecordedBundles::ByPath& recorded);
    bool isEnding() const;

    const std::shared_ptr<const RecordedBundles> m_recorded;
    Callbacks m_callbacks;
    mutable std::mutex m_mutex; // the transitions between going on and having ended, m_unreadableRoots
    std::atomic<bool> m_inProgress = false;
    bool m_restartWanted = false;
    int m_unsettledWalks = 0;
    std::atomic<bool> m_again = false;
    std::atomic<bool> m_interrupted = false;
    std::atomic<bool> m_stop = false;
    std::set<QString> m_unreadable; // the walk's thread
    QSet<QString> m_unreadableRoots;
    QList<QFuture<void>> m_futures; // an ended walk may still be telling so when the next one begins
};

} // namespace Stemhaven
