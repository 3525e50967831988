#include "platform/HighContrast.h"

#include "platform/linux/DesktopPortal.h"

namespace Stemhaven {

bool systemWantsContrast() {
    constexpr uint higher = 1;
    return DesktopPortal::readAppearance(QStringLiteral("contrast")).toUInt() == higher;
}

} // namespace Stemhaven
