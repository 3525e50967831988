#include "ui/widgets/DesktopAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>

#include <chrono>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");

constexpr uint preferDark = 1;

/// Asking for a connection where there is no bus would start one.
bool hasSessionBus() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtimeFolder.isEmpty() && QFile::exists(runtimeFolder + QStringLiteral("/bus"));
}

} // namespace

DesktopAppearance::DesktopAppearance(QObject* parent) : QObject(parent) {
    if (hasSessionBus()) {
        QDBusConnection::sessionBus().connect(
            service, path, interface, QStringLiteral("SettingChanged"), this,
            SLOT(onSettingChanged(QDBusMessage)));
    }
}

ColorScheme DesktopAppearance::colorScheme() {
    using namespace std::chrono_literals;
    constexpr auto timeout = 250ms;

    if (!hasSessionBus())
        return ColorScheme::Light;
    auto question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    question << appearance << QStringLiteral("color-scheme");
    question.setAutoStartService(false);
    const auto answer =
        QDBusConnection::sessionBus().call(question, QDBus::Block, static_cast<int>(timeout.count()));
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return ColorScheme::Light;
    // Some desktops put the value into one variant more than others.
    QVariant value = answer.arguments().constFirst();
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt() == preferDark ? ColorScheme::Dark : ColorScheme::Light;
}

void DesktopAppearance::onSettingChanged(const QDBusMessage& message) {
    if (message.arguments().value(0).toString() == appearance)
        emit changed();
}
