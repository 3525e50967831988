#include "ui/widgets/ControlPainting.h"

#include "ui/widgets/Contrast.h"
#include "ui/widgets/PixelGrid.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace ControlPainting {

namespace {

constexpr double focusWidth = 2.0;
constexpr double strokeWidth = 1.5;

/// Of the smallest icons, for which the marks are drawn; in larger ones they grow.
constexpr int smallestIcon = 16;

template <std::size_t N>
void drawStroke(
    QPainter* painter, const std::array<QPointF, N>& points, const QColor& color,
    double width = strokeWidth) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(points.data(), static_cast<int>(N));
    painter->restore();
}

/// The points are from the middle of the place.
template <std::size_t N>
void drawMark(QPainter* painter, const QRectF& place, std::array<QPointF, N> points, const QColor& color) {
    const double scale = std::min(place.width(), place.height()) / smallestIcon;
    for (QPointF& point : points)
        point = place.center() + scale * point;
    drawStroke(painter, points, color, scale * strokeWidth);
}

bool isOn(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_On);
}

/// What a box or circle that can be chosen is filled with.
QColor indicatorFill(const QStyleOption& option, bool chosen) {
    const QPalette& palette = option.palette;
    if (!isEnabled(option))
        return palette.color(QPalette::Disabled, chosen ? QPalette::Highlight : QPalette::Window);
    const QColor rest = chosen ? accentShape(palette) : palette.color(QPalette::Base);
    return touched(rest, option);
}

QColor indicatorLine(const QStyleOption& option) {
    const QPalette& palette = option.palette;
    if (hasFocus(option))
        return accentShape(palette);
    return isEnabled(option) ? edgeColor(palette) : lineColor(palette);
}

QColor edgeOf(const QStyleOption& option) {
    return isEnabled(option) ? edgeColor(option.palette) : lineColor(option.palette);
}

/// The circle or box itself: around it is room for the halo.
QRectF markedPart(const QStyleOption& option) {
    return QRectF(option.rect).adjusted(haloWidth, haloWidth, -haloWidth, -haloWidth);
}

QColor indicatorMark(const QStyleOption& option) {
    const QPalette& palette = option.palette;
    if (!isEnabled(option))
        return palette.color(QPalette::Disabled, QPalette::HighlightedText);
    return Contrast::readable(
        palette.color(QPalette::Active, QPalette::HighlightedText), indicatorFill(option, true),
        Contrast::text);
}

} // namespace

int iconSide(const QFontMetrics& text) {
    return std::max(smallestIcon, text.height() - 2);
}

QColor mixed(const QColor& from, const QColor& to, float share) {
    const auto mix = [share](float a, float b) {
        return a + (b - a) * share;
    };
    return QColor::fromRgbF(
        mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()), mix(from.blueF(), to.blueF()));
}

QColor lineColor(const QPalette& palette) {
    return mixed(palette.color(QPalette::Base), palette.color(QPalette::Active, QPalette::Text), 0.14F);
}

QColor edgeColor(const QPalette& palette) {
    // A little more than needed, for the smoothing of curves takes some.
    const double ratio = 1.2 * Contrast::shapeRatio(palette);
    const QColor edge = Contrast::readable(lineColor(palette), palette.color(QPalette::Window), ratio);
    // Where the two grounds lie far apart, the one field stands out from the other window anyway.
    const QColor onBoth = Contrast::readable(edge, palette.color(QPalette::Base), ratio);
    return Contrast::between(onBoth, palette.color(QPalette::Window)) < ratio ? edge : onBoth;
}

QColor accentShape(const QPalette& palette) {
    return Contrast::readable(accentColor(palette), palette.color(QPalette::Window), Contrast::shape);
}

QColor accentColor(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Highlight);
}

QColor touched(const QColor& fill, const QStyleOption& option) {
    // White text stays readable on a darker accent only.
    const QColor deep = fill == accentColor(option.palette)
        ? QColor(Qt::black)
        : option.palette.color(QPalette::Active, QPalette::ButtonText);
    if (!isEnabled(option))
        return fill;
    if (option.state.testFlag(QStyle::State_Sunken))
        return mixed(fill, deep, 0.16F);
    return option.state.testFlag(QStyle::State_MouseOver) ? mixed(fill, deep, 0.06F) : fill;
}

