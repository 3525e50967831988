#include "ui/widgets/ZFontIcon.h"

#include "ui/widgets/GlyphEngine.h"

#include <QRawFont>

namespace {

/// Large enough for outlines without visible rounding at any size that they are drawn in.
constexpr double outlineSize = 256;

QRawFont& font() {
    static QRawFont font;
    return font;
}

} // namespace

bool ZFontIcon::addFont(const QString& file) {
    font() = QRawFont(file, outlineSize, QFont::PreferNoHinting);
    return font().isValid();
}

QIcon ZFontIcon::icon(char32_t codePoint) {
    if (!font().isValid() || !font().supportsCharacter(codePoint))
        return {};
    const auto glyphs = font().glyphIndexesForString(QString::fromUcs4(&codePoint, 1));
    const auto advances = font().advancesForGlyphIndexes(glyphs);
    if (glyphs.isEmpty() || advances.isEmpty())
        return {};
    // The cell of the glyph: as wide as its advance, as high as the font's line.
    const QRectF cell(0, -font().ascent(), advances.constFirst().x(), font().ascent() + font().descent());
    return QIcon(new GlyphEngine(font().pathForGlyph(glyphs.constFirst()), cell));
}

void ZFontIcon::setColors(const QColor& normal, const QColor& disabled, const QColor& selected) {
    GlyphEngine::setColors(normal, disabled, selected);
}
