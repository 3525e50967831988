#pragma once

#include "database/ProjectChanges.h"
#include "monitor/BundleMatching.h"
#include "monitor/CheckQueue.h"
#include "monitor/FoundBundle.h"
#include "monitor/MovesByCopying.h"
#include "monitor/RecordedBundles.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace Stemhaven {

class TaskManager;

/// Checks bundles: reads each, finds its record or the lack of one, and has the record and the bundle's note
/// written. On a thread of its own, in groups; each group costs the task worker two tasks, so what the user
/// does meanwhile waits for one group at most.
///
/// What only a path or a note speaks for is decided when nothing else is left to check, no search goes on,
/// and the events of that time have come, since by then every bundle that moved is on record at its new
/// place. A bundle that could not be read may have been in the middle of being copied, and is checked once
/// more. While the database cannot be written, the group is tried again with growing pauses, and all others
/// wait in memory.
class BundleChecks {
public:
    /// Called on the checks' thread.
    struct Callbacks {
        /// Watched folders, each ending in "/".
        std::function<QStringList()> roots;
        /// Whether a path lies in a folder that is searched.
        std::function<bool(const QString& path)> isSearched;
        /// Whether bundles that are on disk may still be handed in by a search.
        std::function<bool()> isSearching;
        /// Records were written; isFromEvent where any of them is to be told at once, hasFound where any of
        /// their bundles was missing.
        std::function<void(const QList<ProjectChanges::Written>& written, bool isFromEvent, bool hasFound)>
            written;
        /// The bundle is not there.
        std::function<void(const ProjectDetails& details)> vanished;
    };

    /// delay is how long events are gathered at most. It also passes before a bundle that could not be read
    /// is checked once more, and before the first new attempt where the database fails. tasks outlives the
    /// checks.
    BundleChecks(
        TaskManager& tasks, std::shared_ptr<RecordedBundles> recorded, std::chrono::milliseconds delay,
        Callbacks callbacks);
    ~BundleChecks();
    BundleChecks(const BundleChecks&) = delete;
    BundleChecks& operator=(const BundleChecks&) = delete;

    /// Ends the group at hand, waits for that, and leaves the others to the next start. Not on the checks'
    /// thread.
    void stop();

    // From any thread:

    /// From now on what waits, and what is added, is dropped, and its events are to be replayed. The group at
    /// hand is brought to its end, after which the checks are idle.
    void suspend();
    void resume();

    /// False where a check of that path is waiting already; it will do for both then.
    bool add(CheckRequest request);

    /// A search found nothing at these paths, which are on record.
    void addMissing(const QSet<QString>& paths);

    /// Blocks until fewer than limit checks are waiting. Looks at giveUp now and then, and returns when it
    /// says so.
    void waitForRoom(qsizetype limit, const std::function<bool()>& giveUp);

    /// Calls back, on the checks' thread, once nothing waits any more but second looks.
    void whenIdle(std::function<void()> callback);

    /// Whether nothing waits and nothing is being checked.
    bool isIdle() const;

private:
    using Clock = CheckQueue::Clock;

    /// A bundle between its reading and the writing of its record.
    struct Checked {
        CheckRequest request;
        FoundBundle bundle;
        RecordCandidates candidates;
    };

    using CheckedGroup = std::shared_ptr<std::vector<Checked>>;

    void run();
    bool takeNext(CheckQueue::Group& group);
    void callBackWhenIdle(std::unique_lock<std::mutex>& lock);
    void check(const CheckQueue::Group& group);
    void checkTogether(const CheckQueue::Group& group);
    CheckedGroup read(const CheckQueue::Group& group);
    bool findCandidates(const CheckedGroup& group);
    void match(const CheckedGroup& group, bool areUndecided, BundleMatching& matching);
    void leaveUndecided(CheckRequest request, bool isAllSeen, bool isDecidedByPath);
    Clock::duration untilSettled() const;
    void bundleVanished(const CheckRequest& request, const ProjectDetails& details);
    bool write(const CheckedGroup& group, const BundleMatching& matching);
    /// Writes the notes, and gives new projects their genres where the user wishes it.
    void follow(const QList<ProjectChanges::Written>& written);
    void reportDuplicates(const BundleMatching& matching);
    void checkOnceMore(const Checked& checked);
    void pauseForDatabase(const CheckQueue::Group& group);
    bool isEnding() const;

    TaskManager& m_tasks;
    const std::shared_ptr<RecordedBundles> m_recorded;
    const std::chrono::milliseconds m_delay;
    const Callbacks m_callbacks;

    mutable std::mutex m_mutex; // guards what follows, up to m_stop
    std::condition_variable m_changed;
    CheckQueue m_queue;
    bool m_isChecking = false;
    bool m_isSuspended = false;
    std::vector<std::function<void()>> m_whenIdle;
    Clock::time_point m_pausedUntil;
    std::atomic<bool> m_stop = false;
    std::atomic<bool> m_hasCopies = false; // some that may have been moves

    // The checks' thread:
    QSet<QString> m_checkedOnceMore; // of the unreadable ones
    MovesByCopying m_moves;
    std::chrono::milliseconds m_databaseDelay;
    bool m_isDatabaseOut = false;
    std::thread m_thread; // last: it uses the others
};

} // namespace Stemhaven
