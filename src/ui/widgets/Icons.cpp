#include "ui/widgets/Icons.h"

#include "ui/widgets/ZFontIcon.h"

QIcon icon(Glyph glyph) {
    return ZFontIcon::icon(static_cast<char32_t>(glyph));
}
