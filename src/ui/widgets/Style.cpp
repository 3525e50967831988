#include "ui/widgets/Style.h"

#include "ui/widgets/Contrast.h"
#include "ui/widgets/ControlPainting.h"
#include "ui/widgets/HeaderPainting.h"
#include "ui/widgets/ItemViewPainting.h"
#include "ui/widgets/MenuPainting.h"
#include "ui/widgets/MessageIcon.h"
#include "ui/widgets/SliderPainting.h"
#include "ui/widgets/StyleMetrics.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QPainter>
#include <QSlider>
#include <QStyleOption>
#include <QToolButton>
#include <QTreeView>

#include <algorithm>

using namespace ControlPainting;

namespace {

constexpr int comboPadding = 8;
constexpr int comboArrowWidth = 24;
constexpr int menuArrowWidth = 12;

/// The ground that a scroll bar lies on is that of what it scrolls.
QColor groundOf(const QStyleOption& option, const QWidget* scrollBar) {
    const auto* container = scrollBar ? scrollBar->parentWidget() : nullptr;
    const auto* area =
        qobject_cast<const QAbstractScrollArea*>(container ? container->parentWidget() : nullptr);
    const QPalette::ColorRole role = area ? area->viewport()->backgroundRole() : QPalette::Base;
    return option.palette.color(role);
}

/// Whether it is a list in a frame: rounded in a window, and with straight corners as the popup of a combo
/// box.
bool isFramedList(const QWidget* widget) {
    return qobject_cast<const QAbstractScrollArea*>(widget) ||
        (widget && widget->inherits("QComboBoxPrivateContainer"));
}

QRect comboBoxPart(const QStyleOption& option, QStyle::SubControl part) {
    QRect rect = option.rect;
    if (part == QStyle::SC_ComboBoxArrow)
        rect.setLeft(rect.right() + 1 - comboArrowWidth - comboPadding / 2);
    else if (part == QStyle::SC_ComboBoxEditField)
        rect.adjust(comboPadding, 2, -comboArrowWidth - comboPadding / 2, -2);
    return QStyle::visualRect(option.direction, option.rect, rect);
}

QSize toolButtonSize(const QStyleOptionToolButton& button, const QSize& contents) {
    const bool showsText = button.toolButtonStyle != Qt::ToolButtonIconOnly;
    const bool showsArrow = button.features.testFlag(QStyleOptionToolButton::HasMenu);
    const int width = contents.width() + (showsText ? 16 : 12) + (showsArrow ? menuArrowWidth : 0);
    return {std::max(width, controlHeight), std::max(contents.height() + 4, controlHeight)};
}

} // namespace

Style::Style() : QProxyStyle(QStringLiteral("Fusion")) {}

void Style::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    const bool showsTouch = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
        qobject_cast<QSlider*>(widget) || widget->inherits("QSplitterHandle");
    if (showsTouch)
        widget->setAttribute(Qt::WA_Hover);
    if (const auto* view = qobject_cast<QAbstractItemView*>(widget))
        view->viewport()->setAttribute(Qt::WA_Hover);
}

