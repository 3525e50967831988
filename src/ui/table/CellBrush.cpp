#include "ui/table/CellBrush.h"

#include "ui/widgets/AccentColor.h"
#include "ui/widgets/Contrast.h"

#include <QPalette>

QBrush cellBrush(const QPalette& palette, bool selected) {
    return selected
        ? palette.brush(QPalette::HighlightedText)
        : QBrush(Contrast::readable(getAccentColor(), palette.color(QPalette::Base), Contrast::shape));
}
