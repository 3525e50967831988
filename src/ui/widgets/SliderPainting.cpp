#include "ui/widgets/SliderPainting.h"

#include "ui/widgets/ControlPainting.h"

#include <QPainter>
#include <QStyleOptionSlider>

#include <algorithm>
#include <chrono>

using namespace ControlPainting;

namespace SliderPainting {

namespace {

constexpr int scrollHandleThickness = 8;
constexpr int progressThickness = 4;
constexpr int shortestScrollHandle = 32;

bool isHorizontal(const QStyleOptionSlider& option) {
    return option.orientation == Qt::Horizontal;
}

/// How far the handle has come, in pixels from the left or the top.
int handleStart(const QStyleOptionSlider& option, int handle) {
    const int length = isHorizontal(option) ? option.rect.width() : option.rect.height();
    return QStyle::sliderPositionFromValue(
        option.minimum, option.maximum, option.sliderPosition, length - handle, option.upsideDown);
}

QRect centered(const QRect& rect, const QSize& size) {
    return {
        rect.left() + (rect.width() - size.width()) / 2, rect.top() + (rect.height() - size.height()) / 2,
        size.width(), size.height()};
}

/// From the beginning of the range to the handle.
QRect filledGroove(const QStyleOptionSlider& option, const QRect& groove, const QPoint& handle) {
    QRect filled = groove;
    if (isHorizontal(option) && option.upsideDown)
        filled.setLeft(handle.x());
    else if (isHorizontal(option))
        filled.setRight(handle.x());
    else if (option.upsideDown)
        filled.setTop(handle.y());
    else
        filled.setBottom(handle.y());
    return filled;
}

/// How far the moving part of a bar without an end has come in this moment, from 0 to 1.
double busyShare() {
    constexpr long long once = 1800; // ms
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<double>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count() % once) /
        once;
}

} // namespace

QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part) {
    const bool horizontal = isHorizontal(option);
    const int length = horizontal ? option.rect.width() : option.rect.height();
    const qint64 range = qint64{option.maximum} - option.minimum;
    const auto proportional = static_cast<int>(
        range + option.pageStep > 0 ? qint64{length} * option.pageStep / (range + option.pageStep) : length);
    const int handle = std::min(length, std::max(shortestScrollHandle, proportional));
    const int start = handleStart(option, handle);
    const auto span = [&](int from, int to) {
        const QRect along = horizontal ? QRect(from, 0, to - from, option.rect.height())
                                       : QRect(0, from, option.rect.width(), to - from);
        return along.translated(option.rect.topLeft());
    };
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        return span(start, start + handle);
    case QStyle::SC_ScrollBarSubPage:
        return span(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return span(start + handle, length);
    case QStyle::SC_ScrollBarGroove:
        return option.rect;
    default:
        return {};
    }
}

void drawScrollBar(const QStyleOptionSlider& option, const QColor& ground, QPainter* painter) {
    painter->fillRect(option.rect, ground);
    if (option.minimum == option.maximum)
        return;
    const bool isTouched =
        option.state.testFlag(QStyle::State_MouseOver) || option.state.testFlag(QStyle::State_Sunken);
    const QRect part = scrollBarPart(option, QStyle::SC_ScrollBarSlider);
    constexpr int endGap = 3;
    const QRect handle = centered(
        part,
        isHorizontal(option) ? QSize(part.width() - 2 * endGap, scrollHandleThickness)
                             : QSize(scrollHandleThickness, part.height() - 2 * endGap));
    fillBox(
        painter, handle, mixed(ground, option.palette.color(QPalette::Text), isTouched ? 0.5F : 0.25F),
        scrollHandleThickness / 2.0);
}

int handleSide(const QFontMetrics& text) {
    return iconSide(text) + 2 * haloWidth;
}

int sliderThickness(const QFontMetrics& text) {
    return handleSide(text) + 4;
}

QRect sliderPart(const QStyleOptionSlider& option, QStyle::SubControl part) {
    const bool horizontal = isHorizontal(option);
    const int side = handleSide(option.fontMetrics);
    switch (part) {
    case QStyle::SC_SliderHandle: {
        QRect handle = centered(option.rect, {side, side});
        const int start = handleStart(option, side);
        if (horizontal)
            handle.moveLeft(option.rect.left() + start);
        else
            handle.moveTop(option.rect.top() + start);
        return handle;
    }
    case QStyle::SC_SliderGroove:
        return centered(
            option.rect, horizontal ? QSize(option.rect.width(), side) : QSize(side, option.rect.height()));
    default:
        return option.rect;
    }
}

void drawSlider(const QStyleOptionSlider& option, QPainter* painter) {
    const QPalette& palette = option.palette;
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QRect handle = sliderPart(option, QStyle::SC_SliderHandle);
    const int grooveThickness = handle.height() / 5;
    const QRect groove = centered(
        option.rect,
        isHorizontal(option) ? QSize(option.rect.width() - 2 * haloWidth, grooveThickness)
                             : QSize(grooveThickness, option.rect.height() - 2 * haloWidth));
    const double grooveRadius = grooveThickness / 2.0;
    fillBox(painter, groove, mixed(window, text, isEnabled(option) ? 0.16F : 0.08F), grooveRadius);
    fillBox(
        painter, filledGroove(option, groove, handle.center()),
        isEnabled(option) ? accentShape(palette) : mixed(window, text, 0.2F), grooveRadius);

    const QRectF circle = QRectF(handle).adjusted(haloWidth, haloWidth, -haloWidth, -haloWidth);
    const double round = circle.width() / 2;
    if (hasFocus(option))
        drawHalo(painter, circle, palette, round);
    const bool handleIsTouched = option.activeSubControls.testFlag(QStyle::SC_SliderHandle);
    QColor fill = isEnabled(option) ? QColor(Qt::white) : mixed(window, text, 0.08F);
    if (handleIsTouched && isEnabled(option))
        fill = mixed(fill, accentColor(palette), option.state.testFlag(QStyle::State_Sunken) ? 0.3F : 0.12F);
    QColor edge = isEnabled(option) ? edgeColor(palette) : mixed(window, text, 0.3F);
    if (hasFocus(option))
        edge = accentShape(palette);
    drawBox(painter, circle, fill, edge, 1.0, round);
}

void drawProgress(const QStyleOptionProgressBar& option, QPainter* painter) {
    const QRect groove = centered(option.rect, QSize(option.rect.width(), progressThickness));
    constexpr double round = progressThickness / 2.0;
    const QColor window = option.palette.color(QPalette::Window);
    fillBox(painter, groove, mixed(window, option.palette.color(QPalette::WindowText), 0.16F), round);
    const int range = option.maximum - option.minimum;
    QRect filled = groove;
    if (range <= 0) {
        const int span = groove.width() / 3;
        filled.setWidth(span);
        filled.moveLeft(groove.left() - span + static_cast<int>(busyShare() * (groove.width() + span)));
        fillBox(painter, filled & groove, accentShape(option.palette), round);
        return;
    }
    if (option.progress <= option.minimum)
        return;
    filled.setWidth(groove.width() * (option.progress - option.minimum) / range);
    fillBox(
        painter, QStyle::visualRect(option.direction, groove, filled), accentShape(option.palette), round);
}

} // namespace SliderPainting
