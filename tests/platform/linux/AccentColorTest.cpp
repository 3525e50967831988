#include "platform/AccentColor.h"

#include "support/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QThread>

#include <gtest/gtest.h>

#include <limits>
#include <mutex>

using Stemhaven::systemAccentColor;

namespace {

QVariant rgb(double red, double green, double blue) {
    QDBusArgument components;
    components.beginStructure();
    components << red << green << blue;
    components.endStructure();
    return QVariant::fromValue(components);
}

QVariant variantOf(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

/// Stands in for the desktop: answers the one question with what it was told.
class Desktop : public QDBusVirtualObject {
public:
    void answerWith(const QVariant& answer) {
        const std::lock_guard lock(m_mutex);
        m_answer = answer;
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& question, const QDBusConnection& connection) override {
        const std::lock_guard lock(m_mutex);
        const bool known = question.interface() == "org.freedesktop.portal.Settings" &&
            question.member() == "Read" &&
            question.arguments() == QVariantList{"org.freedesktop.appearance", "accent-color"};
        if (known && m_answer.isValid())
            connection.send(question.createReply(m_answer));
        return true;
    }

private:
    std::mutex m_mutex;
    QVariant m_answer;
};

TEST(AccentColor, IsWhatTheDesktopSaysIfItIsAColour) {
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qunsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(systemAccentColor(), std::nullopt) << "without a session bus";

    const PrivateBus bus;
    ASSERT_FALSE(PrivateBus::address().isEmpty());
    EXPECT_EQ(systemAccentColor(), std::nullopt) << "on a bus without a desktop";

    QThread thread;
    thread.start();
    Desktop desktop;
    desktop.moveToThread(&thread);
    auto connection = QDBusConnection::connectToBus(PrivateBus::address(), "desktop");
    ASSERT_TRUE(connection.registerVirtualObject("/org/freedesktop/portal/desktop", &desktop));
    ASSERT_TRUE(connection.registerService("org.freedesktop.portal.Desktop"));

    const QColor orange = QColor::fromRgbF(1.0F, 0.5F, 0.0F);
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const std::pair<QVariant, std::optional<QColor>> cases[] = {
        {variantOf(rgb(1.0, 0.5, 0.0)), orange},
        {variantOf(variantOf(rgb(1.0, 0.5, 0.0))), orange},
        {variantOf(rgb(0.0, 1.01, 0.0)), std::nullopt},
        {variantOf(rgb(notANumber, 0.0, 0.0)), std::nullopt},
        {variantOf("orange"), std::nullopt},
        {7, std::nullopt},
    };
    for (const auto& [answer, expected] : cases) {
        desktop.answerWith(answer);
        EXPECT_EQ(systemAccentColor(), expected);
    }

    // A desktop that keeps silent does not hold up the program for as long as D-Bus would wait.
    desktop.answerWith({});
    QElapsedTimer waited;
    waited.start();
    EXPECT_EQ(systemAccentColor(), std::nullopt);
    EXPECT_LT(waited.elapsed(), 10'000);

    QDBusConnection::disconnectFromBus("desktop");
    thread.quit();
    thread.wait();
}

} // namespace
