// How the monitor stands aside while the databases and the settings are replaced.

#include "monitor/ProjectMonitor.h"
#include "monitor/ReplayPosition.h"

#include <QDebug>

namespace Stemhaven {

void ProjectMonitor::suspend() {
    if (m_isSuspended.exchange(true))
        return;
    qDebug() << "ProjectMonitor: Suspending...";
    ++m_suspensions;
    // First, as its events bring searches and checks.
    stopFilesystemEventStream();
    m_searchOwed = isSearching();
    m_search.interrupt();
    m_checks.suspend();
}

bool ProjectMonitor::isAtRest() const {
    return !m_search.isUnsettled() && m_checks.isIdle();
}

void ProjectMonitor::resume() {
    m_isSuspended = false;
    m_checks.resume();
    m_progress.startAnew();
    // Also where the folders are the same: what was under way at the suspension may have brought others.
    updateWatchedDirs(!m_searchOwed);
}

void ProjectMonitor::resumeWithOthers(bool startNow) {
    m_isSuspended = false;
    m_checks.resume();
    m_progress.startAnew();
    m_moves.clear();
    // A bundle that was read for the other catalogue would not be replayed for this one.
    m_recorded->replaceAll({});
    ReplayPosition::adopt(FileEventStream::currentEventID());
    m_searchOwed = true;
    if (startNow) {
        loadAtStart(shortestPause);
    } else {
        m_updateRequested = true;
        loadProjectPaths({});
    }
    emit databaseInitialized();
}

} // namespace Stemhaven
