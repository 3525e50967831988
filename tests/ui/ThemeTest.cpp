#include "ui/widgets/Theme.h"

#include "ui/widgets/Palettes.h"
#include "ui/widgets/Style.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionSlider>

#include <gtest/gtest.h>

#include <cmath>

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

TEST(StyleTest, ScrollBarPartsCoverTheBar) {
    Style style;
    QStyleOptionSlider option;
    option.rect = {5, 7, 12, 300};
    option.orientation = Qt::Vertical;
    option.pageStep = 100;
    for (const int maximum : {0, 50, 3'200'000, std::numeric_limits<int>::max()}) {
        option.minimum = 0;
        option.maximum = maximum;
        for (const int position : {0, maximum / 2, maximum}) {
            option.sliderPosition = position;
            const auto part = [&](QStyle::SubControl control) {
                return style.subControlRect(QStyle::CC_ScrollBar, &option, control);
            };
            const QRect slider = part(QStyle::SC_ScrollBarSlider);
            EXPECT_GE(slider.height(), 32);
            EXPECT_TRUE(option.rect.contains(slider)) << maximum << " " << position;
            EXPECT_EQ(
                part(QStyle::SC_ScrollBarSubPage).height() + slider.height() +
                    part(QStyle::SC_ScrollBarAddPage).height(),
                option.rect.height());
            const bool atTop = slider.top() == option.rect.top();
            const bool atBottom = slider.bottom() == option.rect.bottom();
            EXPECT_EQ(atTop, position == 0) << maximum << " " << position;
            EXPECT_EQ(atBottom, position == maximum) << maximum << " " << position;
        }
    }
}