bool isEnabled(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled);
}

bool hasFocus(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_HasFocus);
}

void drawBox(
    QPainter* painter, const QRectF& rect, const QColor& fill, const QColor& line, double lineWidth,
    double cornerRadius) {
    const PixelGrid grid(*painter);
    const double width = grid.lineWidth(lineWidth);
    const double half = width / 2;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(line, width));
    painter->setBrush(fill);
    painter->drawRoundedRect(
        grid.snapped(rect).adjusted(half, half, -half, -half), cornerRadius - half, cornerRadius - half);
    painter->restore();
}

void fillBox(QPainter* painter, const QRectF& rect, const QColor& fill, double cornerRadius) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(fill);
    painter->drawRoundedRect(PixelGrid(*painter).snapped(rect), cornerRadius, cornerRadius);
    painter->restore();
}

void drawDivider(QPainter* painter, const QRect& rect, const QColor& color) {
    const PixelGrid grid(*painter);
    const double width = grid.lineWidth(1.0);
    QRectF line(rect);
    if (rect.width() > rect.height()) {
        line.setTop(rect.center().y());
        line = grid.snapped(line);
        line.setHeight(width);
    } else {
        line.setLeft(rect.center().x());
        line = grid.snapped(line);
        line.setWidth(width);
    }
    painter->fillRect(line, color);
}

void drawFocusRing(QPainter* painter, const QRectF& rect, const QPalette& palette, double cornerRadius) {
    drawBox(painter, rect, Qt::transparent, accentShape(palette), focusWidth, cornerRadius);
}

void drawChevron(QPainter* painter, const QRect& rect, Qt::ArrowType direction, const QColor& color) {
    const QPointF center = QRectF(rect).center();
    const bool upright = direction == Qt::UpArrow || direction == Qt::DownArrow;
    const double tip = direction == Qt::DownArrow || direction == Qt::RightArrow ? 2.0 : -2.0;
    const QPointF along = upright ? QPointF(4, 0) : QPointF(0, 4);
    const QPointF across = upright ? QPointF(0, tip) : QPointF(tip, 0);
    drawStroke(painter, std::array{center - along - across, center + across, center + along - across}, color);
}

void drawCheckMark(QPainter* painter, const QRectF& rect, const QColor& color) {
    drawMark(painter, rect, std::array{QPointF(-4, 0.5), QPointF(-1.25, 3.25), QPointF(4, -3)}, color);
}

void drawPartialMark(QPainter* painter, const QRectF& rect, const QColor& color) {
    drawMark(painter, rect, std::array{QPointF(-3.5, 0), QPointF(3.5, 0)}, color);
}

void drawLineEdit(const QStyleOption& option, QPainter* painter) {
    const QPalette& palette = option.palette;
    drawBox(
        painter, option.rect, palette.color(isEnabled(option) ? QPalette::Base : QPalette::Window),
        hasFocus(option) ? accentShape(palette) : edgeOf(option), hasFocus(option) ? focusWidth : 1.0);
}

bool isProminent(const QStyleOption& option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    return button && button->features.testFlag(QStyleOptionButton::DefaultButton) && isEnabled(option);
}

void drawButton(const QStyleOption& option, QPainter* painter) {
    const QPalette& palette = option.palette;
    const QColor accent = accentColor(palette);
    const bool prominent = isProminent(option);
    QColor fill = prominent ? accent : palette.color(isEnabled(option) ? QPalette::Button : QPalette::Window);
    if (isOn(option) && !prominent)
        fill = mixed(fill, accent, 0.18F);
    fill = touched(fill, option);

    const bool ringed = hasFocus(option) && !prominent;
    const QColor edge = prominent ? fill : edgeOf(option);
    drawBox(painter, option.rect, fill, ringed ? accentShape(palette) : edge, ringed ? focusWidth : 1.0);
    if (hasFocus(option) && prominent) {
        const QColor ring = palette.color(QPalette::Active, QPalette::HighlightedText);
        drawBox(painter, option.rect.adjusted(2, 2, -2, -2), Qt::transparent, ring, 1.0, smallRadius);
    }
}

