#include "ui/widgets/Palettes.h"

#include "ui/widgets/Contrast.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

using Stemhaven::ColorScheme;

TEST(PalettesTest, TextCanBeReadOnEveryAccentColour) {
    using P = QPalette;
    constexpr double readable = 4.5;
    std::vector<std::optional<QColor>> accents{{}};
    for (const char* name :
         {"#3584e4", "#2190a4", "#3a944a", "#c88800", "#ed5b00", "#e62d42", "#d56199", "#9141ac", "#6f8396",
          "#f9f06b"})
        accents.emplace_back(name);
    for (const auto scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        for (const auto& accent : accents) {
            const QPalette palette = designedPalette(scheme, accent);
            const auto between = [&](P::ColorGroup group, P::ColorRole text, P::ColorRole ground) {
                return Contrast::between(palette.color(group, text), palette.color(group, ground));
            };
            EXPECT_GE(between(P::Active, P::Text, P::Base), readable);
            EXPECT_GE(between(P::Active, P::PlaceholderText, P::Base), readable);
            EXPECT_GE(between(P::Active, P::PlaceholderText, P::Window), readable);
            EXPECT_GE(between(P::Inactive, P::HighlightedText, P::Highlight), readable);
            EXPECT_GE(between(P::Active, P::HighlightedText, P::Highlight), readable)
                << qPrintable(palette.highlight().color().name());
        }
    }
}
