#include "platform/AppearanceChanges.h"

#include "platform/linux/DesktopPortal.h"
#include "platform/linux/SessionBus.h"

#include <QDBusConnection>

namespace Stemhaven {

AppearanceChanges::AppearanceChanges(QObject* parent) : QObject(parent) {
    if (!hasSessionBus())
        return;
    QDBusConnection::sessionBus().connect(
        DesktopPortal::service, DesktopPortal::path, DesktopPortal::settings,
        QStringLiteral("SettingChanged"), {DesktopPortal::appearance}, QString(), this, SIGNAL(changed()));
}

} // namespace Stemhaven