void drawHalo(QPainter* painter, const QRectF& around, const QPalette& palette, double cornerRadius) {
    QColor color = accentShape(palette);
    color.setAlphaF(0.5F);
    constexpr double width = haloWidth;
    fillBox(painter, around.adjusted(-width, -width, width, width), color, cornerRadius + width);
}

void drawCheckBox(const QStyleOption& option, QPainter* painter) {
    const bool partly = option.state.testFlag(QStyle::State_NoChange);
    const bool chosen = isOn(option) || partly;
    const QRectF box = markedPart(option);
    if (hasFocus(option))
        drawHalo(painter, box, option.palette, smallRadius);
    const QColor fill = indicatorFill(option, chosen);
    drawBox(painter, box, fill, chosen ? fill : indicatorLine(option), 1.0, smallRadius);
    if (partly) {
        drawPartialMark(painter, box, indicatorMark(option));
    } else if (chosen) {
        drawCheckMark(painter, box, indicatorMark(option));
    }
}

void drawRadioButton(const QStyleOption& option, QPainter* painter) {
    const QRectF circle = markedPart(option);
    const double round = circle.height() / 2;
    if (hasFocus(option))
        drawHalo(painter, circle, option.palette, round);
    const QColor fill = indicatorFill(option, isOn(option));
    drawBox(painter, circle, fill, isOn(option) ? fill : indicatorLine(option), 1.0, round);
    if (isOn(option)) {
        const double dotRadius = circle.width() * 3 / smallestIcon;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(indicatorMark(option));
        painter->drawEllipse(PixelGrid(*painter).snapped(circle).center(), dotRadius, dotRadius);
        painter->restore();
    }
}

void drawComboBox(const QStyleOption& option, const QRect& arrow, QPainter* painter) {
    const QPalette& palette = option.palette;
    const QColor fill =
        touched(palette.color(isEnabled(option) ? QPalette::Button : QPalette::Window), option);
    drawBox(
        painter, option.rect, fill, hasFocus(option) ? accentShape(palette) : edgeOf(option),
        hasFocus(option) ? focusWidth : 1.0);
    drawChevron(
        painter, arrow, Qt::DownArrow,
        isEnabled(option) ? Contrast::secondaryText(palette, QPalette::Button)
                          : palette.color(QPalette::ButtonText));
}

void drawToolButton(const QStyleOption& option, QPainter* painter) {
    const QPalette& palette = option.palette;
    QColor ground = palette.color(QPalette::Active, QPalette::ButtonText);
    float strength = 0;
    if (isOn(option) && isEnabled(option)) {
        ground = accentColor(palette);
        strength = 0.16F;
    } else if (isOn(option)) {
        strength = 0.06F;
    }
    if (isEnabled(option) && option.state.testFlag(QStyle::State_Sunken))
        strength += 0.14F;
    else if (isEnabled(option) && option.state.testFlag(QStyle::State_MouseOver))
        strength += 0.07F;
    ground.setAlphaF(strength);
    fillBox(painter, option.rect, ground);
    // The ground alone would be too weak a sign.
    if (isOn(option) && isEnabled(option))
        drawBox(painter, option.rect, Qt::transparent, accentShape(palette), 1.0);
    if (hasFocus(option))
        drawFocusRing(painter, option.rect, palette, radius);
}

void drawPanel(const QStyleOption& option, const QColor& fill, QPainter* painter) {
    const PixelGrid grid(*painter);
    const double width = grid.lineWidth(1.0);
    const QRectF outside = grid.snapped(option.rect);
    painter->fillRect(outside, lineColor(option.palette));
    painter->fillRect(outside.adjusted(width, width, -width, -width), fill);
}

} // namespace ControlPainting
