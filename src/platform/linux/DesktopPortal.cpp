#include "platform/linux/DesktopPortal.h"

#include "platform/linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include <chrono>

namespace Stemhaven::DesktopPortal {

QVariant readAppearance(const QString& key) {
    using namespace std::chrono_literals;
    constexpr auto timeout = 250ms;

    if (!hasSessionBus())
        return {};
    auto question = QDBusMessage::createMethodCall(service, path, settings, QStringLiteral("Read"));
    question << appearance << key;
    question.setAutoStartService(false);
    const QDBusMessage answer =
        QDBusConnection::sessionBus().call(question, QDBus::Block, static_cast<int>(timeout.count()));
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return {};
    // Some desktops put the value into one variant more than others.
    QVariant value = answer.arguments().constFirst();
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace Stemhaven::DesktopPortal
