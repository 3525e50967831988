#include "ui/MissingFolders.h"

#include "monitor/ProjectMonitor.h"

#include <QDir>

using Stemhaven::ProjectMonitor;

MissingFolders::MissingFolders(ProjectMonitor& monitor, QObject* parent)
    : QObject(parent),
      m_monitor(monitor) {
    connect(&monitor, &ProjectMonitor::wasStarted, this, &MissingFolders::look);
    // A folder that goes or comes back is searched.
    connect(&monitor, &ProjectMonitor::searchEnded, this, &MissingFolders::look);
}

void MissingFolders::look() {
    // Until it watches, the monitor does not know.
    if (!m_monitor.isWatching())
        return;
    QStringList missing;
    const auto folders = m_monitor.rootSearchPaths();
    for (const auto& folder : folders) {
        if (m_monitor.stateOfRoot(folder) == Stemhaven::FileEventStream::RootState::Missing)
            missing.append(QDir::cleanPath(folder));
    }
    if (missing == m_missing)
        return;
    m_missing = missing;
    emit changed(m_missing);
}
