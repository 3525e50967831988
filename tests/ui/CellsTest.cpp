#include "support/LogCapture.h"
#include "support/Waiting.h"
#include "ui/table/BoolDot.h"
#include "ui/table/CellValue.h"
#include "ui/table/ProgressBar.h"
#include "ui/table/StarDelegate.h"
#include "ui/table/StarEditor.h"
#include "ui/table/StarRating.h"
#include "ui/widgets/AccentColor.h"

#include <QApplication>
#include <QDateTime>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <functional>

using Stemhaven::Format;

namespace {

constexpr QRgb background = 0xFFFFFFFF;

/// What painting left of a picture of its own.
struct Painted {
    Painted(QSize size, const std::function<void(QPainter&)>& paint) : image(size, QImage::Format_RGB32) {
        image.fill(background);
        QPainter painter(&image);
        paint(painter);
    }

    /// The smallest rectangle around everything painted.
    QRect bounds() const {
        QRect found;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != background)
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    }

    int pixels(const QRect& area) const {
        int count = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                count += image.pixel(x, y) != background;
        }
        return count;
    }

    QImage image;
};

Painted paintStars(int stars, StarRating::EditMode mode, const QRect& rect = {0, 0, 200, 40}) {
    return {{rect.right() + 1, rect.bottom() + 1}, [&](QPainter& painter) {
                StarRating(stars, 5).paint(&painter, rect, QPalette(), mode, false);
            }};
}

/// An editor of 140 x 40 pixels that has painted once: the stars lie from 20 to 120.
struct ShownEditor : StarEditor {
    ShownEditor() {
        resize(140, 40);
        setStarRating(StarRating(2, 5));
        grab();
    }
};

} // namespace

TEST(CellValueTest, ConvertsByFormat) {
    const LogCapture log;
    const QModelIndex place;
    const auto date = [](qint64 seconds, const char* format) {
        return QLocale().toString(QDateTime::fromSecsSinceEpoch(seconds), QString::fromLatin1(format));
    };
    EXPECT_EQ(cellValue(1.5, Format::Text, place), QVariant(1.5));
    EXPECT_EQ(cellValue(0, Format::DateTime, place).toString(), date(0, "MMM d, yyyy h:mm A"));
    EXPECT_EQ(cellValue(1'700'000'000LL, Format::Date, place).toString(), date(1'700'000'000, "MMM d, yyyy"));
    EXPECT_FALSE(cellValue({}, Format::DateTime, place).isValid());

    EXPECT_TRUE(cellValue(7, Format::Boolean, place).value<BoolDot>().value());
    EXPECT_FALSE(cellValue(0, Format::Boolean, place).value<BoolDot>().value());
    EXPECT_FALSE(cellValue({}, Format::Boolean, place).value<BoolDot>().value());
    EXPECT_FLOAT_EQ(cellValue(0.25, Format::Progress, place).value<ProgressBar>().progress(), 0.25F);
    EXPECT_FLOAT_EQ(cellValue({}, Format::Progress, place).value<ProgressBar>().progress(), 0);
    EXPECT_EQ(cellValue(4, Format::StarRating, place).value<StarRating>().starCount(), 4);
    EXPECT_TRUE(cellValue({}, Format::StarRating, place).canConvert<StarRating>());
    EXPECT_EQ(log.messages(), QStringList());
}

TEST(CellValueTest, LogsWhatDoesNotConvert) {
    QStandardItemModel model(3, 4);
    const QModelIndex place = model.index(2, 3);
    const QString text = QStringLiteral("soon");

    struct Case {
        Format format;
        QVariant expected;
        const char* message;
    };

    const Case cases[] = {
        {Format::DateTime, {}, "Could not convert column to datetime at index row: 2 column: 3"},
        {Format::Date, {}, "Could not convert column to date at index row: 2 column: 3"},
        {Format::Boolean, text, "Could not convert column to checkbox at index row: 2  column: 3"},
        {Format::Progress, text, "Could not convert column to progress bar at index row: 2  column: 3"},
        {Format::StarRating, text, "Could not convert column to star rating at index row: 2  column: 3"}};
    for (const Case& each : cases) {
        const LogCapture log;
        EXPECT_EQ(cellValue(text, each.format, place), each.expected) << each.message;
        EXPECT_EQ(log.messages(), QStringList(QStringLiteral("W: ") + QLatin1String(each.message)));
    }
}

TEST(CellValueTest, ScreenReadersGetText) {
    registerCellTexts();
    EXPECT_EQ(QVariant::fromValue(ProgressBar(0.5F)).toString(), QStringLiteral("50%"));
    EXPECT_EQ(QVariant::fromValue(StarRating(3, 5)).toString(), QStringLiteral("3 of 5 stars"));
    EXPECT_EQ(QVariant::fromValue(BoolDot(true)).toString(), QStringLiteral("Yes"));
    EXPECT_EQ(QVariant::fromValue(BoolDot(false)).toString(), QString());
}

TEST(CellPaintingTest, BarFillsItsShareOfTheCell) {
    struct Case {
        float progress = 0;
        QRect expected;
    };

    const QRect cell(30, 10, 200, 50);
    for (const auto& [progress, expected] :
         {Case{0.5F, {30, 25, 100, 20}}, Case{1.0F, {30, 25, 200, 20}}, Case{7.0F, {30, 25, 200, 20}},
          Case{0.0F, {}}, Case{-1.0F, {}}}) {
        const Painted painted({260, 70}, [&, share = progress](QPainter& painter) {
            ProgressBar(share).paint(&painter, QPalette(), cell, false);
        });
        EXPECT_EQ(painted.bounds(), expected) << progress;
    }
}

