#include "ui/widgets/AccentColor.h"

#include "platform/AccentColor.h"

#include <QDebug>
#include <QGuiApplication>
#include <QPalette>

namespace {

QColor readAccentColor(const QPalette& palette) {
    if (const auto color = Stemhaven::systemAccentColor())
        return *color;

    static bool warned = false;
    if (!warned) {
        qWarning() << "Could not convert controlAccentColor to calibrated color space! Defaulting to "
                      "highlight color for accent.";
        warned = true;
    }
    return palette.color(QPalette::Active, QPalette::Highlight);
}

} // namespace

QColor getAccentColor() {
    // The key stands for the palette's contents, so an unchanged palette costs one comparison a cell.
    static qint64 paletteKey = 0;
    static QColor color;

    const QPalette palette = QGuiApplication::palette();
    if (!color.isValid() || palette.cacheKey() != paletteKey) {
        color = readAccentColor(palette);
        paletteKey = palette.cacheKey();
    }
    return color;
}
