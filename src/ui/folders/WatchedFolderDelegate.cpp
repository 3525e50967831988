#include "ui/folders/WatchedFolderDelegate.h"

#include "ui/folders/WatchedFoldersModel.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ControlPainting.h"
#include "ui/widgets/TextOrder.h"

#include <QApplication>
#include <QPainter>

namespace {

constexpr int sideMargin = 8;
constexpr int lineMargin = 6;
constexpr int dotSide = 8;
constexpr int dotSpace = dotSide + 8;

/// Filled where the folder is looked after, hollow where that is still to come; none where it is missing.
void drawDot(QPainter* painter, const QRect& place, WatchedFoldersModel::State state, const QColor& color) {
    using State = WatchedFoldersModel::State;
    if (state == State::Missing)
        return;
    const bool isHollow = state == State::Waiting || state == State::Searched;
    const QRectF dot(place);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(isHollow ? QPen(color, 1.5) : QPen(Qt::NoPen));
    painter->setBrush(isHollow ? QBrush() : QBrush(color));
    painter->drawEllipse(isHollow ? dot.adjusted(0.75, 0.75, -0.75, -0.75) : dot);
    painter->restore();
}

} // namespace

WatchedFolderDelegate::WatchedFolderDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

QSize WatchedFolderDelegate::sizeHint(
    const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
    return {0, 2 * option.fontMetrics.height() + 2 * lineMargin};
}

void WatchedFolderDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const QString path = item.text;
    item.text.clear();
    const QStyle* style = item.widget ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const bool isSelected = item.state.testFlag(QStyle::State_Selected);
    const auto group = item.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    const QColor textColor =
        item.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
    const QColor details = isSelected ? textColor : Contrast::secondaryText(item.palette, QPalette::Base);
    const auto state =
        static_cast<WatchedFoldersModel::State>(index.data(WatchedFoldersModel::StateRole).toInt());

    const QRect inner = item.rect.adjusted(sideMargin, lineMargin, -sideMargin, -lineMargin);
    const int lineHeight = item.fontMetrics.height();
    const auto placed = [&](const QRect& rect) {
        return QStyle::visualRect(item.direction, inner, rect);
    };
    QRect dot(0, 0, dotSide, dotSide);
    dot.moveCenter({inner.left() + dotSide / 2, inner.top() + lineHeight / 2});
    const QColor accent = ControlPainting::accentShape(item.palette);
    drawDot(painter, placed(dot), state, isSelected ? textColor : accent);

    const int width = inner.width() - dotSpace;
    const QRect upper(inner.left() + dotSpace, inner.top(), width, lineHeight);
    const QRect lower = upper.translated(0, lineHeight);
    const auto alignment = QStyle::visualAlignment(item.direction, Qt::AlignLeft | Qt::AlignVCenter);
    painter->setFont(item.font);
    painter->setPen(textColor);
    painter->drawText(
        placed(upper), static_cast<int>(alignment),
        isolated(
            item.fontMetrics.elidedText(path, Qt::ElideMiddle, width), item.direction,
            TextOrder::LeftToRight));
    painter->setPen(details);
    painter->drawText(
        placed(lower), static_cast<int>(alignment),
        item.fontMetrics.elidedText(
            index.data(WatchedFoldersModel::DetailsRole).toString(), Qt::ElideRight, width));
}
