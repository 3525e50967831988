#pragma once

#include "monitor/BundleChecks.h"
#include "monitor/EventFilter.h"
#include "monitor/ProjectSearch.h"
#include "monitor/RecordedBundles.h"
#include "monitor/ReplayProgress.h"
#include "monitor/StrayBundles.h"
#include "monitor/UnresolvedMoves.h"
#include "monitor/VanishedBundles.h"
#include "monitor/WatchedFolders.h"
#include "platform/FileEventStream.h"
#include "project/ProjectDetails.h"

#include <QDateTime>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

namespace Stemhaven {

class TaskManager;

/// Keeps the catalogue in step with the disk: finds the bundles below the user's root folders and sees to it
/// that each has the record that is its own. Records are never deleted here.
///
/// Made on the GUI thread, where its signals come from too, after the log and the application's identity are
/// set.
class ProjectMonitor : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ProjectMonitor)

public:
    /// The monitor of the program's own databases. The first call starts their initialisation and, after it,
    /// the loading of what is known and the search that an earlier run left unfinished.
    static ProjectMonitor& instance();
    static void stop();
    static void restart();
    static bool isRunning();
    static QStringList getRootSearchPaths();

    /// tasks outlives the monitor. latency is how long events are gathered before they are looked at.
    explicit ProjectMonitor(TaskManager& tasks, std::chrono::milliseconds latency = std::chrono::seconds(3));
    ~ProjectMonitor() override;

    /// Ends all threads of the monitor and waits for them, for good. In main, since they use what does not
    /// outlive it.
    void shutDown();

    /// Brings everything to rest, so that the databases and the settings can be replaced: nothing is watched,
    /// a search is broken off, and what waits to be checked is dropped. Until resume() nothing begins. GUI
    /// thread, as for the three that follow.
    void suspend();

    bool isSuspended() const { return m_isSuspended; }

    /// After suspend(): whether nothing is being read or written any more.
    bool isAtRest() const;
    /// Goes on where suspend() broke off.
    void resume();
    /// As resume(), but the databases and the settings are others now: everything is read anew and searched,
    /// and what happened since the settings' time is replayed. Where startNow is not set, that waits for the
    /// next start.
    void resumeWithOthers(bool startNow);

    void start();
    void stopMonitoring();
    void restartMonitoring();
    QStringList rootSearchPaths() const;

    /// Whether the event stream runs: start() returns before it does. From any thread.
    bool isWatching() const { return m_running; }

    /// How a root folder is looked after: watched, polled where its events cannot be had, or missing; also
    /// while nothing is watched. GUI thread.
    FileEventStream::RootState stateOfRoot(const QString& root) const;

    enum class FolderState {
        Waiting,           ///< not looked at yet, or the monitor is stopped
        Searched,          ///< just now
        Watched,           ///< the system tells of every change
        PolledRemote,      ///< lies on a file system that tells of nothing, and is looked at again and again
        PolledBeyondLimit, ///< the same because the system gives no more watches
        Missing            ///< not there, or unreadable
    };

    /// How a folder of the user's is looked after at the moment. Does not look at it. GUI thread.
    FolderState stateOfFolder(const QString& folder) const;

    /// Whether a search is going on, or is owed by an earlier run or a request that has not come to it yet.
    /// From any thread.
    bool isSearching() const;

    /// The paths on record at which there was no bundle at the last look. From any thread.
    QSet<QString> missingBundles() const { return m_recorded->missing(); }

    /// Whether any bundle is being checked or waits for it. From any thread.
    bool isChecking() const { return !m_checks.isIdle(); }

    /// Makes the next start read the root folders anew and search them.
    void requestUpdateWatchedDirs();

    /// Reads the root folders anew. Then starts, or else searches them and starts after that.
    void updateWatchedDirs(bool startWhenDone);

    /// Searches the root folders for bundles without a record, in the background. During a search it has that
    /// look once more. A restart that was asked for is done at the end, whichever request brought it.
    void searchForProjects(bool restartWhenDone);

    /// Reads anew what is on record. Then calls continuation, or onFailure when the database fails, on the
    /// GUI thread.
    void
    loadProjectPaths(const std::function<void()>& continuation, const std::function<void()>& onFailure = {});

    /// Has it decided what the bundle is (new, known, moved, copied) and its record written, and returns at
    /// once. fromEvent: notify once it is written; a search notifies once, at its end. From any thread.
    void directoryChanged(const QString& bundlePath, bool fromEvent);

    /// Has the records moved along with what was moved or renamed. From any thread.
    void updateMovedOrRenamedPaths();

