#include "ui/widgets/MenuPainting.h"

#include "ui/widgets/Contrast.h"
#include "ui/widgets/ControlPainting.h"

#include <QPainter>
#include <QStyleOptionMenuItem>

#include <algorithm>

using namespace ControlPainting;

namespace MenuPainting {

namespace {

constexpr int sidePadding = 10;
constexpr int checkGap = 4;
constexpr int iconGap = 8;
constexpr int shortcutGap = 32;
constexpr int arrowColumn = 16;
constexpr int separatorHeight = 9;
constexpr int titlePadding = 10;

int sideOfIcon(const QStyleOptionMenuItem& option) {
    return iconSide(QFontMetrics(option.font));
}

int iconStart(const QStyleOptionMenuItem& option) {
    return sidePadding + (option.menuHasCheckableItems ? sideOfIcon(option) + checkGap : 0);
}

int textStart(const QStyleOptionMenuItem& option) {
    return iconStart(option) + (option.maxIconWidth > 0 ? sideOfIcon(option) + iconGap : 0);
}

/// The order of a row, mirrored where one reads from right to left.
QRect placed(const QStyleOptionMenuItem& option, int left, int width) {
    const QRect place(option.rect.left() + left, option.rect.top(), width, option.rect.height());
    return QStyle::visualRect(option.direction, option.rect, place);
}

struct Colors {
    QColor text;
    QColor secondary;
};

Colors colorsOf(const QStyleOptionMenuItem& option, bool selected) {
    const QPalette& palette = option.palette;
    if (!isEnabled(option)) {
        const QColor disabled = palette.color(QPalette::Disabled, QPalette::Text);
        return {disabled, disabled};
    }
    if (selected) {
        const QColor text = palette.color(QPalette::Active, QPalette::HighlightedText);
        return {text, text};
    }
    return {palette.color(QPalette::Text), Contrast::secondaryText(palette, QPalette::Base)};
}

void drawMark(const QStyleOptionMenuItem& option, const QColor& color, QPainter* painter) {
    if (option.checkType == QStyleOptionMenuItem::NotCheckable || !option.checked)
        return;
    const QRect place = placed(option, sidePadding - 2, sideOfIcon(option));
    if (option.state.testFlag(QStyle::State_NoChange))
        drawPartialMark(painter, place, color);
    else
        drawCheckMark(painter, place, color);
}

void drawIcon(const QStyleOptionMenuItem& option, bool selected, QPainter* painter) {
    if (option.icon.isNull())
        return;
    QIcon::Mode mode = QIcon::Normal;
    if (!isEnabled(option))
        mode = QIcon::Disabled;
    else if (selected)
        mode = QIcon::Selected;
    const int side = sideOfIcon(option);
    QRect place(0, 0, side, side);
    place.moveCenter(placed(option, iconStart(option), side).center());
    option.icon.paint(painter, place, Qt::AlignCenter, mode, option.checked ? QIcon::On : QIcon::Off);
}

void drawTexts(const QStyleOptionMenuItem& option, const Colors& colors, QPainter* painter) {
    const auto parts = option.text.split(QLatin1Char('\t'));
    const int start = textStart(option);
    const bool leadsOn = option.menuItemType == QStyleOptionMenuItem::SubMenu;
    const int end = option.rect.width() - sidePadding - (leadsOn ? arrowColumn : 0);
    const QRect place = placed(option, start, end - start);
    const auto leading = QStyle::visualAlignment(option.direction, Qt::AlignLeft);
    const auto trailing = QStyle::visualAlignment(option.direction, Qt::AlignRight);
    painter->setFont(option.font);
    painter->setPen(colors.text);
    painter->drawText(
        place, static_cast<int>(leading | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextShowMnemonic,
        parts.constFirst());
    if (parts.size() > 1) {
        painter->setPen(colors.secondary);
        painter->drawText(
            place, static_cast<int>(trailing | Qt::AlignVCenter) | Qt::TextSingleLine, parts.constLast());
    }
}

} // namespace

QSize itemSize(const QStyleOptionMenuItem& option, const QSize& text) {
    if (option.menuItemType == QStyleOptionMenuItem::Separator)
        return {text.width(), separatorHeight};
    const int width = textStart(option) + text.width() + shortcutGap + sidePadding;
    return {width, std::max(text.height() + 8, rowHeight)};
}

void drawItem(const QStyleOptionMenuItem& option, QPainter* painter) {
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        drawDivider(
            painter, option.rect.adjusted(sidePadding, 0, -sidePadding, 0), lineColor(option.palette));
        return;
    }
    const bool selected = option.state.testFlag(QStyle::State_Selected) && isEnabled(option);
    if (selected)
        fillBox(painter, option.rect, accentColor(option.palette), smallRadius);

    const Colors colors = colorsOf(option, selected);
    painter->save();
    drawMark(option, colors.text, painter);
    drawIcon(option, selected, painter);
    drawTexts(option, colors, painter);
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu) {
        const bool mirrored = option.direction == Qt::RightToLeft;
        const QRect place =
            placed(option, option.rect.width() - sidePadding - arrowColumn / 2, arrowColumn / 2);
        drawChevron(painter, place, mirrored ? Qt::LeftArrow : Qt::RightArrow, colors.secondary);
    }
    painter->restore();
}

QSize titleSize(const QSize& text) {
    return {text.width() + 2 * titlePadding, std::max(text.height() + 8, rowHeight)};
}

void drawTitle(const QStyleOptionMenuItem& option, QPainter* painter) {
    const bool selected = option.state.testFlag(QStyle::State_Selected) && isEnabled(option);
    const QPalette& palette = option.palette;
    if (selected) {
        const bool open = option.state.testFlag(QStyle::State_Sunken);
        QColor ground = palette.color(QPalette::Active, QPalette::WindowText);
        ground.setAlphaF(open ? 0.14F : 0.07F);
        fillBox(painter, option.rect.adjusted(0, 2, 0, -2), ground, smallRadius);
    }
    painter->save();
    painter->setPen(
        palette.color(isEnabled(option) ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    painter->drawText(option.rect, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextShowMnemonic, option.text);
    painter->restore();
}

} // namespace MenuPainting
