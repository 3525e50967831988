#pragma once

#include "ui/details/ProjectRecord.h"

#include <QObject>

#include <memory>

namespace Stemhaven {
class TaskManager;
}

/// Loads the record of the selected project. One at a time: a newer request overtakes those that wait, so
/// that running through the table with a held key never lags behind. GUI thread.
class ProjectLoader : public QObject {
    Q_OBJECT

public:
    /// tasks outlives this object.
    explicit ProjectLoader(Stemhaven::TaskManager& tasks, QObject* parent = nullptr);

    /// -1 only calls off what is on its way.
    void load(qint64 projectId);

signals:
    /// The project that was asked for last. Not valid where there is no such record, or it cannot be read.
    void loaded(const ProjectRecord& record);

private:
    void start();
    void finish(const ProjectRecord& record);

    Stemhaven::TaskManager& m_tasks;
    qint64 m_wanted = -1;
    qint64 m_loading = -1;
    bool m_isBusy = false;
    bool m_again = false;
};
