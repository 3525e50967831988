#include "ui/widgets/Theme.h"

#include "support/PrivateBus.h"
#include "support/Waiting.h"
#include "ui/widgets/Style.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>

namespace {

const QString portal = "/org/freedesktop/portal/desktop";
const QString appearance = "org.freedesktop.appearance";
const QString colorScheme = "color-scheme";
const QString contrast = "contrast";
const QString accentColor = "accent-color";

QVariant rgb(double red, double green, double blue) {
    QDBusArgument components;
    components.beginStructure();
    components << red << green << blue;
    components.endStructure();
    return QVariant::fromValue(QDBusVariant(QVariant::fromValue(components)));
}

/// Stands in for a desktop that can be light or dark.
class Desktop : public QDBusVirtualObject {
public:
    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& question, const QDBusConnection& connection) override {
        const QVariantList keys = question.arguments();
        if (keys == QVariantList{appearance, colorScheme})
            connection.send(question.createReply(answer()));
        else if (keys == QVariantList{appearance, contrast})
            connection.send(question.createReply(QVariant::fromValue(QDBusVariant(wantsContrast ? 1U : 0U))));
        else if (keys == QVariantList{appearance, accentColor})
            answerWithAccent(question, connection);
        else
            connection.send(question.createErrorReply(QDBusError::UnknownMethod, "unknown"));
        return true;
    }

    void change(bool dark, const QDBusConnection& connection) {
        isDark = dark;
        auto signal = QDBusMessage::createSignal(portal, "org.freedesktop.portal.Settings", "SettingChanged");
        signal << appearance << colorScheme << answer();
        connection.send(signal);
    }

    std::atomic<bool> isDark = true;
    std::atomic<bool> wantsContrast = false;
    /// Above 1 says that there is no accent; without a number the desktop keeps silent.
    std::atomic<double> accentRed = 2;

private:
    void answerWithAccent(const QDBusMessage& question, const QDBusConnection& connection) const {
        if (!std::isnan(accentRed))
            connection.send(question.createReply(rgb(accentRed, 0.5, 0)));
    }

    QVariant answer() const { return QVariant::fromValue(QDBusVariant(isDark ? 1U : 2U)); }
};

QColor base() {
    return QApplication::palette().color(QPalette::Base);
}

QColor accent() {
    return QApplication::palette().color(QPalette::Highlight);
}

} // namespace

TEST(ThemeTest, FollowsTheDesktopLiveAndLeavesItItsOwnColours) {
    const QPalette before = QApplication::palette();
    const PrivateBus bus;
    ASSERT_FALSE(PrivateBus::address().isEmpty());

    // The program waits for the answer, so the desktop lives in another thread.
    QThread thread;
    thread.start();
    Desktop desktop;
    desktop.moveToThread(&thread);
    const QString name = "desktop";
    auto connection = QDBusConnection::connectToBus(QString::fromLatin1(PrivateBus::address()), name);
    ASSERT_TRUE(connection.registerVirtualObject(portal, &desktop));
    ASSERT_TRUE(connection.registerService("org.freedesktop.portal.Desktop"));

    {
        const Theme theme;
        EXPECT_LT(base().lightness(), 128);
        for (const bool dark : {false, true}) {
            desktop.change(dark, connection);
            EXPECT_TRUE(waitUntil([&] { return (base().lightness() < 128) == dark; })) << dark;
        }
        const QColor ownAccent = accent();
        desktop.accentRed = 1;
        desktop.change(true, connection);
        EXPECT_TRUE(waitUntil([&] { return accent() != ownAccent; }));
        // A desktop that keeps silent does not hold up the program for as long as D-Bus would wait.
        desktop.accentRed = std::numeric_limits<double>::quiet_NaN();
        desktop.wantsContrast = true;
        const QDeadlineTimer deadline(std::chrono::seconds(10));
        desktop.change(true, connection);
        EXPECT_TRUE(waitUntil([] { return base() == QColor(Qt::black); }));
        EXPECT_FALSE(deadline.hasExpired());
    }

    QDBusConnection::disconnectFromBus(name);
    thread.quit();
    thread.wait();

    QPalette ofTheDesktop = before;
    ofTheDesktop.setColor(QPalette::Base, QColor(0xfdf6e3));
    QApplication::setPalette(ofTheDesktop);
    const Theme theme;
    EXPECT_EQ(base(), QColor(0xfdf6e3));
    EXPECT_NE(qobject_cast<Style*>(QApplication::style()), nullptr);
    QApplication::setPalette(before);
}
