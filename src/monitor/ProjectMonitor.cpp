#include "monitor/ProjectMonitor.h"

#include "app/SettingsKeys.h"
#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/DatabaseInit.h"
#include "database/ProjectPaths.h"
#include "database/QueryTask.h"
#include "database/RootPathStatements.h"
#include "database/SimpleTask.h"
#include "database/SqlText.h"
#include "database/TaskManager.h"
#include "monitor/BundleCheck.h"

#include <QDebug>
#include <QFileInfo>
#include <QPointer>
#include <QSettings>
#include <QSqlQuery>
#include <QVariant>

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

ProjectMonitor::ProjectMonitor(TaskManager& tasks) : m_tasks(tasks), m_search(searchCallbacks()) {
    // Used here, the settings are still there for the destructor at the end of the process.
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
        stopMonitoring();
        qDebug() << "ProjectMonitor: Shutting down...";
    });
}

void ProjectMonitor::rememberUnsettledSearch() const {
    QSettings().setValue(SettingsKeys::searchWasInProgress, isSearching());
}

QStringList ProjectMonitor::rootSearchPaths() const {
    const std::lock_guard lock(m_mutex);
    return m_folders.roots();
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
    m_running = true;
    emit wasStarted();
}

void ProjectMonitor::stopMonitoring() {
    qDebug() << "ProjectMonitor: Stopping...";
    m_running = false;
    emit wasStopped();
}

void ProjectMonitor::restartMonitoring() {
    emit isRestarting();
    qDebug() << "ProjectMonitor: Restarting...";
    stopMonitoring();
    start();
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
    auto task = std::make_shared<QueryTask>(RootPathStatements::selectAll(), m_tasks.rootPathsDatabase());
    const QPointer<ProjectMonitor> self(this);
    task->setQueryCallback(
        [self, startWhenDone](const std::shared_ptr<Task>& done, int rows, QSqlQuery* query) {
            if (!self)
                return;
            self->takeRoots(*query);
            if (rows > 0) {
                self->findAncestors(done, startWhenDone);
                return;
            }
            self->m_searchOwed = false;
            qCritical() << "Could not retrieve root project search paths!";
        });
    task->setSqlErrorCallback([](const std::shared_ptr<Task>&, const DbException& error) {
        qCritical() << "Could not retrieve root project search paths!" << error;
    });
    m_tasks.addTask(task);
}

void ProjectMonitor::takeRoots(QSqlQuery& query) {
    stopMonitoring();
    const std::lock_guard lock(m_mutex);
    m_folders = {};
    while (query.next())
        m_folders.addRoot(unescape(query.value(QStringLiteral("root_search_path")).toString()));
}

void ProjectMonitor::findAncestors(const std::shared_ptr<Task>& parent, bool startWhenDone) {
    const auto ancestors = std::make_shared<QSet<QString>>();
    const std::lock_guard lock(m_mutex);
    auto task = std::make_shared<SimpleTask>([ancestors, folders = m_folders, known = m_knownPaths] {
        *ancestors = folders.ancestorsOfStrays(known);
    });
    const QPointer<ProjectMonitor> self(this);
    task->setSuccessCallback([self, ancestors, startWhenDone](const std::shared_ptr<Task>&) {
        if (!self)
            return;
        {
            const std::lock_guard innerLock(self->m_mutex);
            self->m_folders.setAncestors(*ancestors);
        }
        if (startWhenDone)
            self->start();
        else
            self->searchForProjects(true);
    });
    m_tasks.addTask(task, parent);
}

void ProjectMonitor::searchForProjects(bool restartWhenDone) {
    m_search.request(restartWhenDone);
    m_searchOwed = false;
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
        const auto check =
            BundleCheck::begin(m_tasks, m_checks, details, [self, fromEvent](const ProjectDetails&) {
                if (self && fromEvent)
                    emit self->projectsDbModified();
            });
        if (check)
            check->start();
        else
            qDebug() << "Already checking project: " << details << ". Moving on";
    });
}

void ProjectMonitor::finishedCheckingProject(const ProjectDetails& details) {
    m_checks->finish(details);
}

} // namespace Stemhaven
