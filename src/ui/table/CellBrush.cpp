#include "ui/table/CellBrush.h"

#include "ui/widgets/AccentColor.h"

#include <QPalette>

QBrush cellBrush(const QPalette& palette, bool selected) {
    return selected ? palette.brush(QPalette::HighlightedText) : QBrush(getAccentColor());
}
