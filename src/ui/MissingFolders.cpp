#include "ui/MissingFolders.h"

#include "monitor/ProjectMonitor.h"

#include <QDir>

using Stemhaven::ProjectMonitor;

MissingFolders::MissingFolders(ProjectMonitor& monitor, QObject* parent)
    : QObject(parent),
      m_monitor(monitor) {
    connect(&monitor, &ProjectMonitor::wasStarted, this, &MissingFolders::look);
    connect(&monitor, &ProjectMonitor::watchedFoldersChanged, this, &MissingFolders::look);
    // A folder that goes or comes back is searched.
    connect(&monitor, &ProjectMonitor::searchEnded, this, &MissingFolders::look);
}

void MissingFolders::look() {
    QStringList missing;
    const auto folders = m_monitor.rootSearchPaths();
    for (const auto& folder : folders) {
        const QString path = QDir::cleanPath(folder);
        // Until it watches, the monitor does not know.
        const bool isMissing = m_monitor.isWatching()
            ? m_monitor.stateOfRoot(folder) == Stemhaven::FileEventStream::RootState::Missing
            : m_missing.contains(path);
        if (isMissing)
            missing.append(path);
    }
    if (missing == m_missing)
        return;
    m_missing = missing;
    emit changed(m_missing);
}
