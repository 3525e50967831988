#include "platform/AccentColor.h"

#include "platform/linux/DesktopPortal.h"

#include <QDBusArgument>

namespace Stemhaven {

namespace {

bool isComponent(double value) {
    return value >= 0.0 && value <= 1.0;
}

} // namespace

std::optional<QColor> systemAccentColor() {
    const QVariant value = DesktopPortal::readAppearance(QStringLiteral("accent-color"));
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return std::nullopt;
    const auto components = value.value<QDBusArgument>();
    if (components.currentSignature() != QStringLiteral("(ddd)"))
        return std::nullopt;

    double red = 0;
    double green = 0;
    double blue = 0;
    components.beginStructure();
    components >> red >> green >> blue;
    components.endStructure();

    // Anything outside says that the user has chosen no colour.
    if (!isComponent(red) || !isComponent(green) || !isComponent(blue))
        return std::nullopt;
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
}

} // namespace Stemhaven
