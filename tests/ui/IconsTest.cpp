#include "ui/widgets/Icons.h"

#include "ui/widgets/FontIcons.h"
#include "ui/widgets/Theme.h"
#include "ui/widgets/ToolButton.h"
#include "ui/widgets/ZFontIcon.h"

#include <QApplication>
#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

#include <set>

namespace {

const QString systemFont = QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
const QString iconFont = QStringLiteral(ICON_FONT);
constexpr char32_t minus = U'\u2212';
constexpr char32_t block = U'\u2588';

/// Whatever the tests did to the icons ends with each.
class IconsTest : public testing::Test {
protected:
    void SetUp() override { palette = QApplication::palette(); }

    void TearDown() override {
        ZFontIcon::addFont(QStringLiteral("/nowhere.ttf"));
        QApplication::setPalette(palette);
        updateIconFontPalette(palette);
    }

    QPalette palette;
};

QImage drawn(const QIcon& icon, const QSize& size, double scale, QIcon::Mode mode = QIcon::Normal) {
    return icon.pixmap(size, scale, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// The colour in the middle of a glyph that fills its cell.
QColor middle(const QIcon& icon, QIcon::Mode mode = QIcon::Normal) {
    const QImage image = drawn(icon, {20, 20}, 1.0, mode);
    return image.pixelColor(image.rect().center());
}

/// How many different strengths of ink there are: drawn at once few, blown up from fewer pixels many.
std::size_t shades(const QImage& image) {
    std::set<int> found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            found.insert(qAlpha(image.pixel(x, y)));
    }
    return found.size();
}

int inkedPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
    }
    return count;
}

} // namespace

TEST_F(IconsTest, OnlyGlyphsOfAFontBecomeIcons) {
    EXPECT_FALSE(ZFontIcon::addFont(QStringLiteral("/nowhere.ttf")));
    EXPECT_TRUE(ZFontIcon::icon(minus).isNull());
    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    EXPECT_FALSE(ZFontIcon::icon(minus).isNull());
    EXPECT_FALSE(ZFontIcon::icon(U'\U0001D538').isNull()) << "beyond the basic plane";
    EXPECT_TRUE(ZFontIcon::icon(0xEEEE).isNull());
}

TEST_F(IconsTest, FillTheirSizeAtEveryScaleWithoutBlur) {
    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    const QIcon icon = ZFontIcon::icon(minus);
    for (const int side : {16, 20, 24, 64}) {
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            const QImage image = drawn(icon, {side, side}, scale);
            EXPECT_EQ(image.width(), qRound(side * scale));
            EXPECT_GT(inkedPixels(image), image.width() / 3) << side << " " << scale;
            // A bar has edges of four kinds, their corners, and its own ink.
            EXPECT_LE(shades(image), 10U) << side << " " << scale;
        }
    }
}

TEST_F(IconsTest, TakeTheirColoursWhenTheyAreDrawn) {
    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    const QIcon icon = ZFontIcon::icon(block);
    for (const auto& [text, disabled, highlighted] :
         {std::tuple(Qt::red, Qt::green, Qt::blue), std::tuple(Qt::cyan, Qt::magenta, Qt::yellow)}) {
        QPalette colors;
        colors.setColor(QPalette::Text, text);
        colors.setColor(QPalette::Disabled, QPalette::Text, disabled);
        colors.setColor(QPalette::HighlightedText, highlighted);
        updateIconFontPalette(colors);
        EXPECT_EQ(middle(icon), QColor(text));
        EXPECT_EQ(middle(icon, QIcon::Active), QColor(text));
        EXPECT_EQ(middle(icon, QIcon::Disabled), QColor(disabled));
        EXPECT_EQ(middle(icon, QIcon::Selected), QColor(highlighted));
    }
}

TEST_F(IconsTest, FollowTheApplicationsPaletteLive) {
    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    const Theme theme;
    const QIcon icon = ZFontIcon::icon(block);
    for (const auto color : {Qt::red, Qt::blue}) {
        QPalette colors = palette;
        colors.setColor(QPalette::Text, color);
        QApplication::setPalette(colors);
        EXPECT_EQ(middle(icon), QColor(color));
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
    const Glyph all[] = {
        Glyph::Add,
        Glyph::Remove,
        Glyph::Search,
        Glyph::Open,
        Glyph::Release,
        Glyph::Reveal,
        Glyph::PackageContents,
        Glyph::Collection,
        Glyph::Genre,
        Glyph::Tag,
        Glyph::SavedSearch,
        Glyph::LastSearch,
        Glyph::AllProjects,
        Glyph::LyricsStatus,
        Glyph::RecordingStatus,
        Glyph::ArrangementStatus,
        Glyph::SidebarToggle,
        Glyph::MixMasterStatus,
        Glyph::DetailsToggle,
        Glyph::Settings,
        Glyph::Delete,
        Glyph::Ignore,
        Glyph::Collapse,
        Glyph::Undo,
        Glyph::Redo,
        Glyph::ScrollToTop,
        Glyph::Recover,
        Glyph::Backup,
        Glyph::ImportBackup,
        Glyph::ProjectPicture};
    for (const Glyph glyph : all) {
        const QImage image = drawn(icon(glyph), {32, 32}, 1.0);
        EXPECT_GT(inkedPixels(image), 20) << static_cast<int>(glyph);
        pictures.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
    }
    EXPECT_EQ(pictures.size(), std::size(all)) << "two meanings share a picture";

    // A line through the middle of a small icon is one row of full ink, not two of half.
    const QImage line = drawn(icon(Glyph::Remove), {20, 20}, 1.0);
    int rows = 0;
    for (int y = 0; y < line.height(); ++y)
        rows += qAlpha(line.pixel(10, y)) > 20 ? 1 : 0;
    EXPECT_EQ(rows, 1);
}

TEST_F(IconsTest, AToolButtonShowsItsIconOrItsText) {
    ToolButton withoutFont(Glyph::Add, QStringLiteral("Add a filter"));
    EXPECT_EQ(withoutFont.toolButtonStyle(), Qt::ToolButtonTextOnly);

    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    const auto letter = static_cast<Glyph>(u'A');
    ToolButton button(letter, QStringLiteral("Add"));
    EXPECT_EQ(button.toolButtonStyle(), Qt::ToolButtonIconOnly);
    EXPECT_FALSE(button.icon().isNull());
    button.present(letter, QStringLiteral("Remove"));
    EXPECT_EQ(button.toolTip(), QStringLiteral("Remove"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Remove"));

    const Theme theme;
    EXPECT_EQ(button.sizeHint(), QSize(32, 32));
    EXPECT_EQ(withoutFont.sizeHint().height(), 32);
    const int text = withoutFont.fontMetrics().horizontalAdvance(withoutFont.text());
    EXPECT_GE(withoutFont.sizeHint().width(), text + 8);
}
