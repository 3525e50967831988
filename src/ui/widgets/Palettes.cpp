#include "ui/widgets/Palettes.h"

#include <cmath>

using Stemhaven::ColorScheme;

namespace {

struct Colors {
    QRgb window;
    QRgb base;
    QRgb alternateBase;
    QRgb button;
    QRgb line;
    QRgb text;
    QRgb secondaryText;
    QRgb disabledText;
    QRgb accent;
    QRgb inactiveSelection;
};

constexpr Colors light{
    .window = 0xFFF6F6F8,
    .base = 0xFFFFFFFF,
    .alternateBase = 0xFFF8F8FB,
    .button = 0xFFFFFFFF,
    .line = 0xFFDADAE2,
    .text = 0xFF1C1C21,
    .secondaryText = 0xFF686874,
    .disabledText = 0xFFA4A4AE,
    .accent = 0xFF5552D0,
    .inactiveSelection = 0xFFE2E2EA};

constexpr Colors dark{
    .window = 0xFF1B1B1F,
    .base = 0xFF212126,
    .alternateBase = 0xFF25252B,
    .button = 0xFF2E2E35,
    .line = 0xFF3B3B44,
    .text = 0xFFECECF0,
    .secondaryText = 0xFF9C9CA9,
    .disabledText = 0xFF62626D,
    .accent = 0xFF6A67DE,
    .inactiveSelection = 0xFF3A3A44};

double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// White, unless the color is so light that black has the higher contrast on it.
QColor textOn(const QColor& color) {
    return luminance(color) > 0.3 ? QColor(light.text) : QColor(Qt::white);
}

} // namespace

QPalette designedPalette(ColorScheme scheme, const std::optional<QColor>& accent) {
    const Colors& colors = scheme == ColorScheme::Dark ? dark : light;
    const QColor highlight = accent.value_or(QColor(colors.accent));

    QPalette palette;
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternateBase);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.secondaryText);
    palette.setColor(QPalette::Button, colors.button);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, colors.button);
    palette.setColor(QPalette::ToolTipText, colors.text);
    palette.setColor(QPalette::Link, highlight);
    palette.setColor(QPalette::LinkVisited, highlight);
    palette.setColor(QPalette::Light, colors.base);
    palette.setColor(QPalette::Midlight, colors.button);
    palette.setColor(QPalette::Mid, colors.line);
    palette.setColor(QPalette::Dark, QColor(colors.line).darker(130));
    palette.setColor(QPalette::Shadow, Qt::black);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, textOn(highlight));

    palette.setColor(QPalette::Inactive, QPalette::Highlight, colors.inactiveSelection);
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, colors.text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colors.disabledText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.inactiveSelection);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colors.disabledText);
    return palette;
}
