#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

/// Makes icons from the glyphs of one icon font. They are drawn as outlines, so they are sharp at any size
/// and scale, and take their colours when they are drawn, so they follow every change. GUI thread.
class ZFontIcon {
public:
    /// Takes a font file, which may be a resource, in the place of the one before. Returns whether it is one;
    /// otherwise there is no font. Icons made before keep their outlines.
    static bool addFont(const QString& file);

    /// Null where the font has no such glyph, or there is no font.
    static QIcon icon(char32_t codePoint);

    /// The colours of all icons, new and old, for all that is drawn from now on. Before the first call they
    /// are those of the application's palette.
    static void setColors(const QColor& normal, const QColor& disabled, const QColor& selected);

    ZFontIcon() = delete;
};
