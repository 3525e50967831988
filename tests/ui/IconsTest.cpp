#include "ui/widgets/Icons.h"

#include "ui/widgets/FontIcons.h"
#include "ui/widgets/Theme.h"
#include "ui/widgets/ToolButton.h"
#include "ui/widgets/ZFontIcon.h"

#include <QApplication>
#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <vector>

namespace {

const QString systemFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
const QString iconFont = QStringLiteral(ICON_FONT);
constexpr char32_t minus = U'\u2212';
constexpr char32_t block = U'\u2588';

/// Whatever the tests did to the icons ends with each.
class IconsTest : public testing::Test {
protected:
    void TearDown() override {
        ZFontIcon::addFont("/nowhere.ttf");
        QApplication::setPalette(palette);
        updateIconFontPalette(palette);
    }

    const QPalette palette = QApplication::palette();
};

QImage drawn(const QIcon& icon, const QSize& size, double scale, QIcon::Mode mode = QIcon::Normal) {
    return icon.pixmap(size, scale, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// The colour in the middle of a glyph that fills its cell.
QColor middle(const QIcon& icon, QIcon::Mode mode = QIcon::Normal) {
    const QImage image = drawn(icon, {20, 20}, 1.0, mode);
    return image.pixelColor(image.rect().center());
}

/// How many pixels there are of each strength of ink, which begins at 0.
std::map<int, int> inkOf(const QImage& image) {
    std::map<int, int> found{{0, 0}};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++found[qAlpha(image.pixel(x, y))];
    }
    return found;
}

int inkedPixels(const QImage& image) {
    return image.width() * image.height() - inkOf(image).at(0);
}

} // namespace

TEST_F(IconsTest, GlyphsOfAFontFillTheirSizeAtEveryScaleWithoutBlur) {
    EXPECT_FALSE(ZFontIcon::addFont("/nowhere.ttf"));
    EXPECT_TRUE(ZFontIcon::icon(minus).isNull());
    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    EXPECT_FALSE(ZFontIcon::icon(U'\U0001D538').isNull()) << "beyond the basic plane";
    EXPECT_TRUE(ZFontIcon::icon(0xEEEE).isNull());

    const QIcon icon = ZFontIcon::icon(minus);
    for (const int side : {16, 20, 24, 64}) {
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            const QImage image = drawn(icon, {side, side}, scale);
            EXPECT_EQ(image.width(), qRound(side * scale));
            EXPECT_GT(inkedPixels(image), image.width() / 3) << side << " " << scale;
            // A bar drawn at once has edges of four kinds, their corners, and its own ink; blown up from
            // fewer pixels it would have more.
            EXPECT_LE(inkOf(image).size(), 10U) << side << " " << scale;
        }
    }
}

TEST_F(IconsTest, TakeTheApplicationsColoursWhenTheyAreDrawn) {
    ASSERT_TRUE(ZFontIcon::addFont(systemFont));
    const Theme theme;
    const QIcon icon = ZFontIcon::icon(block);
    for (const auto& [text, disabled, highlighted] :
         {std::tuple(Qt::red, Qt::green, Qt::blue), std::tuple(Qt::cyan, Qt::magenta, Qt::yellow)}) {
        QPalette colors;
        colors.setColor(QPalette::Text, text);
        colors.setColor(QPalette::Disabled, QPalette::Text, disabled);
        colors.setColor(QPalette::HighlightedText, highlighted);
        QApplication::setPalette(colors);
        EXPECT_EQ(middle(icon), QColor(text));
        EXPECT_EQ(middle(icon, QIcon::Active), QColor(text));
        EXPECT_EQ(middle(icon, QIcon::Disabled), QColor(disabled));
        EXPECT_EQ(middle(icon, QIcon::Selected), QColor(highlighted));
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
    const std::vector<std::vector<Glyph>> groups{
        {AllProjects, LastSearch, SavedSearch, Collection, Genre, Tag},
        {ArrangementStatus, LyricsStatus, RecordingStatus, MixMasterStatus},
        {Add, Remove, Search, Open, Release, Reveal, PackageContents, ProjectPicture},
        {SidebarToggle, DetailsToggle, Collapse, ScrollToTop, Undo, Redo, Delete, Ignore},
        {Settings, Recover, Backup, ImportBackup}};
    for (const auto& group : groups) {
        for (const Glyph glyph : group) {
            const QImage image = drawn(icon(glyph), {32, 32}, 1.0);
            EXPECT_GT(inkedPixels(image), 20) << int(glyph);
            const QByteArray bits(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
            EXPECT_TRUE(pictures.insert(bits).second) << int(glyph) << " shares its picture";
        }
    }

    // A line through the middle of a small icon is one row of full ink, not two of half.
    const QImage line = drawn(icon(Remove), {20, 20}, 1.0);
    int rows = 0;
    for (int y = 0; y < line.height(); ++y)
        rows += qAlpha(line.pixel(10, y)) > 20 ? 1 : 0;
    EXPECT_EQ(rows, 1);
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

    const Theme theme;
    EXPECT_EQ(button.sizeHint(), QSize(32, 32));
    EXPECT_EQ(withoutFont.sizeHint().height(), 32);
    const int text = withoutFont.fontMetrics().horizontalAdvance(withoutFont.text());
    EXPECT_GE(withoutFont.sizeHint().width(), text + 8);
}
