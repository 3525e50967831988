#pragma once

#include "ui/table/ReloadScheduler.h"

#include <QItemSelection>
#include <QList>
#include <QObject>
#include <QSet>

class KeyEventTableView;
class ProjectsTableModel;
class QModelIndex;

/// Knows which projects are selected in the table, and keeps them selected and the current one in its place
/// on the screen when the rows change.
class SelectionKeeper : public QObject {
    Q_OBJECT

public:
    /// model is the table's already; both outlive this object.
    SelectionKeeper(KeyEventTableView& table, ProjectsTableModel& model, QObject* parent);

    /// -1 when there is none.
    qint64 currentProject() const { return m_project; }

    /// The current project and those that are selected beside it.
    QList<qint64> selectedProjects() const;

    /// Finds the selected projects again after a reload. After a new query the current one is scrolled into
    /// view, or the table to its top when it is gone; after a refresh the rows on the screen stay where they
    /// are.
    void restore(ReloadScheduler::Reason reason);

    /// The next restore() selects those of the projects that there are. None: it does not. Until the user
    /// selects something.
    void selectAfterReload(const QList<qint64>& projects) { m_wanted = projects; }

    void clear();

    /// Takes over what is selected in the table by now.
    void update();

signals:
    /// The current project, or those selected beside it, are others.
    void changed();

private:
    QList<int> selectedRows() const;
    bool takeWanted();
    void select(int row, bool isSelected);
    QItemSelection rowsOfSelected() const;
    int scrollPositionFor(int oldRow, int newRow) const;

    KeyEventTableView& m_table;
    ProjectsTableModel& m_model;
    qint64 m_project = -1;
    QSet<qint64> m_selected; ///< the current one too; empty unless there are several
    QList<qint64> m_wanted;
    bool m_restoring = false;
};
