#include "ui/widgets/Icons.h"

#include "ui/widgets/ToolButton.h"
#include "ui/widgets/ZFontIcon.h"

#include <gtest/gtest.h>

namespace {

const QString systemFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr char32_t minus = U'\u2212';

/// The font goes with each test.
class IconsTest : public testing::Test {
protected:
    void TearDown() override { ZFontIcon::addFont("/nowhere.ttf"); }
};

} // namespace

TEST_F(IconsTest, OnlyWhatTheFontHoldsHasAnIcon) {
    EXPECT_FALSE(ZFontIcon::addFont("/nowhere.ttf"));
    EXPECT_TRUE(ZFontIcon::icon(minus).isNull());
    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    EXPECT_FALSE(ZFontIcon::icon(minus).isNull());
    EXPECT_FALSE(ZFontIcon::icon(U'\U0001D538').isNull()) << "beyond the basic plane";
    EXPECT_TRUE(ZFontIcon::icon(0xEEEE).isNull());
}

TEST_F(IconsTest, AToolButtonShowsItsIconOrItsText) {
    ToolButton withoutFont(Glyph::Add, "Add a filter");
    EXPECT_EQ(withoutFont.toolButtonStyle(), Qt::ToolButtonTextOnly);

    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    const auto letter = static_cast<Glyph>(u'A');
    ToolButton button(letter, "Add");
    EXPECT_EQ(button.toolButtonStyle(), Qt::ToolButtonIconOnly);
    button.present(letter, "Remove");
    EXPECT_EQ(button.toolTip(), "Remove");
    EXPECT_EQ(button.accessibleName(), "Remove");
}