TEST(CellPaintingTest, DotStandsLeftOfTheMiddle) {
    for (const bool value : {true, false}) {
        const Painted painted({80, 40}, [&](QPainter& painter) {
            BoolDot(value).paint(&painter, QPalette(), {0, 0, 80, 40}, false);
        });
        EXPECT_EQ(painted.bounds(), value ? QRect(30, 15, 10, 10) : QRect());
    }
}

TEST(CellPaintingTest, StarsAreCentredAndNeverMoreThanFive) {
    constexpr auto readOnly = StarRating::EditMode::ReadOnly;
    const QRect places[] = {{50, 10, 20, 20}, {70, 10, 20, 20}, {130, 10, 20, 20}};
    const Painted two = paintStars(2, readOnly);
    EXPECT_GT(two.pixels(places[0]), 60);
    EXPECT_GT(two.pixels(places[1]), 60);
    EXPECT_EQ(two.pixels(places[2]), 0);
    EXPECT_TRUE(QRect(50, 10, 40, 20).contains(two.bounds()));
    EXPECT_EQ(paintStars(9, readOnly).image, paintStars(5, readOnly).image);

    const Painted editable = paintStars(2, StarRating::EditMode::Editable);
    EXPECT_GT(editable.pixels(places[2]), 0);
    EXPECT_LT(editable.pixels(places[2]), 20);
}

TEST(CellPaintingTest, SelectionTakesTheColourOfItsText) {
    QPalette palette;
    palette.setColor(QPalette::Active, QPalette::HighlightedText, Qt::green);
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, Qt::red);
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), QVariant::fromValue(ProgressBar(1.0F)), Qt::DisplayRole);

    const auto middle = [&](QStyle::State state) {
        const Painted painted({40, 40}, [&](QPainter& painter) {
            QStyleOptionViewItem option;
            option.rect = {0, 0, 40, 40};
            option.state = state;
            option.palette = palette;
            StarDelegate().paint(&painter, option, model.index(0, 0));
        });
        return painted.image.pixelColor(20, 20);
    };
    EXPECT_EQ(middle(QStyle::State_Enabled), getAccentColor());
    EXPECT_EQ(
        middle(QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Selected), QColor(Qt::green));
    EXPECT_EQ(middle(QStyle::State_Enabled | QStyle::State_Selected), QColor(Qt::red));
}

TEST(StarEditorTest, FindsTheStarUnderThePointer) {
    const ShownEditor editor;

    struct Case {
        int x;
        int star;
    };

    for (const auto& [x, star] :
         {Case{20, 1}, Case{39, 1}, Case{40, 2}, Case{119, 5}, Case{120, -1}, Case{0, -1}, Case{1, 1}})
        EXPECT_EQ(editor.starAtPosition(x), star) << x;
}

TEST(StarEditorTest, FollowsThePointerAndKeepsWhatIsReleased) {
    ShownEditor editor;
    editor.show();
    QSignalSpy finished(&editor, &StarEditor::editingFinished);

    QTest::mouseMove(&editor, {90, 20});
    EXPECT_TRUE(waitUntil([&] { return editor.starRating().starCount() == 4; }));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&editor, &leave);
    EXPECT_EQ(editor.starRating().starCount(), 2);
    EXPECT_EQ(finished.count(), 0);

    editor.grab();
    QTest::mouseMove(&editor, {50, 20});
    QTest::mouseMove(&editor, {115, 20});
    EXPECT_TRUE(waitUntil([&] { return editor.starRating().starCount() == 5; }));
    QTest::mouseRelease(&editor, Qt::LeftButton, {}, {115, 20});
    QApplication::sendEvent(&editor, &leave);
    EXPECT_EQ(editor.starRating().starCount(), 5);
    EXPECT_EQ(finished.count(), 1);
}

TEST(StarDelegateTest, EditsRatingsWithStars) {
    QStandardItemModel model(1, 1);
    const QModelIndex cell = model.index(0, 0);
    model.setData(cell, QVariant::fromValue(StarRating(2, 5)));
    StarDelegate delegate;
    QWidget parent;
    auto* editor = qobject_cast<StarEditor*>(delegate.createEditor(&parent, {}, cell));
    ASSERT_NE(editor, nullptr);
    delegate.setEditorData(editor, cell);
    EXPECT_EQ(editor->starRating().starCount(), 2);

    QSignalSpy committed(&delegate, &StarDelegate::commitData);
    QSignalSpy closed(&delegate, &StarDelegate::closeEditor);
    editor->setStarRating(StarRating(4, 5));
    emit editor->editingFinished();
    EXPECT_EQ(committed.count(), 1);
    EXPECT_EQ(closed.count(), 1);
    delegate.setModelData(editor, &model, cell);
    EXPECT_EQ(cell.data().value<StarRating>().starCount(), 4);
}

TEST(AccentColorTest, FollowsThePaletteAndWarnsOnce) {
    const LogCapture log;
    const QPalette before = QApplication::palette();
    for (const QColor& color : {QColor(Qt::magenta), QColor(Qt::cyan)}) {
        QPalette palette = before;
        palette.setColor(QPalette::Highlight, color);
        QApplication::setPalette(palette);
        EXPECT_EQ(getAccentColor(), color);
    }
    QApplication::setPalette(before);
    EXPECT_LE(log.count(QStringLiteral("W: Could not convert controlAccentColor")), 1);
}
