#include "platform/ColorScheme.h"

#include "platform/linux/DesktopPortal.h"

namespace Stemhaven {

ColorScheme systemColorScheme() {
    constexpr uint preferDark = 1;
    const QVariant value = DesktopPortal::readAppearance(QStringLiteral("color-scheme"));
    return value.toUInt() == preferDark ? ColorScheme::Dark : ColorScheme::Light;
}

} // namespace Stemhaven
