#include "platform/AccentColor.h"

#import <AppKit/AppKit.h>

namespace Stemhaven {

std::optional<QColor> systemAccentColor() {
    NSColor* color = [NSColor.controlAccentColor colorUsingColorSpace:NSColorSpace.genericRGBColorSpace];
    if (color == nil)
        return std::nullopt;
    return QColor::fromRgbF(
        static_cast<float>(color.redComponent), static_cast<float>(color.greenComponent),
        static_cast<float>(color.blueComponent));
}

} // namespace Stemhaven
