#include "ui/widgets/Palettes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

using Stemhaven::ColorScheme;

namespace {

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

TEST(PalettesTest, TextCanBeReadOnEveryAccentColour) {
    using P = QPalette;
    constexpr double readable = 4.5;
    constexpr double readableInBold = 3.0;
    std::vector<std::optional<QColor>> accents{{}};
    for (const char* name :
         {"#3584e4", "#2190a4", "#3a944a", "#c88800", "#ed5b00", "#e62d42", "#d56199", "#9141ac", "#6f8396",
          "#f9f06b"})
        accents.emplace_back(name);
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
