#pragma once

#include "ui/details/ProjectRecord.h"
#include "ui/details/SelectionSummary.h"

#include <QList>
#include <QObject>

namespace Stemhaven {
class TaskManager;
}

/// Loads what is known of the selected projects. One load at a time: a newer request overtakes those that
/// wait, so that running through the table with a held key never lags behind. To ask for the same projects
/// again puts no answer off that is on its way, however often. GUI thread.
class ProjectLoader : public QObject {
    Q_OBJECT

public:
    /// tasks outlives this object.
    explicit ProjectLoader(Stemhaven::TaskManager& tasks, QObject* parent = nullptr);

    /// The current project first. None only calls off what is on its way.
    void load(const QList<qint64>& projects);

signals:
    /// The projects that were asked for last. record is the current one's, and not valid where there is no
    /// such record.
    void loaded(const ProjectRecord& record, const SelectionSummary& summary);
    /// They cannot be read.
    void failed();

private:
    void start();
    struct Outcome;
    void finish(const Outcome& outcome);

    Stemhaven::TaskManager& m_tasks;
    QList<qint64> m_wanted;
    QList<qint64> m_loading;
    bool m_isBusy = false;
    bool m_again = false;
};
