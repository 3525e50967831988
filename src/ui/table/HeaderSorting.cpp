#include "ui/table/HeaderSorting.h"

#include "app/SettingsKeys.h"
#include "app/errors/Guarded.h"
#include "database/QueryBuilder.h"
#include "ui/table/ProjectsTableModel.h"

#include <QDebug>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTableView>

namespace SettingsKeys = Stemhaven::SettingsKeys;

HeaderSorting::HeaderSorting(
    QTableView& table, const ProjectsTableModel& model, Stemhaven::QueryBuilder& builder, QObject* parent)
    : QObject(parent),
      m_table(table),
      m_model(model),
      m_builder(builder) {
    auto* header = table.horizontalHeader();
    header->setSortIndicatorClearable(true);
    // Or switching sorting on would sort by the first column.
    header->setSortIndicator(-1, Qt::AscendingOrder);
    table.setSortingEnabled(true);
    restore();
    connect(header, &QHeaderView::sortIndicatorChanged, this, [this](int column, Qt::SortOrder order) {
        Stemhaven::guarded(tr("Projects sorting failed."), [&] { projectsHeaderSortChanged(column, order); });
    });
}

void HeaderSorting::restore() {
    bool isNumber = false;
    const int column = m_settings.value(SettingsKeys::lastSortOrderIndex, -1).toInt(&isNumber);
    if (!isNumber || column < 0 || column > std::numeric_limits<unsigned short>::max())
        return;
    const auto field = m_builder.visibleFieldAt(static_cast<unsigned short>(column));
    if (field.name.isEmpty())
        return;

    const bool descending =
        m_settings.value(SettingsKeys::lastSortOrder, Qt::AscendingOrder).toInt() == Qt::DescendingOrder;
    const auto order = descending ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_builder.sortBy(field.name, order);
    m_table.sortByColumn(column, order);
}

void HeaderSorting::restoreAnew() {
    auto* header = m_table.horizontalHeader();
    const QSignalBlocker blocker(header);
    m_builder.clearSorting();
    header->setSortIndicator(-1, Qt::AscendingOrder);
    restore();
}

void HeaderSorting::projectsHeaderSortChanged(int column, Qt::SortOrder order) {
    if (column < 0) {
        m_builder.clearSorting();
        store(column, order);
    } else {
        // The rows may still have columns that the builder shows no more, or in another order.
        const QString name = m_model.fieldAt(column);
        qDebug().nospace().noquote() << "Should sort '" << name << "' " << order;
        m_builder.sortBy(name, order);
        store(m_builder.fieldIndexByName(name), order);
    }
    emit changed();
}

void HeaderSorting::followFields() {
    const QString sorted = m_builder.sortColumn();
    if (sorted.isEmpty())
        return;
    const Qt::SortOrder order = m_table.horizontalHeader()->sortIndicatorOrder();
    const int column = m_builder.fieldIndexByName(sorted);
    const bool isShown = !m_builder.visibleFieldAt(static_cast<unsigned short>(column)).name.isEmpty();
    if (!isShown)
        m_builder.clearSorting();
    store(isShown ? column : -1, order);
}

void HeaderSorting::followColumns() {
    auto* header = m_table.horizontalHeader();
    const QSignalBlocker blocker(header);
    header->setSortIndicator(m_model.columnOf(m_builder.sortColumn()), header->sortIndicatorOrder());
}

void HeaderSorting::store(int column, Qt::SortOrder order) {
    m_settings.setValue(SettingsKeys::lastSortOrderName, m_builder.sortColumn());
    m_settings.setValue(SettingsKeys::lastSortOrderIndex, column);
    m_settings.setValue(SettingsKeys::lastSortOrder, static_cast<int>(order));
}
