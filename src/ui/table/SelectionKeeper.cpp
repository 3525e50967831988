#include "ui/table/SelectionKeeper.h"

#include "ui/table/KeyEventTableView.h"
#include "ui/table/ProjectsTableModel.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <iterator>
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
    m_wanted.clear();
    m_goesOnFrom = -1;
    m_project = project;
    m_selected = selected;
    if (project >= 0)
        emit chosen();
    emit changed();
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

/// The current project where it is a candidate; else the nearest one after it in the order, or before it.
qint64 SelectionKeeper::successor(const QList<qint64>& order, const QSet<qint64>& candidates) const {
    if (candidates.contains(m_project))
        return m_project;
    const auto isCandidate = [&](qint64 project) {
        return candidates.contains(project);
    };
    const auto place = std::find(order.begin(), order.end(), m_project);
    if (place == order.end())
        return -1;
    const auto next = std::find_if(place, order.end(), isCandidate);
    if (next != order.end())
        return *next;
    const auto previous = std::find_if(std::make_reverse_iterator(place), order.rend(), isCandidate);
    return previous != order.rend() ? *previous : -1;
}

bool SelectionKeeper::isBeingEdited() const {
    return m_editor && m_goesOnFrom != m_project && m_editor->isAncestorOf(m_table.window()->focusWidget());
}

/// Exchanges those of the selected projects that have left the rows.
void SelectionKeeper::findAgain(ReloadScheduler::Reason reason) {
    const QList<qint64> oldOrder = std::exchange(m_order, m_model.projectIDs());
    const bool isGone = m_project >= 0 && !m_order.contains(m_project);
    if (!isGone && m_selected.isEmpty())
        return;
    const QSet<qint64> all(m_order.begin(), m_order.end());
    const QSet<qint64> left = QSet(m_selected).intersect(all);
    const bool wasGone = !oldOrder.contains(m_project);
    if (isGone && left.isEmpty() &&
        (wasGone || (reason == ReloadScheduler::Reason::Refresh && isBeingEdited())))
        return;
    m_selected = left;
    m_project = successor(oldOrder, left.isEmpty() ? all : left);
}

/// Whether any of the projects that are wanted is there, and is to be selected.
bool SelectionKeeper::takeWanted() {
    if (m_wanted.isEmpty())
        return false;
    const QSet<qint64> wanted(m_wanted.begin(), m_wanted.end());
    QList<qint64> present;
    std::copy_if(m_order.begin(), m_order.end(), std::back_inserter(present), [&](qint64 project) {
        return wanted.contains(project);
    });
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

void SelectionKeeper::restore(ReloadScheduler::Reason reason) {
    const int oldRow = m_table.currentIndex().row();
    const qint64 oldProject = m_project;
    const QSet<qint64> oldSelected = m_selected;
    findAgain(reason);
    const bool areWanted = takeWanted();
    const int newRow = m_project < 0 ? -1 : static_cast<int>(m_order.indexOf(m_project));
    // Projects that were being edited may have come back to their rows.
    select(newRow, areWanted || oldRow < 0 || m_project != oldProject);
    scroll(areWanted ? ReloadScheduler::Reason::NewQuery : reason, oldRow, newRow);
    if (m_selected.size() == 1)
        m_selected.clear();
    if (m_project != oldProject || m_selected != oldSelected)
        emit changed();
}

void SelectionKeeper::scroll(ReloadScheduler::Reason reason, int oldRow, int newRow) {
    const int position = scrollPositionFor(oldRow, newRow);
    m_table.doItemsLayout();
    if (reason == ReloadScheduler::Reason::Refresh)
        m_table.verticalScrollBar()->setValue(position);
    else if (reason == ReloadScheduler::Reason::NewQuery && newRow >= 0)
        m_table.scrollTo(m_model.index(newRow, 0));
    else
        m_table.scrollToTop();
}

void SelectionKeeper::clear() {
    m_table.selectionModel()->clear();
    // Of projects without rows nothing was selected.
    update();
}

/// isNews: to a screen reader, if the keyboard is in the table.
void SelectionKeeper::select(int row, bool isNews) {
    const QScopedValueRollback restoring(m_restoring, true);
    auto* selection = m_table.selectionModel();
    const bool wasSelected = selection->hasSelection() || isNews;
    const QModelIndex index = m_table.indexInRow(row);
    // The old indexes stand for rows of the old result.
    selection->clear();
    if (row < 0)
        return;
    const auto how = wasSelected ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                                 : QItemSelectionModel::NoUpdate;
    const bool autoScroll = m_table.hasAutoScroll();
    m_table.setAutoScroll(false);
    if (isNews)
        selection->setCurrentIndex(index, how);
    else
        m_table.moveCurrentSilently(index, how);
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
