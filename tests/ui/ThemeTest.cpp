#include "ui/widgets/Theme.h"

#include "support/PrivateBus.h"
#include "support/Waiting.h"
#include "ui/widgets/Palettes.h"
#include "ui/widgets/Style.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>

using Stemhaven::ColorScheme;

namespace {

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

const QString portal = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

/// Stands in for a desktop that can be light or dark.
class Desktop : public QDBusVirtualObject {
public:
    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& question, const QDBusConnection& connection) override {
        const bool known = question.arguments() == QVariantList{appearance, colorScheme};
        connection.send(
            known ? question.createReply(QVariant::fromValue(QDBusVariant(value())))
                  : question.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("unknown")));
        return true;
    }

    void change(bool dark, const QDBusConnection& connection) {
        isDark = dark;
        auto signal = QDBusMessage::createSignal(portal, settings, QStringLiteral("SettingChanged"));
        signal << appearance << colorScheme << QVariant::fromValue(QDBusVariant(value()));
        connection.send(signal);
    }

    std::atomic<bool> isDark = true;

private:
    QVariant value() const { return QVariant::fromValue(isDark ? 1U : 2U); }
};

bool looksDark() {
    return QApplication::palette().color(QPalette::Base).lightness() < 128;
}

} // namespace

TEST(PalettesTest, TextCanBeReadOnEveryAccentColour) {
    using P = QPalette;
    constexpr double readable = 4.5;
    constexpr double readableInBold = 3.0;
    const std::optional<QColor> accents[] = {
        {},
        QColor(0x3584e4),
        QColor(0x2190a4),
        QColor(0x3a944a),
        QColor(0xc88800),
        QColor(0xed5b00),
        QColor(0xe62d42),
        QColor(0xd56199),
        QColor(0x9141ac),
        QColor(0x6f8396),
        QColor(0xf9f06b)};
    for (const auto scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        for (const auto& accent : accents) {
            const QPalette palette = designedPalette(scheme, accent);
            const auto between = [&](P::ColorGroup group, P::ColorRole text, P::ColorRole ground) {
                return contrast(palette.color(group, text), palette.color(group, ground));
            };
            EXPECT_GE(between(P::Active, P::Text, P::Base), readable);
            EXPECT_GE(between(P::Active, P::PlaceholderText, P::Base), readable);
            EXPECT_GE(between(P::Active, P::PlaceholderText, P::Window), readable);
            EXPECT_GE(between(P::Inactive, P::HighlightedText, P::Highlight), readable);
            EXPECT_GE(between(P::Active, P::HighlightedText, P::Highlight), readableInBold)
                << qPrintable(palette.highlight().color().name());
        }
    }
}

TEST(ThemeTest, LeavesADesktopItsOwnColours) {
    const QPalette before = QApplication::palette();
    QPalette ofTheDesktop = before;
    ofTheDesktop.setColor(QPalette::Base, QColor(0xfdf6e3));
    QApplication::setPalette(ofTheDesktop);
    const Theme theme;
    EXPECT_EQ(QApplication::palette().color(QPalette::Base), QColor(0xfdf6e3));
    EXPECT_NE(qobject_cast<Style*>(QApplication::style()), nullptr);
    QApplication::setPalette(before);
}

TEST(ThemeTest, FollowsTheDesktopLive) {
    const QPalette before = QApplication::palette();
    const PrivateBus bus;
    ASSERT_FALSE(PrivateBus::address().isEmpty());

    // The program waits for the answer, so the desktop lives in another thread.
    QThread thread;
    thread.start();
    Desktop desktop;
    desktop.moveToThread(&thread);
    const QString name = QStringLiteral("desktop");
    auto connection = QDBusConnection::connectToBus(QString::fromLatin1(PrivateBus::address()), name);
    ASSERT_TRUE(connection.registerVirtualObject(portal, &desktop));
    ASSERT_TRUE(connection.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));

    {
        const Theme theme;
        EXPECT_TRUE(looksDark());
        for (const bool dark : {false, true}) {
            desktop.change(dark, connection);
            EXPECT_TRUE(waitUntil([&] { return looksDark() == dark; })) << dark;
        }
    }

    QDBusConnection::disconnectFromBus(name);
    thread.quit();
    thread.wait();
    QApplication::setPalette(before);
}
