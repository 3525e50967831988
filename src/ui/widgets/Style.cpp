#include "ui/widgets/Style.h"

#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStyleOption>

#include <algorithm>
#include <array>

namespace {

constexpr double radius = 6.0;
constexpr int controlHeight = 32;
constexpr int headerMargin = 8;
constexpr int sortArrowSide = 12;
constexpr int scrollBarExtent = 12;
constexpr int shortestSlider = 32;

QColor mixed(const QColor& from, const QColor& to, float share) {
    const auto mix = [share](float a, float b) {
        return a + (b - a) * share;
    };
    return QColor::fromRgbF(
        mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()), mix(from.blueF(), to.blueF()));
}

QColor lineColor(const QPalette& palette) {
    return mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.14F);
}

QRectF insideLine(const QRect& rect, double lineWidth) {
    return QRectF(rect).adjusted(lineWidth / 2, lineWidth / 2, -lineWidth / 2, -lineWidth / 2);
}

void drawBox(QPainter* painter, const QRect& rect, const QColor& fill, const QColor& line, double lineWidth) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(line, lineWidth));
    painter->setBrush(fill);
    painter->drawRoundedRect(insideLine(rect, lineWidth), radius, radius);
    painter->restore();
}

void drawLineEdit(const QStyleOption& option, QPainter* painter) {
    const QPalette& palette = option.palette;
    const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
    drawBox(
        painter, option.rect, palette.color(QPalette::Base),
        hasFocus ? palette.color(QPalette::Active, QPalette::Highlight) : lineColor(palette),
        hasFocus ? 2.0 : 1.0);
}

bool isProminent(const QStyleOption* option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    return button && button->features.testFlag(QStyleOptionButton::DefaultButton) &&
        button->state.testFlag(QStyle::State_Enabled);
}

void drawButton(const QStyleOption& option, QPainter* painter) {
    const QPalette& palette = option.palette;
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    const QColor text = palette.color(QPalette::ButtonText);
    const bool prominent = isProminent(&option);
    QColor fill = prominent ? accent : palette.color(QPalette::Button);
    if (option.state.testFlag(QStyle::State_Sunken))
        fill = mixed(fill, text, 0.16F);
    else if (option.state.testFlag(QStyle::State_MouseOver))
        fill = mixed(fill, text, 0.06F);

    const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
    const QColor edge = prominent ? fill : lineColor(palette);
    drawBox(
        painter, option.rect, fill, hasFocus && !prominent ? accent : edge,
        hasFocus && !prominent ? 2.0 : 1.0);
    if (hasFocus && prominent) {
        const QColor ring = palette.color(QPalette::Active, QPalette::HighlightedText);
        drawBox(painter, option.rect.adjusted(2, 2, -2, -2), Qt::transparent, ring, 1.0);
    }
}

void drawHeaderSection(const QStyleOption& option, QPainter* painter) {
    const QRect& rect = option.rect;
    painter->fillRect(rect, option.palette.base());
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), lineColor(option.palette));
}

/// Beside the title, as the title stands.
QRect sortArrowRect(const QStyleOptionHeader& header) {
    constexpr int gap = headerMargin / 2;
    QRect arrow(0, 0, sortArrowSide, sortArrowSide);
    arrow.moveCenter(header.rect.center());
    const int rightmost = header.rect.right() - gap;
    const int behindTitle = header.rect.left() + headerMargin +
        header.fontMetrics.horizontalAdvance(header.text) + gap + sortArrowSide;
    const bool followsTitle = header.textAlignment & Qt::AlignLeft && header.icon.isNull();
    arrow.moveRight(followsTitle ? std::min(behindTitle, rightmost) : rightmost);
    return arrow;
}

void drawSortArrow(const QStyleOptionHeader& header, QPainter* painter) {
    if (header.sortIndicator == QStyleOptionHeader::None)
        return;
    const double direction = header.sortIndicator == QStyleOptionHeader::SortUp ? 1.0 : -1.0;
    const QPointF center = QRectF(sortArrowRect(header)).center();
    const std::array chevron{
        center + QPointF(-4, -2 * direction), center + QPointF(0, 2 * direction),
        center + QPointF(4, -2 * direction)};
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(
        QPen(header.palette.color(QPalette::Text), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(chevron.data(), static_cast<int>(chevron.size()));
    painter->restore();
}

void drawFocusFrame(const QStyleOption& option, QPainter* painter) {
    drawBox(
        painter, option.rect, Qt::transparent, option.palette.color(QPalette::Active, QPalette::Highlight),
        2.0);
}

void drawScrollBar(const QStyleOptionSlider& option, const QRect& slider, QPainter* painter) {
    painter->fillRect(option.rect, option.palette.base());
    if (option.minimum == option.maximum)
        return;
    const bool touched =
        option.state.testFlag(QStyle::State_MouseOver) || option.state.testFlag(QStyle::State_Sunken);
    constexpr int inset = 3;
    constexpr double sliderRadius = (scrollBarExtent - 2 * inset) / 2.0;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(mixed(
        option.palette.color(QPalette::Base), option.palette.color(QPalette::Text), touched ? 0.5F : 0.25F));
    painter->drawRoundedRect(slider.adjusted(inset, inset, -inset, -inset), sliderRadius, sliderRadius);
    painter->restore();
}

QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part) {
    const bool horizontal = option.orientation == Qt::Horizontal;
    const int length = horizontal ? option.rect.width() : option.rect.height();
    const qint64 range = qint64{option.maximum} - option.minimum;
    const auto proportional = static_cast<int>(
        range + option.pageStep > 0 ? qint64{length} * option.pageStep / (range + option.pageStep) : length);
    const int slider = std::min(length, std::max(shortestSlider, proportional));
    const int start = QStyle::sliderPositionFromValue(
        option.minimum, option.maximum, option.sliderPosition, length - slider, option.upsideDown);
    const auto span = [&](int from, int to) {
        const QRect along = horizontal ? QRect(from, 0, to - from, option.rect.height())
                                       : QRect(0, from, option.rect.width(), to - from);
        return along.translated(option.rect.topLeft());
    };
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        return span(start, start + slider);
    case QStyle::SC_ScrollBarSubPage:
        return span(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return span(start + slider, length);
    case QStyle::SC_ScrollBarGroove:
        return option.rect;
    default:
        return {};
    }
}

} // namespace

