#include "ui/table/SelectionKeeper.h"

#include "ui/table/KeyEventTableView.h"
#include "ui/table/ProjectsTableModel.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <mutex>
#include <utility>

SelectionKeeper::SelectionKeeper(KeyEventTableView& table, ProjectsTableModel& model, QObject* parent)
    : QObject(parent),
      m_table(table),
      m_model(model) {
    auto* selection = table.selectionModel();
    connect(selection, &QItemSelectionModel::currentRowChanged, this, &SelectionKeeper::update);
    connect(selection, &QItemSelectionModel::selectionChanged, this, &SelectionKeeper::update);
}

QList<qint64> SelectionKeeper::selectedProjects() const {
    if (m_project < 0)
        return {};
    QList<qint64> projects{m_project};
    for (const qint64 project : m_selected) {
        if (project != m_project)
            projects.append(project);
    }
    return projects;
}

void SelectionKeeper::update() {
    // In rows that the user has not seen yet the one that was clicked is another project's; restore() comes
    // soon.
    if (m_restoring || m_model.hasUnannouncedRows())
        return;
    int current = m_table.currentIndex().row();
    const QList<int> rows = selectedRows();
    // A row that was taken out of the selection stays the current one.
    if (!rows.isEmpty() && !rows.contains(current))
        current = rows.constFirst();
    const qint64 project = current >= 0 ? m_model.projectIDForRow(current) : -1;
    QSet<qint64> selected;
    if (rows.size() > 1) {
        const std::lock_guard lock(m_model);
        for (const int row : rows)
            selected.insert(m_model.projectIDForRow(row));
        selected.remove(-1);
    }
    if (project == m_project && selected == m_selected)
        return;
    m_project = project;
    m_selected = selected;
    m_wanted.clear();
    emit changed();
}

/// Whether any of the projects that are wanted is there, and is to be selected.
bool SelectionKeeper::takeWanted() {
    if (m_wanted.isEmpty())
        return false;
    const QSet<qint64> wanted(m_wanted.begin(), m_wanted.end());
    QList<qint64> present;
    {
        const int count = m_model.rowCount();
        const std::lock_guard lock(m_model);
        for (int row = 0; row < count; ++row) {
            const qint64 project = m_model.projectIDForRow(row);
            if (wanted.contains(project))
                present.append(project);
        }
    }
    if (present.isEmpty())
        return false;
    const qint64 project = present.contains(m_project) ? m_project : present.constFirst();
    const auto selected = present.size() > 1 ? QSet<qint64>(present.begin(), present.end()) : QSet<qint64>();
    if (m_table.selectionModel()->hasSelection() && project == m_project && selected == m_selected)
        return false;
    m_project = project;
    m_selected = selected;
    return true;
}

/// From the ranges, since QItemSelectionModel::selectedRows() looks through all of them for every row.
QList<int> SelectionKeeper::selectedRows() const {
    QList<int> rows;
    const QItemSelection selection = m_table.selectionModel()->selection();
    for (const QItemSelectionRange& range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    }
    return rows;
}

void SelectionKeeper::restore(ReloadScheduler::Reason reason) {
    const bool areOthers = takeWanted();
    const int oldRow = areOthers ? -1 : m_table.currentIndex().row();
    const int newRow = m_project < 0 ? -1 : m_model.rowForProjectID(m_project);
    const int position = scrollPositionFor(oldRow, newRow);

    select(newRow, areOthers || m_table.selectionModel()->hasSelection());
    m_table.doItemsLayout();
    if (areOthers) {
        m_table.scrollTo(m_model.index(newRow, 0));
        emit changed();
    } else if (reason == ReloadScheduler::Reason::Refresh)
        m_table.verticalScrollBar()->setValue(position);
    else if (newRow >= 0)
        m_table.scrollTo(m_model.index(newRow, 0));
    else
        m_table.scrollToTop();

    // Some, or all, of those selected may be gone.
    update();
}

void SelectionKeeper::clear() {
    m_table.selectionModel()->clear();
}

void SelectionKeeper::select(int row, bool isSelected) {
    const QScopedValueRollback restoring(m_restoring, true);
    auto* selection = m_table.selectionModel();
    const int column = std::max(0, selection->currentIndex().column());
    // The old indexes stand for rows of the old result.
    selection->clear();
    if (row < 0)
        return;
    const auto how = isSelected ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                                : QItemSelectionModel::NoUpdate;
    const bool autoScroll = m_table.hasAutoScroll();
    m_table.setAutoScroll(false);
    selection->setCurrentIndex(m_model.index(row, column), how);
    if (!m_selected.isEmpty())
        selection->select(rowsOfSelected(), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_table.setAutoScroll(autoScroll);
}

QItemSelection SelectionKeeper::rowsOfSelected() const {
    QItemSelection selection;
    const int count = m_model.rowCount();
    const std::lock_guard lock(m_model);
    for (int row = 0; row < count; ++row) {
        if (!m_selected.contains(m_model.projectIDForRow(row)))
            continue;
        const QModelIndex index = m_model.index(row, 0);
        if (!selection.isEmpty() && selection.last().bottom() == row - 1)
            selection.last() = QItemSelectionRange(selection.last().topLeft(), index);
        else
            selection.append(QItemSelectionRange(index));
    }
    return selection;
}

/// Where the bar is to stand so that the current row, when it is on the screen, does not move.
int SelectionKeeper::scrollPositionFor(int oldRow, int newRow) const {
    const int position = m_table.verticalScrollBar()->value();
    const int rowHeight = m_table.verticalHeader()->defaultSectionSize();
    const int oldTop = oldRow * rowHeight - position;
    const bool wasOnScreen = oldRow >= 0 && oldTop > -rowHeight && oldTop < m_table.viewport()->height();
    return newRow >= 0 && wasOnScreen ? position + (newRow - oldRow) * rowHeight : position;
}
