#include "ui/widgets/HeaderPainting.h"

#include "ui/widgets/ControlPainting.h"

#include <QPainter>
#include <QStyleOptionHeader>

#include <algorithm>

namespace HeaderPainting {

namespace {

/// Beside the title, as the title stands.
QRect sortArrowRect(const QStyleOptionHeader& header) {
    constexpr int gap = margin / 2;
    QRect arrow(0, 0, sortArrowSide, sortArrowSide);
    arrow.moveCenter(header.rect.center());
    const int rightmost = header.rect.right() - gap;
    const int behindTitle =
        header.rect.left() + margin + header.fontMetrics.horizontalAdvance(header.text) + gap + sortArrowSide;
    const bool followsTitle = header.textAlignment & Qt::AlignLeft && header.icon.isNull();
    arrow.moveRight(followsTitle ? std::min(behindTitle, rightmost) : rightmost);
    return arrow;
}

} // namespace

void drawSection(const QStyleOption& option, QPainter* painter) {
    const QRect& rect = option.rect;
    painter->fillRect(rect, option.palette.base());
    painter->fillRect(
        QRect(rect.left(), rect.bottom(), rect.width(), 1), ControlPainting::lineColor(option.palette));
}

void drawSortArrow(const QStyleOptionHeader& header, QPainter* painter) {
    if (header.sortIndicator == QStyleOptionHeader::None)
        return;
    const bool ascends = header.sortIndicator == QStyleOptionHeader::SortUp;
    ControlPainting::drawChevron(
        painter, sortArrowRect(header), ascends ? Qt::DownArrow : Qt::UpArrow,
        header.palette.color(QPalette::Text));
}

} // namespace HeaderPainting
