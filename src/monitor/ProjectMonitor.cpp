#include "monitor/ProjectMonitor.h"

#include "app/Shutdown.h"
#include "app/errors/DbException.h"
#include "app/errors/ErrorHandler.h"
#include "app/errors/Guarded.h"
#include "database/DatabaseInit.h"
#include "database/RecordedBundle.h"
#include "database/SimpleTask.h"
#include "database/TaskManager.h"
#include "monitor/ReplayPosition.h"
#include "monitor/WatchedFoldersQuery.h"
#include "platform/RemoteCalls.h"
#include "project/BundleSuffixes.h"

#include <QDebug>
#include <QFileInfo>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace Stemhaven {

namespace {

// Between attempts to read from a database that fails.
constexpr std::chrono::milliseconds longestPause(10'000);

std::chrono::milliseconds nextPause(std::chrono::milliseconds pause) {
    return std::min(pause * 2, longestPause);
}

} // namespace

ProjectMonitor& ProjectMonitor::instance() {
    static ProjectMonitor monitor(TaskManager::instance());
    return monitor;
}

void ProjectMonitor::stop() {
    instance().stopMonitoring();
}

void ProjectMonitor::restart() {
    instance().restartMonitoring();
}

bool ProjectMonitor::isRunning() {
    return instance().m_running;
}

QStringList ProjectMonitor::getRootSearchPaths() {
    return instance().rootSearchPaths();
}

ProjectMonitor::ProjectMonitor(TaskManager& tasks, std::chrono::milliseconds latency)
    : m_tasks(tasks),
      m_latency(latency),
      m_progress([](unsigned long long id) { ReplayPosition::advanceTo(id); }),
      m_vanished(latency),
      m_search(m_recorded, searchCallbacks()),
      m_checks(tasks, m_recorded, latency, checkCallbacks()) {
    // Used here, the settings are still there for the destructor at the end of the process.
    // What happens from now on is replayed by the next start at the latest, also where no event comes before
    // it.
    if (ReplayPosition::stored() == FileWatchRequest::sinceNow)
        ReplayPosition::advanceTo(FileEventStream::currentEventID());
    m_searchOwed = ReplayPosition::searchWasInProgress();
    m_rootPathsDatabaseTime = QFileInfo(tasks.rootPathsPath()).fileTime(QFileDevice::FileModificationTime);

    const QPointer<ProjectMonitor> self(this);
    initDatabase(
        tasks,
        [self] {
            if (self)
                emit self->databaseInitialized();
        },
        [self] {
            if (self)
                emit self->databaseInitFailed();
        });
    loadAtStart(shortestPause);
}

/// The database may be locked at the start: then it is asked again with growing pauses.
void ProjectMonitor::loadAtStart(std::chrono::milliseconds pause) {
    loadProjectPaths(
        [this] { updateWatchedDirs(!m_searchOwed); },
        [this, pause] { QTimer::singleShot(pause, this, [this, pause] { loadAtStart(nextPause(pause)); }); });
}

ProjectMonitor::~ProjectMonitor() {
    loggingFailures(QStringLiteral("Project Monitor destructor failed"), [this] {
        rememberUnsettledSearch();
        shutDown();
        qDebug() << "ProjectMonitor: Shutting down...";
        ReplayPosition::settle(m_moves.oldestEventID());
    });
}

void ProjectMonitor::shutDown() {
    stopFilesystemEventStream();
    m_search.stop();
    m_checks.stop();
}

void ProjectMonitor::rememberUnsettledSearch() const {
    ReplayPosition::rememberSearch(isSearching());
}

QStringList ProjectMonitor::rootSearchPaths() const {
    const std::lock_guard lock(m_mutex);
    return m_folders.roots();
}

FileEventStream::RootState ProjectMonitor::stateOfRoot(const QString& root) const {
    return m_stream ? m_stream->stateOf(root) : FileEventStream::RootState::Missing;
}

ProjectMonitor::FolderState ProjectMonitor::stateOfFolder(const QString& folder) const {
    const QString root = WatchedFolders::asRoot(folder);
    if (!rootSearchPaths().contains(root))
        return FolderState::Waiting;
    if (isSearching())
        return m_search.wasUnreadable(root) ? FolderState::Missing : FolderState::Searched;
    if (!m_running)
        return FolderState::Waiting;
    switch (stateOfRoot(root)) {
    case FileEventStream::RootState::Watched:
        return FolderState::Watched;
    case FileEventStream::RootState::Polled:
        return RemoteCalls::mountOf(root).isEmpty() ? FolderState::PolledBeyondLimit
                                                    : FolderState::PolledRemote;
    case FileEventStream::RootState::Missing:
        break;
    }
    return FolderState::Missing;
}

bool ProjectMonitor::isSearching() const {
    return m_searchOwed || m_search.isUnsettled();
}

void ProjectMonitor::requestUpdateWatchedDirs() {
    m_updateRequested = true;
}

void ProjectMonitor::start() {
    if (m_running || m_isSuspended)
        return;
    if (m_updateRequested) {
        updateWatchedDirs(false);
        return;
    }
    if (m_stream)
        return;
    initializeFilesystemEventStream();
    if (!m_stream)
        return;
    // On the pool: setting the watches of a large library takes longer than the GUI thread may wait.
    const QPointer<ProjectMonitor> self(this);
    QThreadPool::globalInstance()->start([self, stream = m_stream] {
        const bool started = stream->start();
        Shutdown::post([self, stream, started] {
            if (self)
                self->streamStarted(stream, started);
        });
    });
}

void ProjectMonitor::streamStarted(const std::shared_ptr<FileEventStream>& stream, bool started) {
    if (stream != m_stream)
        return;
    if (!started) {
        m_stream.reset();
        const Exception error(QStringLiteral("Could not initialize project monitoring event stream!"));
        qCritical() << error;
        ErrorHandler::instance().reportError(tr("Could not start project monitor!"), error, QtCriticalMsg);
        return;
    }
    m_running = true;
    qInfo() << "Project monitoring event stream started!";
    emit wasStarted();
    lookForStrays();
}

/// A folder above a stray that was renamed while no stream was running sends no event any more.
void ProjectMonitor::lookForStrays() {
    const auto watched = folders();
    if (watched.ancestors().isEmpty())
        return;
    const QPointer<ProjectMonitor> self(this);
    QThreadPool::globalInstance()->start([self, watched, recorded = m_recorded] {
        if (StrayBundles::find(recorded->all(), watched).moved.isEmpty())
            return;
        Shutdown::post([self] {
            if (self)
                self->updateWatchedDirs(true);
        });
    });
}

void ProjectMonitor::stopMonitoring() {
    qDebug() << "ProjectMonitor: Stopping...";
    stopFilesystemEventStream();
}

void ProjectMonitor::restartMonitoring() {
    emit isRestarting();
    qDebug() << "ProjectMonitor: Restarting...";
    stopFilesystemEventStream();
    start();
}

void ProjectMonitor::initializeFilesystemEventStream() {
    FileWatchRequest request;
    const auto watched = folders();
    const auto recorded = m_recorded->all();
    request.roots = watched.roots();
    request.ancestors = QStringList(watched.ancestors().begin(), watched.ancestors().end());
    for (auto it = recorded.begin(); it != recorded.end() && !request.ancestors.isEmpty(); ++it) {
        if (it.key().startsWith(u'/') && !watched.isBelowRoot(it.key()))
            request.strayBundles.append(it.key());
    }
    if (request.roots.isEmpty() && request.ancestors.isEmpty())
        return;
    qDebug() << "Starting project monitoring event stream to monitor paths: " << request.roots;
    if (FileEventStream::earlierStreamIsClosing()) {
        if (!std::exchange(m_isStartDelayed, true))
            qWarning() << "The previous event stream is still being cleaned up. Project monitor will try to "
                          "start again later...";
        startLater();
        return;
    }
    m_isStartDelayed = false;
    request.bundleSuffixes = bundleSuffixes();
    request.recordedTimes =
        [bundles = m_recorded](const QString& path) -> std::optional<FileWatchRequest::RecordedTimes> {
        const auto bundle = bundles->at(path);
        if (!bundle)
            return std::nullopt;
        return FileWatchRequest::RecordedTimes{bundle->lastModified, bundle->readAt};
    };
    request.sinceEventID = ReplayPosition::stored();
    request.latency = m_latency;
    m_stream =
        FileEventStream::create(request, [this](const QList<FileEvent>& events) { takeEvents(events); });
}

void ProjectMonitor::startLater() {
    constexpr std::chrono::milliseconds untilClosed(200);
    QTimer::singleShot(untilClosed, this, [this] {
        loggingFailures(QStringLiteral("Could not start project monitor!"), [this] { start(); });
    });
}

void ProjectMonitor::stopFilesystemEventStream() {
    m_running = false;
    emit wasStopped();
    if (!m_stream)
        return;
    qInfo() << "Stopping project monitoring event stream...";
    m_stream->stop();
    // What was delivered is not replayed, once it has been written.
    if (const auto id = m_stream->deliveredUpTo(); id != 0)
        m_progress.begin(id);
    m_stream.reset();
}

void ProjectMonitor::loadProjectPaths(
    const std::function<void()>& continuation, const std::function<void()>& onFailure) {
    // Read on the worker: a large catalogue would hold up the GUI thread.
    auto task = std::make_shared<SimpleTask>([&tasks = m_tasks, recorded = m_recorded] {
        auto bundles = readRecordedBundles(tasks.mainDatabase());
        if (bundles.isEmpty())
            qDebug() << "No project paths found!";
        recorded->replaceAll(std::move(bundles));
    });
    const QPointer<ProjectMonitor> self(this);
    task->setSuccessCallback([self, continuation](const std::shared_ptr<Task>&) {
        if (!self)
            return;
        self->m_arePathsUnreadable = false;
        if (continuation)
            continuation();
    });
    task->setErrorCallback([self, onFailure](const std::shared_ptr<Task>&, const Exception& error) {
        if (!self)
            return;
        // A search asks again every few seconds.
        if (!std::exchange(self->m_arePathsUnreadable, true))
            qCritical() << "Could not retrieve project filepaths!" << error;
        if (onFailure)
            onFailure();
    });
    m_tasks.addTask(task);
}

void ProjectMonitor::updateWatchedDirs(bool startWhenDone) {
    m_updateRequested = m_isSuspended.load();
    m_searchOwed = m_searchOwed || !startWhenDone;
    if (m_isSuspended)
        return;
    const QPointer<ProjectMonitor> self(this);
    queryWatchedFolders(
        m_tasks, m_recorded,
        [self, startWhenDone,
         suspensions = m_suspensions](const WatchedFolders& folders, const StrayBundles& strays) {
            if (self && self->m_suspensions == suspensions)
                self->takeFolders(folders, strays, startWhenDone);
        },
        [self, startWhenDone] {
            if (self)
                QTimer::singleShot(
                    shortestPause, self, [self, startWhenDone] { self->updateWatchedDirs(startWhenDone); });
        });
}

void ProjectMonitor::takeFolders(
    const WatchedFolders& folders, const StrayBundles& strays, bool startWhenDone) {
    stopFilesystemEventStream();
    bool areOthers = false;
    {
        const std::lock_guard lock(m_mutex);
        areOthers = m_folders.roots() != folders.roots();
        m_folders = folders;
    }
    if (areOthers)
        emit watchedFoldersChanged();
    const auto isStray = [&](const QString& path) {
        return !folders.isBelowRoot(path);
    };
    if (m_recorded->setMissing(strays.missing, isStray))
        emit missingBundlesChanged();
    if (!strays.moved.isEmpty()) {
        const auto before = m_recorded->revision();
        for (const auto& moved : strays.moved)
            check(moved.to, {moved.from}, true, nullptr);
        // The folders above them are watched once they are on record there.
        m_checks.whenIdle([this, before] {
            if (m_recorded->revision() == before)
                return;
            QMetaObject::invokeMethod(
                this, [this] { updateWatchedDirs(true); }, Qt::QueuedConnection);
        });
    }
    // Also without a folder to search: a search of those that were removed ends with it.
    if (startWhenDone)
        start();
    else
        searchForProjects(true);
}

void ProjectMonitor::searchForProjects(bool restartWhenDone) {
    m_searchOwed = m_isSuspended || !m_search.request(restartWhenDone);
    // Written at once: after a crash the search is taken up again, too.
    rememberUnsettledSearch();
}

ProjectSearch::Callbacks ProjectMonitor::searchCallbacks() {
    return {
        [this] { return rootSearchPaths(); },
        [this](const std::function<bool()>& giveUp) { m_checks.waitForRoom(mostChecksWaiting, giveUp); },
        [this](const QString& bundlePath) { directoryChanged(bundlePath, false); },
        [this](int bundlesFound) {
            QMetaObject::invokeMethod(
                this,
                [this, bundlesFound] {
                    if (isSearching())
                        emit searchProgressed(bundlesFound);
                },
                Qt::QueuedConnection);
        },
        [this](const QStringList& roots, const QSet<QString>& missing) {
            const auto isBelowRoot = [&](const QString& path) {
                return std::any_of(
                    roots.begin(), roots.end(), [&](const QString& root) { return path.startsWith(root); });
            };
            if (m_recorded->setMissing(missing, isBelowRoot)) {
                tellMissingBundles();
                m_checks.addMissing(missing);
            }
        },
        [this](quint64 recordedBefore, bool restartWanted) { searchWalked(recordedBefore, restartWanted); },
    };
}

void ProjectMonitor::searchWalked(quint64 recordedBefore, bool restartWanted) {
    m_checks.whenIdle([this, recordedBefore, restartWanted] {
        QMetaObject::invokeMethod(
            this, [this, recordedBefore, restartWanted] { settleSearch(recordedBefore, restartWanted); },
            Qt::QueuedConnection);
    });
}

void ProjectMonitor::settleSearch(quint64 recordedBefore, bool restartWanted) {
    if (m_isSuspended) {
        // The search is owed, and whatever resumes the monitor starts it.
        m_search.settled();
        return;
    }
    const auto settle = [this, recordedBefore, restartWanted] {
        m_search.settled();
        rememberUnsettledSearch();
        if (!isSearching())
            emit searchEnded();
        if (m_recorded->revision() == recordedBefore && !restartWanted)
            return;
        loggingFailures(
            QStringLiteral("Restarting project monitor failed."), [this] { restartMonitoring(); });
        emit projectsDbModified();
    };
    const auto tryAgain = [this, recordedBefore, restartWanted] {
        QTimer::singleShot(longestPause, this, [this, recordedBefore, restartWanted] {
            settleSearch(recordedBefore, restartWanted);
        });
    };
    loadProjectPaths(settle, tryAgain);
}

} // namespace Stemhaven
