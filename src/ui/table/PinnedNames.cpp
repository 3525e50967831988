#include "ui/table/PinnedNames.h"

#include "ui/table/ProjectsTableModel.h"
#include "ui/widgets/ControlPainting.h"

#include <QAbstractItemDelegate>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <QTableView>

#include <algorithm>

int PinnedNames::column() const {
    const auto* projects = qobject_cast<const ProjectsTableModel*>(m_table.model());
    return projects ? projects->columnOf(QStringLiteral("name")) : -1;
}

/// From the edge where one begins to read to where the column begins.
int PinnedNames::distanceToEdge(int column) const {
    const int left = m_table.columnViewportPosition(column);
    return m_table.isRightToLeft() ? m_table.viewport()->width() - left - m_table.columnWidth(column) : left;
}

QRect PinnedNames::rect() const {
    constexpr double mostOfTable = 0.6;
    const int names = column();
    if (names < 0 || distanceToEdge(names) >= 0)
        return {};
    const QSize all = m_table.viewport()->size();
    const int width = m_table.columnWidth(names);
    if (width > mostOfTable * all.width())
        return {};
    return {m_table.isRightToLeft() ? all.width() - width : 0, 0, width, all.height()};
}

QRect PinnedNames::rect(const QModelIndex& index) const {
    const QRect all = rect();
    return {
        all.left(), m_table.rowViewportPosition(index.row()), all.width(), m_table.rowHeight(index.row())};
}

QModelIndex PinnedNames::indexAt(const QPoint& position) const {
    return m_table.model()->index(m_table.rowAt(position.y()), column());
}

int PinnedNames::overlap(int column) const {
    return rect().isNull() ? 0 : std::max(0, rect().width() - distanceToEdge(column));
}

void PinnedNames::paint(QPainter& painter, const QRect& area, QStyleOptionViewItem option) const {
    const QRect place = rect();
    if (!place.intersects(area))
        return;
    painter.setClipRect(place & area);
    painter.fillRect(place, option.palette.base());
    const QModelIndex first = indexAt(area.topLeft());
    for (int row = first.row(); row >= 0; ++row) {
        const QModelIndex index = m_table.model()->index(row, first.column());
        option.rect = rect(index);
        if (!index.isValid() || option.rect.top() > area.bottom())
            break;
        const bool isAlternate = m_table.alternatingRowColors() && row % 2 == 1;
        const bool hasFocus = m_table.hasFocus() && m_table.currentIndex() == index;
        option.features.setFlag(QStyleOptionViewItem::Alternate, isAlternate);
        option.state.setFlag(QStyle::State_Selected, m_table.selectionModel()->isSelected(index));
        option.state.setFlag(QStyle::State_HasFocus, hasFocus);
        if (isAlternate)
            painter.fillRect(option.rect, option.palette.alternateBase());
        m_table.itemDelegateForIndex(index)->paint(&painter, option, index);
    }
    const int edge = m_table.isRightToLeft() ? place.left() : place.right();
    painter.fillRect(QRect(edge, place.top(), 1, place.height()), ControlPainting::lineColor(option.palette));
}
