// How the monitor answers to what happens to bundles.

#include "app/errors/Guarded.h"
#include "monitor/ProjectMonitor.h"
#include "monitor/ReplayPosition.h"
#include "platform/RemoteCalls.h"
#include "project/BundleSuffixes.h"

#include <QDebug>

#include <algorithm>
#include <utility>

namespace Stemhaven {

BundleChecks::Callbacks ProjectMonitor::checkCallbacks() {
    return {
        [this] { return rootSearchPaths(); },
        [this](const QString& path) { return isSearched(path); },
        [this] { return m_searchOwed || m_search.isWalking(); },
        [this](const QList<ProjectChanges::Written>& written, bool fromEvent, bool hasFound) {
            recordsWritten(written, fromEvent, hasFound);
        },
        [this](const ProjectDetails& details) { bundleVanished(details); },
    };
}

void ProjectMonitor::takeEvents(const QList<FileEvent>& events) {
    loggingFailures(QStringLiteral("ProjectMonitor: event callback failed!"), [&] {
        m_moves.startBatch();
        const auto batch = filterEvents(
            events,
            {folders(), [this](const QString& path) { return m_recorded->at(path).has_value(); },
             [this](unsigned long long fileID) {
                 return m_moves.contains(fileID);
             }});
        m_moves.add(batch.moves);
        takeBatch(batch);
    });
}

void ProjectMonitor::takeBatch(const EventBatch& batch) {
    for (const auto& root : batch.renamedRoots)
        QMetaObject::invokeMethod(
            this, [this, root] { emit rootSearchPathChanged(root); }, Qt::QueuedConnection);
    // Before the checks, which leave some decisions to the end of a search.
    if (batch.needsSearch)
        searchForProjects(false);
    const auto ticket = batch.lastEventID == 0 ? nullptr : m_progress.begin(batch.lastEventID);
    followMoves(ticket);
    for (const auto& bundle : batch.changedBundles)
        check(bundle, {}, true, ticket);
}

void ProjectMonitor::updateMovedOrRenamedPaths() {
    followMoves(nullptr);
}

void ProjectMonitor::followMoves(const Ticket& ticket) {
    const auto moves = m_moves.all();
    if (moves.isEmpty())
        return;
    qDebug() << "ProjectMonitor: Beginning update of moved or renamed paths";
    for (const auto& move : moves) {
        if (move.isProject())
            followProject(move, ticket);
        else
            followFolder(move, ticket);
    }
}

void ProjectMonitor::followProject(const ChangedPath& changed, const Ticket& ticket) {
    const auto latest = changed.getLatestPath();
    if (!latest) {
        qWarning() << "ProjectMonitor: No latest path found for moved/renamed project! Skipping...";
        return;
    }
    QStringList priorPaths;
    const auto priors = changed.getPriorPaths();
    for (const auto& prior : priors) {
        // Two volumes may have files of the same number, so this can be another bundle.
        if (prior.path != *latest && pathExists(prior.path))
            check(prior.path, priorPaths, true, ticket);
        priorPaths.append(prior.path);
    }
    if (!pathExists(*latest)) {
        qDebug() << "Searching for moved/renamed project. Not found at:";
        qDebug() << "\tPrevious: " << priorPaths;
        qDebug() << "\tPotential:" << *latest;
        // It may have gone where nobody watches, for example to the trash.
        checkMissing(priorPaths + QStringList{*latest}, ticket);
        return;
    }
    qDebug() << "ProjectMonitor: Found moved/renamed project at: " << *latest;
    m_moves.remove(changed.fileID());
    check(*latest, priorPaths, true, ticket);
}

void ProjectMonitor::followFolder(const ChangedPath& changed, const Ticket& ticket) {
    const auto latest = changed.getLatestPathFound();
    if (!latest) {
        qDebug()
            << "ProjectMonitor: Could not find the latest path for changed directory! Checking next paths";
        qDebug() << "\tPossible locations: " << changed;
        const auto entries = changed.getPriorPaths();
        for (const auto& entry : entries + QList<ChangedPath::Entry>{{*changed.getLatestPath(), 0}})
            checkBelow(entry.path, ticket);
        // A folder that was renamed again before its watch could follow is not told of any more.
        if (wasAboveStrays(changed)) {
            m_moves.remove(changed.fileID());
            QMetaObject::invokeMethod(
                this, [this] { updateWatchedDirs(true); }, Qt::QueuedConnection);
        }
        return;
    }
    const auto entries = changed.getPriorPaths();
    bool isSettled = false;
    for (const auto& prior : entries) {
        if (prior.path == *latest)
            continue;
        isSettled = true;
        {
            const std::lock_guard lock(m_mutex);
            m_folders.moveAncestors(prior.path, *latest);
        }
        const auto bundles = m_recorded->below(prior.path + QLatin1Char('/'));
        for (const auto& path : bundles)
            check(*latest + path.mid(prior.path.size()), {path}, true, ticket);
    }
    if (isSettled)
        m_moves.remove(changed.fileID());
}

/// The bundles below a folder that has left without being seen elsewhere are missing by now.
void ProjectMonitor::checkBelow(const QString& folder, const Ticket& ticket) {
    checkMissing(m_recorded->below(folder + QLatin1Char('/')), ticket);
}

/// Once for each: what is on record as missing already is not told of again.
void ProjectMonitor::checkMissing(const QStringList& bundles, const Ticket& ticket) {
    const auto missing = m_recorded->missing();
    for (const auto& path : bundles) {
        if (!missing.contains(path) && m_recorded->at(path))
            check(path, {}, true, ticket);
    }
}

bool ProjectMonitor::wasAboveStrays(const ChangedPath& changed) const {
    const auto watched = folders();
    const auto priors = changed.getPriorPaths();
    return std::any_of(priors.begin(), priors.end(), [&](const ChangedPath::Entry& prior) {
        return watched.isAncestor(prior.path);
    });
}

void ProjectMonitor::directoryChanged(const QString& bundlePath, bool fromEvent) {
    check(bundlePath, {}, fromEvent, nullptr);
}

void ProjectMonitor::check(
    const QString& bundlePath, const QStringList& priorPaths, bool fromEvent, const Ticket& ticket) {
    if (!isBundlePath(bundlePath))
        return;
    CheckRequest request{bundlePath, priorPaths, fromEvent, {}};
    if (ticket)
        request.tickets.push_back(ticket);
    if (!m_checks.add(std::move(request)))
        qDebug() << "Already checking project: " << bundlePath << ". Moving on";
}

bool ProjectMonitor::isSearched(const QString& path) const {
    const std::lock_guard lock(m_mutex);
    return m_folders.isBelowRoot(path);
}

WatchedFolders ProjectMonitor::folders() const {
    const std::lock_guard lock(m_mutex);
    return m_folders;
}

void ProjectMonitor::bundleVanished(const ProjectDetails& details) {
    if (m_recorded->markMissing(details.bundlePath()))
        tellMissingBundles();
    QMetaObject::invokeMethod(
        this, [this, details] { m_vanished.add(details); }, Qt::QueuedConnection);
}

void ProjectMonitor::tellMissingBundles() {
    QMetaObject::invokeMethod(
        this, [this] { emit missingBundlesChanged(); }, Qt::QueuedConnection);
}

void ProjectMonitor::recordsWritten(
    const QList<ProjectChanges::Written>& written, bool fromEvent, bool hasFound) {
    for (const auto& record : written)
        m_moves.remove(record.details.sufid.inode);
    if (hasFound)
        tellMissingBundles();
    if (fromEvent)
        QMetaObject::invokeMethod(
            this, [this] { emit projectsDbModified(); }, Qt::QueuedConnection);
}

} // namespace Stemhaven
