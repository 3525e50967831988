#include "platform/linux/SessionBus.h"

#include <QFile>

namespace Stemhaven {

bool hasSessionBus() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtimeFolder.isEmpty() && QFile::exists(runtimeFolder + QStringLiteral("/bus"));
}

} // namespace Stemhaven
