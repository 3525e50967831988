#include "ui/widgets/StyleMetrics.h"

#include "ui/widgets/ControlPainting.h"
#include "ui/widgets/HeaderPainting.h"
#include "ui/widgets/SliderPainting.h"

#include <QFontMetrics>
#include <QGuiApplication>

namespace {

std::optional<int> distance(QStyle::PixelMetric metric) {
    switch (metric) {
    case QStyle::PM_LayoutLeftMargin:
    case QStyle::PM_LayoutTopMargin:
    case QStyle::PM_LayoutRightMargin:
    case QStyle::PM_LayoutBottomMargin:
    case QStyle::PM_TreeViewIndentation:
        return 16;
    case QStyle::PM_LayoutHorizontalSpacing:
    case QStyle::PM_LayoutVerticalSpacing:
    case QStyle::PM_HeaderMargin:
        return 8;
    case QStyle::PM_ToolTipLabelFrameWidth:
        return 7; // the tip itself adds one
    case QStyle::PM_CheckBoxLabelSpacing:
    case QStyle::PM_RadioButtonLabelSpacing:
        return 6; // the halo adds two
    case QStyle::PM_MenuHMargin:
    case QStyle::PM_MenuVMargin:
    case QStyle::PM_MenuBarHMargin:
        return 4;
    case QStyle::PM_ScrollView_ScrollBarSpacing:
    case QStyle::PM_ButtonShiftHorizontal:
    case QStyle::PM_ButtonShiftVertical:
    case QStyle::PM_MenuBarPanelWidth:
    case QStyle::PM_MenuBarItemSpacing:
    case QStyle::PM_MenuBarVMargin:
        return 0;
    default:
        return std::nullopt;
    }
}

std::optional<int> size(QStyle::PixelMetric metric) {
    const QFontMetrics text(QGuiApplication::font());
    switch (metric) {
    case QStyle::PM_SmallIconSize:
    case QStyle::PM_ButtonIconSize:
    case QStyle::PM_ListViewIconSize:
        return ControlPainting::iconSide(text);
    case QStyle::PM_IndicatorWidth:
    case QStyle::PM_IndicatorHeight:
    case QStyle::PM_ExclusiveIndicatorWidth:
    case QStyle::PM_ExclusiveIndicatorHeight:
        return ControlPainting::iconSide(text) + 2 * ControlPainting::haloWidth;
    case QStyle::PM_ScrollBarExtent:
        return SliderPainting::scrollBarExtent;
    case QStyle::PM_SliderThickness:
    case QStyle::PM_SliderControlThickness:
        return SliderPainting::sliderThickness(text);
    case QStyle::PM_SliderLength:
        return SliderPainting::handleSide(text);
    case QStyle::PM_HeaderMarkSize:
        return HeaderPainting::sortArrowSide;
    case QStyle::PM_SplitterWidth:
        return 7; // the line in the middle; Splitter adds what it takes to grab it
    case QStyle::PM_ComboBoxFrameWidth:
    case QStyle::PM_MenuPanelWidth:
        return 1;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<int> styleMetric(QStyle::PixelMetric metric) {
    const auto found = distance(metric);
    return found ? found : size(metric);
}
