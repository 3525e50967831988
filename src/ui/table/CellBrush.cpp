#include "ui/table/CellBrush.h"

#include "ui/widgets/AccentColor.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ControlPainting.h"

#include <QPalette>

QBrush cellBrush(const QPalette& palette, bool selected) {
    return selected
        ? palette.brush(QPalette::HighlightedText)
        : QBrush(Contrast::readable(getAccentColor(), palette.color(QPalette::Base), Contrast::shape));
}

QBrush outlineBrush(const QPalette& palette, bool selected) {
    if (selected)
        return palette.brush(QPalette::HighlightedText);
    constexpr float strength = 0.4F;
    const QColor ground = palette.color(QPalette::Base);
    return Contrast::readable(
        ControlPainting::mixed(ground, palette.color(QPalette::Text), strength), ground,
        Contrast::shapeRatio(palette));
}

QBrush trackBrush(const QPalette& palette, bool selected) {
    constexpr float strength = 0.12F;
    constexpr float strengthOfSelected = 0.28F;
    QColor track = palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    track.setAlphaF(selected ? strengthOfSelected : strength);
    return track;
}
