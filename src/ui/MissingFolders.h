#pragma once

#include <QObject>
#include <QStringList>

namespace Stemhaven {
class ProjectMonitor;
}

/// Knows which of the watched folders are not there or cannot be read, as on a drive that is not plugged in.
class MissingFolders : public QObject {
    Q_OBJECT

public:
    /// monitor outlives this object.
    MissingFolders(Stemhaven::ProjectMonitor& monitor, QObject* parent);

signals:
    void changed(const QStringList& folders);

private:
    void look();

    Stemhaven::ProjectMonitor& m_monitor;
    QStringList m_missing;
};
