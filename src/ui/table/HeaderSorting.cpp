#include "ui/table/HeaderSorting.h"

#include "app/SettingsKeys.h"
#include "app/errors/Guarded.h"
#include "database/QueryBuilder.h"

#include <QDebug>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTableView>

namespace SettingsKeys = Stemhaven::SettingsKeys;

HeaderSorting::HeaderSorting(QTableView& table, Stemhaven::QueryBuilder& builder, QObject* parent)
    : QObject(parent),
      m_table(table),
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

void HeaderSorting::showUnsorted() {
    auto* header = m_table.horizontalHeader();
    const QSignalBlocker blocker(header);
    header->setSortIndicator(-1, Qt::AscendingOrder);
}

void HeaderSorting::projectsHeaderSortChanged(int column, Qt::SortOrder order) {
    if (column < 0) {
        m_builder.clearSorting();
        store({}, column, order);
    } else {
        const QString name = m_builder.visibleFieldAt(static_cast<unsigned short>(column)).name;
        store(name, column, order);
        qDebug().nospace().noquote() << "Should sort '" << name << "' " << order;
        m_builder.sortBy(name, order);
    }
    emit changed();
}

void HeaderSorting::store(const QString& name, int column, Qt::SortOrder order) {
    m_settings.setValue(SettingsKeys::lastSortOrderName, name);
    m_settings.setValue(SettingsKeys::lastSortOrderIndex, column);
    m_settings.setValue(SettingsKeys::lastSortOrder, static_cast<int>(order));
}
