#include "ui/widgets/Icons.h"

#include "ui/widgets/FontIcons.h"
#include "ui/widgets/ToolButton.h"
#include "ui/widgets/ZFontIcon.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

#include <set>

namespace {

const QString systemFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
const QString iconFont = QStringLiteral(ICON_FONT);
constexpr char32_t minus = U'\u2212';

/// The font goes with each test.
class IconsTest : public testing::Test {
protected:
    void TearDown() override { ZFontIcon::addFont("/nowhere.ttf"); }
};

QImage drawn(const QIcon& icon, const QSize& size, double scale) {
    return icon.pixmap(size, scale).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// How many pixels have ink.
int inkedPixels(const QImage& image) {
    int found = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            found += qAlpha(image.pixel(x, y)) > 0;
    }
    return found;
}

} // namespace

TEST_F(IconsTest, GlyphsOfAFontFillTheirSizeAtEveryScale) {
    EXPECT_FALSE(ZFontIcon::addFont("/nowhere.ttf"));
    EXPECT_TRUE(ZFontIcon::icon(minus).isNull());
    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    EXPECT_FALSE(ZFontIcon::icon(U'\U0001D538').isNull()) << "beyond the basic plane";
    EXPECT_TRUE(ZFontIcon::icon(0xEEEE).isNull());

    const QIcon icon = ZFontIcon::icon(minus);
    for (const double scale : {1.0, 1.25, 3.0}) {
        const QImage image = drawn(icon, {20, 20}, scale);
        EXPECT_EQ(image.width(), qRound(20 * scale));
        EXPECT_GT(inkedPixels(image), image.width() / 3) << scale;
    }
}

TEST_F(IconsTest, TheProgramsIconsAreInItsFont) {
    if (!QFile::exists(iconFont)) {
        registerFonts();
        EXPECT_TRUE(icon(Glyph::Add).isNull());
        return;
    }
    ASSERT_TRUE(ZFontIcon::addFont(iconFont));
    std::set<QByteArray> pictures;
    using enum Glyph;
    for (const Glyph glyph :
         {AllProjects,
          LastSearch,
          SavedSearch,
          Collection,
          Genre,
          Tag,
          LyricsStatus,
          ArrangementStatus,
          RecordingStatus,
          MixMasterStatus,
          Add,
          Remove,
          Search,
          Open,
          Release,
          Reveal,
          PackageContents,
          ProjectPicture,
          SidebarToggle,
          DetailsToggle,
          Collapse,
          ScrollToTop,
          Undo,
          Redo,
          Delete,
          Ignore,
          Settings,
          Recover,
          Backup,
          ImportBackup}) {
        const QImage image = drawn(icon(glyph), {32, 32}, 1.0);
        EXPECT_GT(inkedPixels(image), 20) << int(glyph);
        const QByteArray bits(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
        EXPECT_TRUE(pictures.insert(bits).second) << int(glyph) << " shares its picture";
    }
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
