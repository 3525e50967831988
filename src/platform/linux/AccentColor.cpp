#include "platform/AccentColor.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>

#include <chrono>

namespace Stemhaven {

namespace {

/// Whether a session bus can be reached. Asking for a connection without one would start a bus for it.
bool hasSessionBus() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtimeFolder.isEmpty() && QFile::exists(runtimeFolder + QStringLiteral("/bus"));
}

QVariant readDesktopSetting(const QString& group, const QString& key) {
    using namespace std::chrono_literals;
    constexpr auto timeout = 250ms;

    auto question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    question << group << key;
    question.setAutoStartService(false);
    const QDBusMessage answer =
        QDBusConnection::sessionBus().call(question, QDBus::Block, static_cast<int>(timeout.count()));
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return {};
    return answer.arguments().constFirst();
}

/// Some desktops put the value into one variant more than the others.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

bool isComponent(double value) {
    return value >= 0.0 && value <= 1.0;
}

} // namespace

std::optional<QColor> systemAccentColor() {
    if (!hasSessionBus())
        return std::nullopt;

    const QVariant value = unwrapped(
        readDesktopSetting(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("accent-color")));
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
