#include "ui/widgets/ItemViewPainting.h"

#include "ui/widgets/ControlPainting.h"

#include <QPainter>
#include <QStyleOptionViewItem>
#include <QTreeView>

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

} // namespace

void drawTreeRow(const QStyleOptionViewItem& option, const QTreeView& tree, QPainter* painter) {
    drawGround(option, rowRect(option, tree), painter);
}

void drawBranch(const QStyleOption& option, QPainter* painter) {
    if (!option.state.testFlag(QStyle::State_Children))
        return;
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QColor color = option.palette.color(
        groupOf(option), selected ? QPalette::HighlightedText : QPalette::PlaceholderText);
    const Qt::ArrowType aside = option.direction == Qt::RightToLeft ? Qt::LeftArrow : Qt::RightArrow;
    drawChevron(
        painter, option.rect, option.state.testFlag(QStyle::State_Open) ? Qt::DownArrow : aside, color);
}

void drawListItem(const QStyleOptionViewItem& option, QPainter* painter) {
    if (option.backgroundBrush.style() != Qt::NoBrush)
        painter->fillRect(option.rect, option.backgroundBrush);
    drawGround(option, option.rect, painter);
}

void drawRowFocus(const QStyleOption& option, const QWidget* view, QPainter* painter) {
    const auto* tree = qobject_cast<const QTreeView*>(view);
    const QRect row = tree ? rowRect(option, *tree) : option.rect;
    drawFocusRing(painter, row, option.palette, smallRadius);
}

} // namespace ItemViewPainting
