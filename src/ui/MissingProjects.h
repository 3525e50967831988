#pragma once

#include "ui/SpacedCall.h"

#include <QObject>
#include <QSet>

#include <memory>

namespace Stemhaven {
class ProjectMonitor;
class TaskManager;
} // namespace Stemhaven

/// Knows of which projects the bundle is not there, as long as it is not. GUI thread.
class MissingProjects : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object. Asks at once.
    MissingProjects(Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, QObject* parent);
    ~MissingProjects() override;
    Q_DISABLE_COPY(MissingProjects)

    /// Other paths, or other records, may be concerned. Many such calls become a few looks.
    void request() { m_spacing.request(); }

signals:
    /// By the ids of their records.
    void changed(const QSet<qint64>& projects);

private:
    void start();
    void finish(bool succeeded, const QSet<qint64>& projects);

    class Paths;

    Stemhaven::TaskManager& m_tasks;
    const std::shared_ptr<Paths> m_paths;
    SpacedCall m_spacing;
    QSet<qint64> m_missing;
    bool m_isBusy = false;
    bool m_again = false;
};