void Style::drawPrimitive(
    PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const QPalette& palette = option->palette;
    if (ItemViewPainting::drawPart(element, *option, widget, painter))
        return;
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
    case PE_IndicatorCheckBox:
        drawCheckBox(*option, painter);
        break;
    case PE_IndicatorRadioButton:
        drawRadioButton(*option, painter);
        break;
    case PE_PanelMenu:
        drawPanel(*option, palette.color(QPalette::Base), painter);
        break;
    case PE_FrameMenu:
        break; // part of the panel
    case PE_PanelTipLabel:
        drawPanel(*option, palette.color(QPalette::ToolTipBase), painter);
        break;
    case PE_Frame:
        if (qobject_cast<const QAbstractScrollArea*>(widget))
            drawBox(painter, option->rect, palette.color(QPalette::Base), lineColor(palette), 1.0);
        else
            drawPanel(
                *option, palette.color(isFramedList(widget) ? QPalette::Base : QPalette::Window), painter);
        break;
    case PE_PanelScrollAreaCorner:
        painter->fillRect(option->rect, palette.base());
        break;
    case PE_FrameFocusRect:
        // A button's own parts show its focus.
        if (!qobject_cast<const QAbstractButton*>(widget) && !qobject_cast<const QComboBox*>(widget))
            drawFocusRing(painter, option->rect, palette, radius);
        break;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(
    ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const {
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    const auto* menu = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    const auto* comboBox = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (element == CE_HeaderSection || element == CE_HeaderEmptyArea)
        HeaderPainting::drawSection(*option, painter);
    else if (element == CE_Header && header)
        drawHeader(*header, painter, widget);
    else if (element == CE_PushButtonLabel && button)
        drawButtonLabel(*button, painter, widget);
    else if (element == CE_ComboBoxLabel && comboBox)
        drawComboBoxLabel(*comboBox, painter, widget);
    else if (element == CE_MenuItem && menu)
        MenuPainting::drawItem(*menu, painter);
    else if (element == CE_MenuBarItem && menu)
        MenuPainting::drawTitle(*menu, painter);
    else if (element == CE_MenuBarEmptyArea || element == CE_MenuEmptyArea)
        return; // the ground is there
    else if (element == CE_Splitter)
        drawDivider(painter, option->rect, touched(lineColor(option->palette), *option));
    else
        QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawHeader(const QStyleOptionHeader& option, QPainter* painter, const QWidget* widget) const {
    HeaderPainting::drawSection(option, painter);
    HeaderPainting::drawSortArrow(option, painter);

    const bool prominent =
        option.sortIndicator != QStyleOptionHeader::None || option.state.testFlag(State_MouseOver);
    QStyleOptionHeader label(option);
    if (!(label.textAlignment & Qt::AlignVertical_Mask))
        label.textAlignment |= Qt::AlignVCenter;
    label.rect = subElementRect(SE_HeaderLabel, &option, widget);
    const QPalette& palette = option.palette;
    label.palette.setColor(
        QPalette::ButtonText,
        prominent ? palette.color(QPalette::Text) : Contrast::secondaryText(palette, QPalette::Base));
    QProxyStyle::drawControl(CE_HeaderLabel, &label, painter, widget);
}

void Style::drawButtonLabel(
    const QStyleOptionButton& option, QPainter* painter, const QWidget* widget) const {
    QStyleOptionButton label(option);
    if (isProminent(option)) {
        label.palette.setColor(
            QPalette::ButtonText, option.palette.color(QPalette::Active, QPalette::HighlightedText));
    }
    QProxyStyle::drawControl(CE_PushButtonLabel, &label, painter, widget);
}

void Style::drawComboBoxLabel(
    const QStyleOptionComboBox& option, QPainter* painter, const QWidget* widget) const {
    constexpr int margin = 2; // the base style leaves it on both sides
    QStyleOptionComboBox label(option);
    const int width = comboBoxPart(option, SC_ComboBoxEditField).width() - 2 * margin;
    label.currentText = option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, width);
    QProxyStyle::drawControl(CE_ComboBoxLabel, &label, painter, widget);
}

void Style::drawToolButton(
    const QStyleOptionToolButton& option, QPainter* painter, const QWidget* widget) const {
    if (option.state.testFlag(State_AutoRaise))
        ControlPainting::drawToolButton(option, painter);
    else
        drawButton(option, painter);

    QStyleOptionToolButton label(option);
    if (option.features.testFlag(QStyleOptionToolButton::HasMenu)) {
        QRect arrow = option.rect;
        arrow.setLeft(arrow.right() - menuArrowWidth - 4);
        label.rect.setRight(arrow.left());
        drawChevron(
            painter, visualRect(option.direction, option.rect, arrow), Qt::DownArrow,
            option.palette.color(QPalette::ButtonText));
        label.rect = visualRect(option.direction, option.rect, label.rect);
    }
    // Painted in place, an icon is sharp at any scale; by way of a picture it would not be.
    if (option.toolButtonStyle == Qt::ToolButtonIconOnly && !option.icon.isNull()) {
        QRect place(QPoint(), option.iconSize);
        place.moveCenter(label.rect.center());
        option.icon.paint(
            painter, place, Qt::AlignCenter, isEnabled(option) ? QIcon::Normal : QIcon::Disabled,
            option.state.testFlag(State_On) ? QIcon::On : QIcon::Off);
    } else {
        label.state &= ~(State_Sunken | State_AutoRaise);
        if (option.toolButtonStyle == Qt::ToolButtonTextBesideIcon)
            label.rect.adjust(4, 0, -4, 0);
        QProxyStyle::drawControl(CE_ToolButtonLabel, &label, painter, widget);
    }
}

void Style::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
    const QWidget* widget) const {
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    const auto* toolButton = qstyleoption_cast<const QStyleOptionToolButton*>(option);
    const auto* comboBox = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    const auto* spinBox = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
    if (control == CC_SpinBox && spinBox && spinBox->buttonSymbols == QAbstractSpinBox::NoButtons)
        drawLineEdit(*option, painter); // nothing tells it from one
    else if (control == CC_ScrollBar && slider)
        SliderPainting::drawScrollBar(*slider, groundOf(*option, widget), painter);
    else if (control == CC_Slider && slider)
        SliderPainting::drawSlider(*slider, painter);
    else if (control == CC_ToolButton && toolButton)
        drawToolButton(*toolButton, painter, widget);
    else if (control == CC_ComboBox && comboBox)
        drawComboBox(*comboBox, comboBoxPart(*comboBox, SC_ComboBoxArrow), painter);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect Style::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (element == SE_HeaderLabel && header) {
        const bool isSorted = header->sortIndicator != QStyleOptionHeader::None;
        constexpr int margin = HeaderPainting::margin;
        return header->rect.adjusted(margin, 0, -margin - (isSorted ? HeaderPainting::sortArrowSide : 0), 0);
    }
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    return element == SE_LineEditContents ? rect.adjusted(6, 0, -6, 0) : rect;
}

QRect Style::subControlRect(
    ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
    const QWidget* widget) const {
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && slider)
        return SliderPainting::scrollBarPart(*slider, subControl);
    if (control == CC_Slider && slider)
        return SliderPainting::sliderPart(*slider, subControl);
    if (control == CC_ComboBox && subControl != SC_ComboBoxListBoxPopup)
        return comboBoxPart(*option, subControl);
    return QProxyStyle::subControlRect(control, option, subControl, widget);
}

