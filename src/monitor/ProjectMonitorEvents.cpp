// How the monitor answers to what happens to bundles.

#include "app/Shutdown.h"
#include "app/errors/Guarded.h"
#include "monitor/BundleCheck.h"
#include "monitor/MoveResolution.h"
#include "monitor/ProjectMonitor.h"
#include "monitor/ReplayPosition.h"

#include <QDebug>
#include <QPointer>

namespace Stemhaven {

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
    // The thread that stops the stream waits for this one, which must not wait for callbacks then.
    const auto giveUp = [this] {
        return m_isStopping || Shutdown::hasBegun();
    };
    bool allAreChecked = true;
    for (const auto& bundle : batch.changedBundles) {
        m_checks->waitForRoom(mostChecksAtOnce, giveUp);
        if (giveUp()) {
            // The next stream replays the others, as the position stays where it is.
            allAreChecked = false;
            break;
        }
        if (letWaitForDatabase(bundle))
            allAreChecked = false;
        else
            checkBundle(bundle, true);
    }
    if (batch.needsSearch)
        searchForProjects(false);
    // The next start may pass over what has been written, and nothing else.
    m_checks->waitForRoom(1, giveUp);
    if (batch.lastEventID != 0 && allAreChecked && !m_rechecks.areWaitingForDatabase() && !giveUp())
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

void ProjectMonitor::directoryChanged(const QString& bundlePath, bool fromEvent) {
    if (!letWaitForDatabase(bundlePath))
        checkBundle(bundlePath, fromEvent);
}

bool ProjectMonitor::letWaitForDatabase(const QString& bundlePath) {
    if (!m_rechecks.areWaitingForDatabase())
        return false;
    QMetaObject::invokeMethod(
        this, [this, bundlePath] { m_rechecks.waitForDatabase(bundlePath); }, Qt::QueuedConnection);
    return true;
}

bool ProjectMonitor::checkBundle(const QString& bundlePath, bool fromEvent) {
    bool begun = false;
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
                [self](const ProjectDetails& vanished) {
                    if (self)
                        self->bundleVanished(vanished);
                },
                [self](const ProjectDetails& unanswered) {
                    if (self)
                        self->m_rechecks.databaseFailed(unanswered.bundlePath());
                },
                [self] {
                    Shutdown::post([self] {
                        if (self)
                            self->m_rechecks.checkEnded();
                    });
                },
                [self](const QString& path) {
                    return self && self->isSearched(path);
                }});
        begun = check != nullptr;
        if (begun) {
            check->start();
            return;
        }
        qDebug() << "Already checking project: " << details << ". Moving on";
        if (fromEvent) {
            QMetaObject::invokeMethod(
                this, [this, bundlePath] { m_rechecks.checkLater(bundlePath); }, Qt::QueuedConnection);
        }
    });
    return begun;
}

bool ProjectMonitor::isSearched(const QString& path) const {
    const std::lock_guard lock(m_mutex);
    return m_folders.isBelowRoot(path);
}

void ProjectMonitor::bundleWritten(const ProjectDetails& details, bool fromEvent) {
    m_moves.remove(details.sufid.inode);
    m_rechecks.bundleWritten(details.bundlePath());
    if (fromEvent)
        emit projectsDbModified();
}

void ProjectMonitor::bundleVanished(const ProjectDetails& details) {
    m_vanished.add(details);
    m_rechecks.bundleVanished(details.bundlePath());
}

void ProjectMonitor::finishedCheckingProject(const ProjectDetails& details) {
    m_checks->finish(details);
}

} // namespace Stemhaven
