#include "ui/widgets/ItemViewPainting.h"

#include "ui/widgets/Contrast.h"
#include "ui/widgets/ControlPainting.h"

#include <QListView>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <QTreeView>

#include <algorithm>

using namespace ControlPainting;

namespace ItemViewPainting {

namespace {

constexpr int sideMargin = 4;

QPalette::ColorGroup groupOf(const QStyleOption& option) {
    if (!isEnabled(option))
        return QPalette::Disabled;
    return option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
}

void drawGround(const QStyleOption& option, const QRect& place, QPainter* painter) {
    if (option.state.testFlag(QStyle::State_Selected)) {
        fillBox(painter, place, option.palette.color(groupOf(option), QPalette::Highlight), smallRadius);
    } else if (option.state.testFlag(QStyle::State_MouseOver) && isEnabled(option)) {
        QColor ground = option.palette.color(QPalette::Active, QPalette::Text);
        ground.setAlphaF(0.05F);
        fillBox(painter, place, ground, smallRadius);
    }
}

/// From edge to edge of the view, at the height of a part of the row.
QRect rowRect(const QStyleOption& option, const QAbstractItemView& view) {
    return {sideMargin, option.rect.top(), view.viewport()->width() - 2 * sideMargin, option.rect.height()};
}

/// A tree draws the grounds of a row in parts: first the one before its item, then that of the item, without
/// its selection, then those of further columns. All is drawn with the first, or the last would cover texts.
bool beginsRow(const QStyleOptionViewItem& option, const QTreeView& tree) {
    const bool isFirstColumn = option.viewItemPosition == QStyleOptionViewItem::OnlyOne ||
        option.viewItemPosition == QStyleOptionViewItem::Beginning;
    const int column = std::max(0, tree.treePosition());
    const int start = tree.columnViewportPosition(column);
    const int end = start + tree.columnWidth(column);
    const bool reachesItsEnd =
        option.direction == Qt::RightToLeft ? option.rect.left() == start : option.rect.right() + 1 == end;
    return isFirstColumn && !reachesItsEnd;
}

void drawBranch(const QStyleOption& option, QPainter* painter) {
    if (!option.state.testFlag(QStyle::State_Children))
        return;
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QColor color = selected ? option.palette.color(groupOf(option), QPalette::HighlightedText)
                                  : Contrast::secondaryText(option.palette, QPalette::Base);
    const Qt::ArrowType aside = option.direction == Qt::RightToLeft ? Qt::LeftArrow : Qt::RightArrow;
    drawChevron(
        painter, option.rect, option.state.testFlag(QStyle::State_Open) ? Qt::DownArrow : aside, color);
}

void drawListItem(const QStyleOptionViewItem& option, QPainter* painter) {
    if (option.backgroundBrush.style() != Qt::NoBrush)
        painter->fillRect(option.rect, option.backgroundBrush);
    drawGround(option, option.rect, painter);
}

} // namespace

bool drawPart(
    QStyle::PrimitiveElement element, const QStyleOption& option, const QWidget* view, QPainter* painter) {
    const auto* tree = qobject_cast<const QTreeView*>(view);
    const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(&option);
    if (!tree && !qobject_cast<const QListView*>(view))
        return false;
    switch (element) {
    case QStyle::PE_IndicatorBranch:
        drawBranch(option, painter);
        return true;
    case QStyle::PE_PanelItemViewRow:
        if (tree && item && beginsRow(*item, *tree))
            drawGround(option, rowRect(option, *tree), painter);
        return tree != nullptr;
    case QStyle::PE_PanelItemViewItem:
        if (!tree && item)
            drawListItem(*item, painter);
        return true;
    case QStyle::PE_FrameFocusRect:
        // A selection says enough.
        if (!option.state.testFlag(QStyle::State_Selected))
            drawFocusRing(painter, tree ? rowRect(option, *tree) : option.rect, option.palette, smallRadius);
        return true;
    default:
        return false;
    }
}

} // namespace ItemViewPainting