QSize Style::sizeFromContents(
    ContentsType type, const QStyleOption* option, const QSize& contentsSize, const QWidget* widget) const {
    QSize size = QProxyStyle::sizeFromContents(type, option, contentsSize, widget);
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    const auto* menu = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    const auto* toolButton = qstyleoption_cast<const QStyleOptionToolButton*>(option);
    switch (type) {
    case CT_HeaderSection:
        if (header) {
            const int title = header->fontMetrics.horizontalAdvance(header->text.trimmed());
            size.setWidth(title + 2 * HeaderPainting::margin + HeaderPainting::sortArrowSide);
        }
        return size.expandedTo({0, controlHeight});
    case CT_LineEdit:
    case CT_SpinBox:
        return size.expandedTo({0, controlHeight});
    case CT_PushButton:
        return QSize(size.width() + 16, size.height()).expandedTo({88, controlHeight});
    case CT_ComboBox:
        return QSize(contentsSize.width() + 2 * comboPadding + comboArrowWidth, contentsSize.height() + 8)
            .expandedTo({0, controlHeight});
    case CT_ToolButton:
        return toolButton ? toolButtonSize(*toolButton, contentsSize) : size;
    case CT_CheckBox:
    case CT_RadioButton:
        return size.expandedTo({0, 24});
    case CT_ItemViewItem:
        return size.expandedTo({0, rowHeight});
    case CT_MenuItem:
        return menu ? MenuPainting::itemSize(*menu, contentsSize) : size;
    case CT_MenuBarItem:
        return MenuPainting::titleSize(contentsSize);
    default:
        return size;
    }
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    // A popup list keeps clear of its edges, and a framed list of its rounded corners.
    if (metric == PM_DefaultFrameWidth)
        return isFramedList(widget) ? 4 : 1;
    // A cell's text has one more. In a tree the margins of icon and text add up.
    if (metric == PM_FocusFrameHMargin)
        return qobject_cast<const QTreeView*>(widget) ? 3 : 7;
    const auto own = styleMetric(metric);
    return own ? *own : QProxyStyle::pixelMetric(metric, option, widget);
}

int Style::styleHint(
    StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* returnData) const {
    switch (hint) {
    case SH_ComboBox_Popup: // a list below the box
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
        return 0;
    case SH_Slider_AbsoluteSetButtons:
        // A click in the groove moves the handle there, as one expects of a progress that is set by hand.
        return Qt::LeftButton;
    case SH_ToolTipLabel_Opacity:
        return 255;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QIcon Style::standardIcon(
    StandardPixmap standardIcon, const QStyleOption* option, const QWidget* widget) const {
    const QIcon icon = messageIcon(standardIcon);
    return icon.isNull() ? QProxyStyle::standardIcon(standardIcon, option, widget) : icon;
}
