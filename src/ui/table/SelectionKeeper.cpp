#include "ui/table/SelectionKeeper.h"

#include "ui/table/KeyEventTableView.h"
#include "ui/table/ProjectsTableModel.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>

SelectionKeeper::SelectionKeeper(KeyEventTableView& table, ProjectsTableModel& model, QObject* parent)
    : QObject(parent),
      m_table(table),
      m_model(model) {
    connect(
        table.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
        &SelectionKeeper::currentRowChanged);
}

void SelectionKeeper::currentRowChanged(const QModelIndex& current) {
    // In rows that the user has not seen yet the one that was clicked is another project's; restore() comes
    // soon.
    if (m_restoring || m_model.hasUnannouncedRows())
        return;
    setCurrentProject(current.isValid() ? m_model.projectIDForRow(current.row()) : -1);
}

void SelectionKeeper::setCurrentProject(qint64 id) {
    if (id == m_project)
        return;
    m_project = id;
    emit currentProjectChanged(id);
}

void SelectionKeeper::restore(ReloadScheduler::Reason reason) {
    const int oldRow = m_table.currentIndex().row();
    const int newRow = m_project < 0 ? -1 : m_model.rowForProjectID(m_project);
    const int position = scrollPositionFor(oldRow, newRow);

    select(newRow);
    m_table.doItemsLayout();
    if (reason == ReloadScheduler::Reason::Refresh)
        m_table.verticalScrollBar()->setValue(position);
    else if (newRow >= 0)
        m_table.scrollTo(m_model.index(newRow, 0));
    else
        m_table.scrollToTop();

    if (newRow < 0)
        setCurrentProject(-1);
}

void SelectionKeeper::select(int row) {
    const QScopedValueRollback restoring(m_restoring, true);
    auto* selection = m_table.selectionModel();
    const bool wasSelected = selection->hasSelection();
    const int column = std::max(0, selection->currentIndex().column());
    // The old indexes stand for rows of the old result.
    selection->clear();
    if (row < 0)
        return;
    const auto how = wasSelected ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                                 : QItemSelectionModel::NoUpdate;
    const bool autoScroll = m_table.hasAutoScroll();
    m_table.setAutoScroll(false);
    selection->setCurrentIndex(m_model.index(row, column), how);
    m_table.setAutoScroll(autoScroll);
}

/// Where the bar is to stand so that the current row, when it is on the screen, does not move.
int SelectionKeeper::scrollPositionFor(int oldRow, int newRow) const {
    const int position = m_table.verticalScrollBar()->value();
    const int rowHeight = m_table.verticalHeader()->defaultSectionSize();
    const int oldTop = oldRow * rowHeight - position;
    const bool wasOnScreen = oldRow >= 0 && oldTop > -rowHeight && oldTop < m_table.viewport()->height();
    return newRow >= 0 && wasOnScreen ? position + (newRow - oldRow) * rowHeight : position;
}
