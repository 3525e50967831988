#pragma once

#include "ui/SpacedCall.h"

#include <QObject>

class ProjectsTableModel;

/// Reloads the table's model, one reload at a time: what is asked for meanwhile becomes one reload after it,
/// so that fast typing never queues up work.
class ReloadScheduler : public QObject {
    Q_OBJECT

public:
    enum class Reason {
        Refresh,  ///< the projects may have changed
        NewOrder, ///< the same projects are wanted in another order
        NewQuery  ///< other projects are wanted
    };

    /// model outlives this object.
    ReloadScheduler(ProjectsTableModel& model, QObject* parent);

    void request(Reason reason);
    /// As a refresh, but a burst of these becomes a few reloads.
    void requestSpaced();

    /// Whether another reload follows the one that is under way or has just ended.
    bool isWaiting() const { return m_isWaiting; }

signals:
    /// reason is NewQuery when one of the requests that the reload stands for was.
    void reloaded(ReloadScheduler::Reason reason);
    /// The rows are still those of before.
    void failed();

private:
    void start();
    void finish(bool succeeded);

    ProjectsTableModel& m_model;
    Reason m_runningReason = Reason::Refresh;
    Reason m_waitingReason = Reason::Refresh;
    bool m_isWaiting = false;
    SpacedCall m_spacing;
};