Style::Style() : QProxyStyle(QStringLiteral("Fusion")) {}

void Style::drawPrimitive(
    PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    switch (element) {
    case PE_PanelLineEdit:
        if (frame && frame->lineWidth > 0)
            drawLineEdit(*option, painter);
        else
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        break;
    case PE_PanelButtonCommand:
        drawButton(*option, painter);
        break;
    case PE_PanelScrollAreaCorner:
        painter->fillRect(option->rect, option->palette.base());
        break;
    case PE_FrameFocusRect:
        // A button's panel shows its focus.
        if (!qobject_cast<const QPushButton*>(widget))
            drawFocusFrame(*option, painter);
        break;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(
    ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const {
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element == CE_HeaderSection || element == CE_HeaderEmptyArea)
        drawHeaderSection(*option, painter);
    else if (element == CE_Header && header)
        drawHeader(*header, painter, widget);
    else if (element == CE_PushButtonLabel && button)
        drawButtonLabel(*button, painter, widget);
    else
        QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawHeader(const QStyleOptionHeader& option, QPainter* painter, const QWidget* widget) const {
    drawHeaderSection(option, painter);
    drawSortArrow(option, painter);

    const bool prominent =
        option.sortIndicator != QStyleOptionHeader::None || option.state.testFlag(State_MouseOver);
    QStyleOptionHeader label(option);
    if (!(label.textAlignment & Qt::AlignVertical_Mask))
        label.textAlignment |= Qt::AlignVCenter;
    label.rect = subElementRect(SE_HeaderLabel, &option, widget);
    label.palette.setColor(
        QPalette::ButtonText, option.palette.color(prominent ? QPalette::Text : QPalette::PlaceholderText));
    QProxyStyle::drawControl(CE_HeaderLabel, &label, painter, widget);
}

void Style::drawButtonLabel(
    const QStyleOptionButton& option, QPainter* painter, const QWidget* widget) const {
    QStyleOptionButton label(option);
    if (isProminent(&option)) {
        label.palette.setColor(
            QPalette::ButtonText, option.palette.color(QPalette::Active, QPalette::HighlightedText));
    }
    QProxyStyle::drawControl(CE_PushButtonLabel, &label, painter, widget);
}

void Style::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
    const QWidget* widget) const {
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && slider)
        drawScrollBar(*slider, scrollBarPart(*slider, SC_ScrollBarSlider), painter);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect Style::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (element == SE_HeaderLabel && header) {
        const bool isSorted = header->sortIndicator != QStyleOptionHeader::None;
        return header->rect.adjusted(headerMargin, 0, -headerMargin - (isSorted ? sortArrowSide : 0), 0);
    }
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    return element == SE_LineEditContents ? rect.adjusted(6, 0, -6, 0) : rect;
}

QRect Style::subControlRect(
    ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
    const QWidget* widget) const {
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && slider)
        return scrollBarPart(*slider, subControl);
    return QProxyStyle::subControlRect(control, option, subControl, widget);
}

QSize Style::sizeFromContents(
    ContentsType type, const QStyleOption* option, const QSize& contentsSize, const QWidget* widget) const {
    QSize size = QProxyStyle::sizeFromContents(type, option, contentsSize, widget);
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    switch (type) {
    case CT_HeaderSection:
        if (header) {
            const int title = header->fontMetrics.horizontalAdvance(header->text.trimmed());
            size.setWidth(title + 2 * headerMargin + sortArrowSide);
        }
        size.setHeight(std::max(size.height(), controlHeight));
        break;
    case CT_LineEdit:
        size.setHeight(std::max(size.height(), controlHeight));
        break;
    case CT_PushButton:
        size = {std::max(size.width() + 24, 88), std::max(size.height(), controlHeight)};
        break;
    default:
        break;
    }
    return size;
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_ScrollBarExtent:
        return scrollBarExtent;
    case PM_ScrollView_ScrollBarSpacing:
        return 0;
    case PM_HeaderMargin:
        return headerMargin;
    case PM_HeaderMarkSize:
        return sortArrowSide;
    case PM_FocusFrameHMargin:
        return 7; // a cell's text has one more
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
        return 16;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return 8;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}
