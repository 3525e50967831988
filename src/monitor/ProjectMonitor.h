#pragma once

#include "monitor/ChecksInProgress.h"
#include "monitor/EventFilter.h"
#include "monitor/ProjectSearch.h"
#include "monitor/Rechecks.h"
#include "monitor/UnresolvedMoves.h"
#include "monitor/VanishedBundles.h"
#include "monitor/WatchedFolders.h"
#include "platform/FileEventStream.h"
#include "project/ProjectDetails.h"

#include <QDateTime>
#include <QHash>
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

    void start();
    void stopMonitoring();
    void restartMonitoring();
    QStringList rootSearchPaths() const;

    /// Whether the event stream runs: start() returns before it does. From any thread.
    bool isWatching() const { return m_running; }

    /// How a root folder is looked after: watched, polled where its events cannot be had, or missing. GUI
    /// thread.
    FileEventStream::RootState stateOfRoot(const QString& root) const;

    /// Whether a search is going on, or is owed by an earlier run or a request that has not come to it yet.
    /// From any thread.
    bool isSearching() const;

    /// Makes the next start read the root folders anew and search them.
    void requestUpdateWatchedDirs();

    /// Reads the root folders anew. Then starts, or else searches them and starts after that.
    void updateWatchedDirs(bool startWhenDone);

    /// Searches the root folders for bundles without a record, in the background. During a search it has that
    /// look once more. A restart that was asked for is done at the end, whichever request brought it.
    void searchForProjects(bool restartWhenDone);

    /// Reads the paths and times of all records anew. Then calls continuation, or onFailure when the database
    /// fails, on the GUI thread.
    void
    loadProjectPaths(const std::function<void()>& continuation, const std::function<void()>& onFailure = {});

    /// Decides what the bundle is (new, known, moved, copied) and has its record written. Returns as soon as
    /// the first query is queued. fromEvent: notify once it is written; a search notifies once, at its end.
    /// From any thread.
    void directoryChanged(const QString& bundlePath, bool fromEvent);

    /// Has the records moved along with what was moved or renamed.
    void updateMovedOrRenamedPaths();

    void finishedCheckingProject(const ProjectDetails& details);

signals:
    void wasStarted();
    void wasStopped();
    void isRestarting();
    void projectsDbModified();
    void rootSearchPathChanged(QString path);
    void databaseInitialized();
    void databaseInitFailed();

    /// A search goes on and has come across this many bundles so far; some ten times a second at most.
    void searchProgressed(int bundlesFound);
    /// The search has ended, and what it found is in the database.
    void searchEnded();

private:
    void initializeFilesystemEventStream();
    void streamStarted(const std::shared_ptr<FileEventStream>& stream, bool started);
    void stopFilesystemEventStream();
    void startLater();
    void takeEvents(const QList<FileEvent>& events);
    void takeBatch(const EventBatch& batch);
    /// While the database fails. Says whether it does.
    bool letWaitForDatabase(const QString& bundlePath);
    /// Says whether there was something to check that is not being checked already.
    bool checkBundle(const QString& bundlePath, bool fromEvent);
    bool isSearched(const QString& path) const;
    void bundleWritten(const ProjectDetails& details, bool fromEvent);
    void bundleVanished(const ProjectDetails& details);

    ProjectSearch::Callbacks searchCallbacks();
    void takeFolders(const WatchedFolders& folders, bool startWhenDone);
    void searchWalked(const QSet<QString>& knownBefore, bool restartWanted);
    void rememberUnsettledSearch() const;

    /// A search and a batch of events run this far ahead of their checks and no further, so that what the
    /// user does meanwhile is not queued behind thousands of them.
    static constexpr qsizetype mostChecksAtOnce = 16;

    TaskManager& m_tasks;
    const std::chrono::milliseconds m_latency;
    mutable std::recursive_mutex m_mutex; // guards what follows, up to the atomics
    WatchedFolders m_folders;
    QSet<QString> m_knownPaths;
    QHash<QString, qint64> m_recordedTimes;
    QDateTime m_rootPathsDatabaseTime;
    std::shared_ptr<ChecksInProgress> m_checks = std::make_shared<ChecksInProgress>();
    UnresolvedMoves m_moves;
    Rechecks m_rechecks;                       // GUI thread
    VanishedBundles m_vanished;                // GUI thread
    std::shared_ptr<FileEventStream> m_stream; // GUI thread
    bool m_isStartDelayed = false;             // GUI thread
    bool m_arePathsUnreadable = false;         // GUI thread
    std::atomic<bool> m_running = false;
    std::atomic<bool> m_isStopping = false; // the stream's thread is being waited for
    std::atomic<bool> m_updateRequested = false;
    std::atomic<bool> m_searchOwed = false;
    ProjectSearch m_search;
};

} // namespace Stemhaven
