#pragma once

#include <QObject>
#include <QSet>
#include <QTimer>

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

    /// Other paths, or other records, may be concerned. Many such calls become a few looks, which leave the
    /// worker most of its time, however many are missing.
    void request();

signals:
    /// By the ids of their records.
    void changed(const QSet<qint64>& projects);

private:
    class Paths;
    struct Look;

    void start();
    void finish(const Look& look);

    Stemhaven::TaskManager& m_tasks;
    const std::shared_ptr<Paths> m_paths;
    QTimer m_pause; ///< after a look
    QSet<qint64> m_missing;
    bool m_isBusy = false;
    bool m_isRequested = false;
    bool m_hasFailed = false;
};