signals:
    void wasStarted();
    void wasStopped();
    void isRestarting();
    void projectsDbModified();
    /// missingBundles() has changed.
    void missingBundlesChanged();
    /// rootSearchPaths() has changed.
    void watchedFoldersChanged();
    void rootSearchPathChanged(QString path);
    /// The catalogue can be read. Also when another one has taken its place.
    void databaseInitialized();
    void databaseInitFailed();

    /// A search goes on and has come across this many bundles so far; some ten times a second at most.
    void searchProgressed(int bundlesFound);
    /// The search has ended, and what it found is in the database.
    void searchEnded();

private:
    void initializeFilesystemEventStream();
    void streamStarted(const std::shared_ptr<FileEventStream>& stream, bool started);
    void lookForStrays();
    void stopFilesystemEventStream();
    void startLater();
    void takeEvents(const QList<FileEvent>& events);
    void takeBatch(const EventBatch& batch);
    using Ticket = std::shared_ptr<ReplayProgress::Ticket>;
    void followMoves(const Ticket& ticket);
    void followProject(const ChangedPath& changed, const Ticket& ticket);
    void followFolder(const ChangedPath& changed, const Ticket& ticket);
    void checkBelow(const QString& folder, const Ticket& ticket);
    void checkMissing(const QStringList& bundles, const Ticket& ticket);
    bool wasAboveStrays(const ChangedPath& changed) const;
    void
    check(const QString& bundlePath, const QStringList& priorPaths, bool fromEvent, const Ticket& ticket);
    bool isSearched(const QString& path) const;
    WatchedFolders folders() const;
    void recordsWritten(const QList<ProjectChanges::Written>& written, bool fromEvent, bool hasFound);
    void bundleVanished(const ProjectDetails& details);
    void tellMissingBundles();

    BundleChecks::Callbacks checkCallbacks();
    ProjectSearch::Callbacks searchCallbacks();
    void loadAtStart(std::chrono::milliseconds pause);
    void takeFolders(const WatchedFolders& folders, const StrayBundles& strays, bool startWhenDone);
    void searchWalked(quint64 recordedBefore, bool restartWanted);
    void settleSearch(quint64 recordedBefore, bool restartWanted);
    void rememberUnsettledSearch() const;

    /// A search runs this far ahead of the checks and no further.
    static constexpr qsizetype mostChecksWaiting = 256;
    static constexpr std::chrono::milliseconds shortestPause{250};

    TaskManager& m_tasks;
    const std::chrono::milliseconds m_latency;
    /// Held for a copy or an exchange of what it guards, never while the disk is looked at.
    mutable std::mutex m_mutex; // guards m_folders
    WatchedFolders m_folders;
    const std::shared_ptr<RecordedBundles> m_recorded = std::make_shared<RecordedBundles>();
    QDateTime m_rootPathsDatabaseTime;
    UnresolvedMoves m_moves;
    ReplayProgress m_progress;
    VanishedBundles m_vanished;                // GUI thread
    std::shared_ptr<FileEventStream> m_stream; // GUI thread
    bool m_isStartDelayed = false;             // GUI thread
    bool m_arePathsUnreadable = false;         // GUI thread
    std::atomic<bool> m_running = false;
    std::atomic<bool> m_isSuspended = false;
    quint64 m_suspensions = 0; // GUI thread; what was asked for before the last one comes to nothing
    std::atomic<bool> m_updateRequested = false;
    std::atomic<bool> m_searchOwed = false;
    ProjectSearch m_search;
    BundleChecks m_checks; // last: its thread uses the others
};

} // namespace Stemhaven
