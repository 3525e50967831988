#pragma once

#include "ui/table/ReloadScheduler.h"

#include <QItemSelection>
#include <QList>
#include <QObject>
#include <QSet>

class KeyEventTableView;
class ProjectsTableModel;
class QWidget;

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

    /// In the rows as the user sees them, also while the worker has other ones already; -1 where there is
    /// none.
    qint64 projectInRow(int row) const { return m_order.value(row, -1); }

    /// Finds the selected projects again after a reload. Those that are gone leave the others selected; where
    /// all are gone, the row after the current one is selected, or the last one before it; but while they are
    /// being edited they stay the selected ones without rows, until the user selects something. After a
    /// refresh the rows on the screen stay where they are; a new order is shown from its top; after a new
    /// query the current project is scrolled into view, or the table to its top when there is none.
    void restore(ReloadScheduler::Reason reason);

    /// Each restore() selects those of the projects that there are, until the user selects something. None:
    /// it does not any more.
    void selectAfterReload(const QList<qint64>& projects) { m_wanted = projects; }

    /// Projects are being edited while the keyboard is in there. It outlives this object.
    void setEditor(const QWidget& editor) { m_editor = &editor; }

    /// The selected projects are being changed, by a menu or in the editor. Where a menu's change takes their
    /// rows away the selection goes on, wherever the keyboard is.
    void noteEdit(bool byMenu) { m_goesOnFrom = byMenu ? m_project : -1; }

    void clear();

    /// Takes over what is selected in the table by now.
    void update();

signals:
    /// The current project, or those selected beside it, are others.
    void changed();
    /// As changed(), and the user has done it; before that.
    void chosen();

private:
    QList<int> selectedRows() const;
    qint64 successor(const QList<qint64>& order, const QSet<qint64>& candidates) const;
    bool isBeingEdited() const;
    void findAgain(ReloadScheduler::Reason reason);
    bool takeWanted();
    void select(int row, bool isNews);
    void scroll(ReloadScheduler::Reason reason, int oldRow, int newRow);
    QItemSelection rowsOfSelected() const;
    int scrollPositionFor(int oldRow, int newRow) const;

    KeyEventTableView& m_table;
    ProjectsTableModel& m_model;
    qint64 m_project = -1;
    QSet<qint64> m_selected; ///< the current one too; empty unless there are several
    QList<qint64> m_order;   ///< of all rows, by which the neighbours of a row that is gone are known
    QList<qint64> m_wanted;
    const QWidget* m_editor = nullptr;
    qint64 m_goesOnFrom = -1; ///< the project that was changed by a menu last
    bool m_restoring = false;
};
