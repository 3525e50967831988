#pragma once

#include <QString>
#include <QVariant>

/// The settings that a desktop shows to every program, by way of its portal.
namespace Stemhaven::DesktopPortal {

inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
inline const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
inline const QString appearance = QStringLiteral("org.freedesktop.appearance");

/// A setting of the appearance group, invalid where the desktop has none. Waits for at most a fraction of a
/// second.
QVariant readAppearance(const QString& key);

} // namespace Stemhaven::DesktopPortal
