#include "ui/widgets/Palettes.h"

#include "ui/widgets/Contrast.h"

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

constexpr Colors lightContrast{
    .window = 0xFFFFFFFF,
    .base = 0xFFFFFFFF,
    .alternateBase = 0xFFF2F2F5,
    .button = 0xFFFFFFFF,
    .line = 0xFF505058,
    .text = 0xFF000000,
    .secondaryText = 0xFF404048,
    .disabledText = 0xFF707078,
    .accent = 0xFF2E2BA8,
    .inactiveSelection = 0xFFD2D2DC};

constexpr Colors darkContrast{
    .window = 0xFF000000,
    .base = 0xFF000000,
    .alternateBase = 0xFF121216,
    .button = 0xFF000000,
    .line = 0xFFB0B0B8,
    .text = 0xFFFFFFFF,
    .secondaryText = 0xFFC8C8D0,
    .disabledText = 0xFF909098,
    .accent = 0xFF6A67DE,
    .inactiveSelection = 0xFF3A3A44};

const Colors& colorsFor(ColorScheme scheme, bool contrast) {
    if (scheme == ColorScheme::Dark)
        return contrast ? darkContrast : dark;
    return contrast ? lightContrast : light;
}

/// White, unless the color is so light that black has by far the higher contrast on it.
QColor textOn(const QColor& color) {
    constexpr double leastForWhite = 3.0;
    return Contrast::between(Qt::white, color) < leastForWhite ? QColor(light.text) : QColor(Qt::white);
}

} // namespace

QPalette designedPalette(ColorScheme scheme, const std::optional<QColor>& accent, bool contrast) {
    const Colors& colors = colorsFor(scheme, contrast);
    const QColor wish = accent.value_or(QColor(colors.accent));
    const QColor highlightedText = textOn(wish);
    const QColor highlight = Contrast::readable(wish, highlightedText, Contrast::text);

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
    palette.setColor(QPalette::HighlightedText, highlightedText);

    palette.setColor(QPalette::Inactive, QPalette::Highlight, colors.inactiveSelection);
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, colors.text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colors.disabledText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.inactiveSelection);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colors.disabledText);
    return palette;
}
