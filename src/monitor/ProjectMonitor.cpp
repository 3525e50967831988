#include "monitor/ProjectMonitor.h"

#include "app/SettingsKeys.h"
#include "app/Shutdown.h"
#include "app/errors/DbException.h"
#include "app/errors/ErrorHandler.h"
#include "app/errors/Guarded.h"
#include "database/DatabaseInit.h"
#include "database/ProjectPaths.h"
#include "database/SimpleTask.h"
#include "database/TaskManager.h"
#include "monitor/BundleCheck.h"
#include "monitor/MoveResolution.h"
#include "monitor/ReplayPosition.h"
#include "monitor/WatchedFoldersQuery.h"
#include "project/BundleSuffixes.h"

#include <QDebug>
#include <QFileInfo>
#include <QPointer>
#include <QSettings>
#include <QThreadPool>
#include <QTimer>

namespace Stemhaven {

namespace {

// A search runs this far ahead of its checks and no further, so that what the user does meanwhile is not
// queued behind thousands of them.
constexpr qsizetype mostChecksAtOnce = 16;

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
      m_rechecks(latency, [this](const QString& bundlePath) { directoryChanged(bundlePath, true); }),
      m_search(searchCallbacks()) {
    // Used here, the settings are still there for the destructor at the end of the process.
    // What happens from now on is replayed by the next start at the latest, also where no event comes before
    // it.
    if (ReplayPosition::stored() == FileWatchRequest::sinceNow)
        ReplayPosition::advanceTo(FileEventStream::currentEventID());
    m_searchOwed = QSettings().value(SettingsKeys::searchWasInProgress, false).toBool();
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
    loadProjectPaths([this] { updateWatchedDirs(!m_searchOwed); });
}

ProjectMonitor::~ProjectMonitor() {
    loggingFailures(QStringLiteral("Project Monitor destructor failed"), [this] {
        rememberUnsettledSearch();
        stopFilesystemEventStream();
        qDebug() << "ProjectMonitor: Shutting down...";
        ReplayPosition::settle(m_moves.oldestEventID());
    });
}

void ProjectMonitor::rememberUnsettledSearch() const {
    QSettings().setValue(SettingsKeys::searchWasInProgress, isSearching());
}

QStringList ProjectMonitor::rootSearchPaths() const {
    const std::lock_guard lock(m_mutex);
    return m_folders.roots();
}

FileEventStream::RootState ProjectMonitor::stateOfRoot(const QString& root) const {
    if (m_stream)
        return m_stream->stateOf(root);
    return QFileInfo::exists(root) ? FileEventStream::RootState::Watched
                                   : FileEventStream::RootState::Missing;
}

bool ProjectMonitor::isSearching() const {
    return m_searchOwed || m_search.isUnsettled();
}

void ProjectMonitor::requestUpdateWatchedDirs() {
    m_updateRequested = true;
}

void ProjectMonitor::start() {
    if (m_running)
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
    {
        const std::lock_guard lock(m_mutex);
        request.roots = m_folders.roots();
        request.ancestors = QStringList(m_folders.ancestors().begin(), m_folders.ancestors().end());
        if (!request.ancestors.isEmpty()) {
            for (const auto& bundle : std::as_const(m_knownPaths)) {
                if (!m_folders.isBelowRoot(bundle))
                    request.strayBundles.append(bundle);
            }
        }
    }
    if (request.roots.isEmpty() && request.ancestors.isEmpty())
        return;
    qDebug() << "Starting project monitoring event stream to monitor paths: " << request.roots;
    if (FileEventStream::earlierStreamIsClosing()) {
        qWarning()
            << "The previous event stream is still being cleaned up. Project monitor will try to start again "
               "later...";
        startLater();
        return;
    }
    request.bundleSuffixes = bundleSuffixes();
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
    // Not under the lock: the stream may be waiting for it to deliver a batch.
    m_stream->stop();
    m_stream.reset();
}

void ProjectMonitor::takeEvents(const QList<FileEvent>& events) {
    loggingFailures(QStringLiteral("ProjectMonitor: event callback failed!"), [&] {
        m_moves.startBatch();
        EventBatch batch;
        {
            const std::lock_guard lock(m_mutex);
            batch = filterEvents(
                events, m_folders, [this](unsigned long long fileID) { return m_moves.contains(fileID); });
        }
        m_moves.add(batch.moves);
        takeBatch(batch);
    });
}

void ProjectMonitor::takeBatch(const EventBatch& batch) {
    for (const auto& root : batch.renamedRoots)
        QMetaObject::invokeMethod(
            this, [this, root] { emit rootSearchPathChanged(root); }, Qt::QueuedConnection);
    updateMovedOrRenamedPaths();
    // Once the stream is being stopped its thread is waited for, and must not wait for callbacks itself.
    const auto giveUp = [this] {
        return !m_running || Shutdown::hasBegun();
    };
    for (const auto& bundle : batch.changedBundles) {
        m_checks->waitForRoom(mostChecksAtOnce, giveUp);
        directoryChanged(bundle, true);
    }
    if (batch.needsSearch)
        searchForProjects(false);
    // The next start may pass over what has been written, and nothing else.
    m_checks->waitForRoom(1, giveUp);
    if (batch.lastEventID != 0 && !giveUp())
        ReplayPosition::advanceTo(batch.lastEventID);
}

void ProjectMonitor::updateMovedOrRenamedPaths() {
    const auto moves = m_moves.all();
    if (moves.isEmpty())
        return;
    qDebug() << "ProjectMonitor: Beginning update of moved or renamed paths";
    const QPointer<ProjectMonitor> self(this);
    const auto resolution = std::make_shared<MoveResolution>(
        m_tasks,
        MoveResolution::Callbacks{
            [self](unsigned long long fileID) {
                if (self)
                    self->m_moves.remove(fileID);
            },
            [self] {
                if (self)
                    emit self->projectsDbModified();
            },
            [self](const QString& bundlePath) {
                if (self)
                    self->directoryChanged(bundlePath, true);
            }});
    for (const auto& move : moves)
        resolution->resolve(move);
}

void ProjectMonitor::loadProjectPaths(const std::function<void()>& continuation) {
    const auto paths = std::make_shared<QSet<QString>>();
    // Read on the worker: a large catalogue would hold up the GUI thread.
    auto task = std::make_shared<SimpleTask>(
        [&tasks = m_tasks, paths] { *paths = readProjectPaths(tasks.mainDatabase()); });
    const QPointer<ProjectMonitor> self(this);
    task->setSuccessCallback([self, paths, continuation](const std::shared_ptr<Task>&) {
        if (!self)
            return;
        if (paths->isEmpty())
            qDebug() << "No project paths found!";
        {
            const std::lock_guard lock(self->m_mutex);
            self->m_knownPaths = *paths;
        }
        if (continuation)
            continuation();
    });
    task->setErrorCallback([](const std::shared_ptr<Task>&, const Exception& error) {
        qCritical() << "Could not retrieve project filepaths!" << error;
    });
    m_tasks.addTask(task);
}

void ProjectMonitor::updateWatchedDirs(bool startWhenDone) {
    m_updateRequested = false;
    m_searchOwed = m_searchOwed || !startWhenDone;
    const QPointer<ProjectMonitor> self(this);
    const std::lock_guard lock(m_mutex);
    queryWatchedFolders(m_tasks, m_knownPaths, [self, startWhenDone](const WatchedFolders& folders) {
        if (self)
            self->takeFolders(folders, startWhenDone);
    });
}

void ProjectMonitor::takeFolders(const WatchedFolders& folders, bool startWhenDone) {
    stopFilesystemEventStream();
    {
        const std::lock_guard lock(m_mutex);
        m_folders = folders;
    }
    if (folders.roots().isEmpty())
        m_searchOwed = false;
    else if (startWhenDone)
        start();
    else
        searchForProjects(true);
}

void ProjectMonitor::searchForProjects(bool restartWhenDone) {
    m_searchOwed = !m_search.request(restartWhenDone);
    // Written at once: after a crash the search is taken up again, too.
    rememberUnsettledSearch();
}

ProjectSearch::Callbacks ProjectMonitor::searchCallbacks() {
    return {
        [this] { return rootSearchPaths(); },
        [this] {
            const std::lock_guard lock(m_mutex);
            return m_knownPaths;
        },
        [this](const std::function<bool()>& giveUp) { m_checks->waitForRoom(mostChecksAtOnce, giveUp); },
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
        [this](const QSet<QString>& knownBefore, bool restartWanted) {
            searchWalked(knownBefore, restartWanted);
        },
    };
}

void ProjectMonitor::searchWalked(const QSet<QString>& knownBefore, bool restartWanted) {
    // Queued behind the checks, each of which is over when its first task is.
    loadProjectPaths([this, knownBefore, restartWanted] {
        m_search.settled();
        rememberUnsettledSearch();
        if (!isSearching())
            emit searchEnded();
        bool changed = false;
        {
            const std::lock_guard lock(m_mutex);
            changed = m_knownPaths != knownBefore;
        }
        if (!changed && !restartWanted)
            return;
        loggingFailures(
            QStringLiteral("Restarting project monitor failed."), [this] { restartMonitoring(); });
        emit projectsDbModified();
    });
}

void ProjectMonitor::directoryChanged(const QString& bundlePath, bool fromEvent) {
    loggingFailures(QStringLiteral("Unexpected exception occurred during directory changed event!"), [&] {
        const std::lock_guard lock(m_mutex);
        const ProjectDetails details(bundlePath);
        if (!details.isValid || details.name.startsWith(tr("Untitled")))
            return;
        const QPointer<ProjectMonitor> self(this);
        const auto check = BundleCheck::begin(
            m_tasks, m_checks, details,
            BundleCheck::Callbacks{
                [self, fromEvent](const ProjectDetails& written) {
                    if (self)
                        self->bundleWritten(written, fromEvent);
                },
                [self, fromEvent](const ProjectDetails& unreadable) {
                    if (self && fromEvent)
                        self->m_rechecks.bundleUnreadable(unreadable.bundlePath());
                },
                [self](const ProjectDetails& unanswered) {
                    if (self)
                        self->m_rechecks.databaseFailed(unanswered.bundlePath());
                }});
        if (check)
            check->start();
        else
            qDebug() << "Already checking project: " << details << ". Moving on";
    });
}

void ProjectMonitor::bundleWritten(const ProjectDetails& details, bool fromEvent) {
    m_moves.remove(details.sufid.inode);
    m_rechecks.bundleWritten(details.bundlePath());
    if (fromEvent)
        emit projectsDbModified();
}

void ProjectMonitor::finishedCheckingProject(const ProjectDetails& details) {
    m_checks->finish(details);
}

} // namespace Stemhaven
