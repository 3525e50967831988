#pragma once

#include "ui/table/ReloadScheduler.h"

#include <QObject>

class KeyEventTableView;
class ProjectsTableModel;
class QModelIndex;

/// Knows the table's current project, and keeps it selected and in its place on the screen when the rows
/// change.
class SelectionKeeper : public QObject {
    Q_OBJECT

public:
    /// model is the table's already; both outlive this object.
    SelectionKeeper(KeyEventTableView& table, ProjectsTableModel& model, QObject* parent);

    /// -1 when there is none.
    qint64 currentProject() const { return m_project; }

    /// Finds the current project again after a reload. After a new query it is scrolled into view, or the
    /// table to its top when the project is gone; after a refresh the rows on the screen stay where they are.
    void restore(ReloadScheduler::Reason reason);

signals:
    void currentProjectChanged(qint64 id);

private:
    void currentRowChanged(const QModelIndex& current);
    void select(int row);
    void setCurrentProject(qint64 id);
    int scrollPositionFor(int oldRow, int newRow) const;

    KeyEventTableView& m_table;
    ProjectsTableModel& m_model;
    qint64 m_project = -1;
    bool m_restoring = false;
};
