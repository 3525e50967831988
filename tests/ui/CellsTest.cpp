#include "support/LogCapture.h"
#include "support/Waiting.h"
#include "ui/table/BoolDot.h"
#include "ui/table/CellValue.h"
#include "ui/table/ProgressBar.h"
#include "ui/table/StarDelegate.h"
#include "ui/table/StarEditor.h"
#include "ui/table/StarRating.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/ToolButton.h"

#include <QApplication>
#include <QBitmap>
#include <QDateTime>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <functional>
#include <numeric>

using Stemhaven::Format;

namespace {

constexpr QRgb background = 0xFFFFFFFF;

int areaOf(const QRegion& region) {
    return std::accumulate(region.begin(), region.end(), 0, [](int area, const QRect& part) {
        return area + part.width() * part.height();
    });
}

/// What painting left of a picture of its own.
struct Painted {
    Painted(QSize size, const std::function<void(QPainter&)>& paint) : image(size, QImage::Format_RGB32) {
        image.fill(background);
        QPainter painter(&image);
        paint(painter);
    }

    /// Everything painted.
    QRegion ink() const { return QBitmap::fromImage(image.createMaskFromColor(background, Qt::MaskInColor)); }

    int pixels(const QRect& area) const { return areaOf(ink() & area); }

    QImage image;
};

Painted paintStars(int stars, StarRating::EditMode mode) {
    return {{200, 40}, [&](QPainter& painter) {
                StarRating(stars, 5).paint(&painter, {0, 0, 200, 40}, QPalette(), mode, false);
            }};
}

} // namespace

TEST(CellValueTest, ConvertsByFormat) {
    const QModelIndex place;
    const auto date = [](qint64 seconds, const char* format) {
        return QLocale().toString(QDateTime::fromSecsSinceEpoch(seconds), format);
    };
    EXPECT_EQ(cellValue(0, Format::DateTime, place).toString(), date(0, "MMM d, yyyy h:mm A"));
    EXPECT_EQ(cellValue(1'700'000'000LL, Format::Date, place).toString(), date(1'700'000'000, "MMM d, yyyy"));
    EXPECT_FALSE(cellValue({}, Format::DateTime, place).isValid());

    EXPECT_TRUE(cellValue(7, Format::Boolean, place).value<BoolDot>().value());
    EXPECT_FALSE(cellValue(0, Format::Boolean, place).value<BoolDot>().value());
    EXPECT_FLOAT_EQ(cellValue(0.25, Format::Progress, place).value<ProgressBar>().progress(), 0.25F);
    EXPECT_FLOAT_EQ(cellValue({}, Format::Progress, place).value<ProgressBar>().progress(), 0);
    EXPECT_EQ(cellValue(4, Format::StarRating, place).value<StarRating>().starCount(), 4);
    EXPECT_TRUE(cellValue({}, Format::StarRating, place).canConvert<StarRating>());

    const LogCapture log;
    EXPECT_EQ(cellValue("soon", Format::Progress, place), "soon");
    EXPECT_EQ(log.count("W: Could not convert column to progress bar at index row: -1  column: -1"), 1);

    // For screen readers.
    registerCellTexts();
    EXPECT_EQ(QVariant::fromValue(ProgressBar(0.5F)).toString(), "50%");
    EXPECT_EQ(QVariant::fromValue(StarRating(3, 5)).toString(), "3 of 5 stars");
    EXPECT_EQ(QVariant::fromValue(BoolDot(true)).toString(), "Yes");
    EXPECT_EQ(QVariant::fromValue(BoolDot(false)).toString(), "No");
    EXPECT_EQ(QVariant::fromValue(StarRating(0, 5)).toString(), "Not rated");
}

TEST(CellPaintingTest, BarFillsItsShareAndDotStandsLeftOfTheMiddle) {
    const auto boundsOf = [](auto value, const QRect& cell) {
        const auto paint = [&](QPainter& painter) {
            value.paint(&painter, QPalette(), cell, false);
        };
        return Painted({260, 70}, paint).ink().boundingRect();
    };
    const std::pair<float, QRect> bars[] = {
        {0.5F, {30, 25, 100, 20}}, {7.0F, {30, 25, 200, 20}}, {0.0F, {}}, {-1.0F, {}}};
    for (const auto& [progress, expected] : bars)
        EXPECT_EQ(boundsOf(ProgressBar(progress), {30, 10, 200, 50}), expected) << progress;
    EXPECT_EQ(boundsOf(BoolDot(true), {0, 0, 80, 40}), QRect(30, 15, 10, 10));
    EXPECT_EQ(boundsOf(BoolDot(false), {0, 0, 80, 40}), QRect());
}

TEST(CellPaintingTest, StarsAreCentredAndNeverMoreThanFive) {
    constexpr auto readOnly = StarRating::EditMode::ReadOnly;
    const QRect places[] = {{50, 10, 20, 20}, {70, 10, 20, 20}, {130, 10, 20, 20}};
    const Painted two = paintStars(2, readOnly);
    EXPECT_GT(two.pixels(places[0]), 60);
    EXPECT_GT(two.pixels(places[1]), 60);
    EXPECT_EQ(two.pixels(places[2]), 0);
    EXPECT_TRUE(QRect(50, 10, 40, 20).contains(two.ink().boundingRect()));
    EXPECT_EQ(paintStars(9, readOnly).image, paintStars(5, readOnly).image);

    const Painted editable = paintStars(2, StarRating::EditMode::Editable);
    EXPECT_GT(editable.pixels(places[2]), 0);
    EXPECT_LT(editable.pixels(places[2]), 30);
}

TEST(CellPaintingTest, IsMirroredWhereOneReadsFromRightToLeft) {
    const Painted bar({200, 40}, [](QPainter& painter) {
        painter.setLayoutDirection(Qt::RightToLeft);
        ProgressBar(0.25F).paint(&painter, QPalette(), {0, 0, 200, 40}, false);
    });
    EXPECT_EQ(bar.ink().boundingRect(), QRect(150, 12, 50, 16));
    StarEditor editor;
    editor.setLayoutDirection(Qt::RightToLeft);
    editor.resize(120, 24);
    editor.grab();
    EXPECT_EQ(editor.starAtPosition(119), 1);
    EXPECT_EQ(editor.starAtPosition(1), 5);
    QTest::keyClick(&editor, Qt::Key_Left);
    EXPECT_EQ(editor.starRating().starCount(), 1);
}

TEST(CellPaintingTest, TextsWithAnOrderOfTheirOwnKeepIt) {
    const auto inkOf = [](const QString& text, TextOrder order, Qt::LayoutDirection direction) {
        ElidedLabel label;
        QFont font = label.font();
        font.setPixelSize(40);
        label.setFont(font);
        label.setText(text);
        label.setTextOrder(order);
        label.setLayoutDirection(direction);
        label.resize(600, 60);
        const QRegion ink =
            Painted(label.size(), [&](QPainter& painter) { label.render(&painter, {}, {}, {}); }).ink();
        return ink.translated(-ink.boundingRect().topLeft());
    };
    const std::pair<QString, TextOrder> cases[] = {
        {"100# (mix)", TextOrder::OfItsOwn},
        {"/music/songs", TextOrder::LeftToRight},
        {"175 BPM (live)", TextOrder::LeftToRight}};
    for (const auto& [text, order] : cases) {
        const QRegion expected = inkOf(text, order, Qt::LeftToRight);
        const QRegion unordered = inkOf(text, TextOrder::OfTheWindow, Qt::RightToLeft);
        // Glyphs that are not at the same place by a fraction of a pixel differ a little.
        EXPECT_LT(3 * areaOf(inkOf(text, order, Qt::RightToLeft) ^ expected), areaOf(unordered ^ expected))
            << qPrintable(text);
    }
}

TEST(StarEditorTest, StarsGrowWithTheFontAndAreLargeEnoughToBeClicked) {
    const QFont before = QApplication::font();
    EXPECT_GE(StarEditor().sizeHint().height(), 24);
    QFont large = before;
    large.setPixelSize(48);
    QApplication::setFont(large);
    EXPECT_GE(StarRating(3, 5).sizeHint().height(), 48);
    EXPECT_GE(ToolButton(Glyph::Add, "Add").iconSize().height(), 48);
    QApplication::setFont(before);
}

TEST(StarEditorTest, FollowsThePointerAndWritesWhatIsReleased) {
    QStandardItemModel model(1, 1);
    const QModelIndex cell = model.index(0, 0);
    model.setData(cell, QVariant::fromValue(StarRating(2, 5)));
    StarDelegate delegate;
    QSignalSpy committed(&delegate, &StarDelegate::commitData);
    QSignalSpy closed(&delegate, &StarDelegate::closeEditor);
    QWidget parent;
    auto* editor = qobject_cast<StarEditor*>(delegate.createEditor(&parent, {}, cell));
    ASSERT_NE(editor, nullptr);
    delegate.setEditorData(editor, cell);

    // The stars, of 24 pixels each, lie from 10 to 130 once it has painted.
    editor->resize(140, 40);
    editor->grab();
    using XAndStar = std::pair<int, int>;
    for (const auto& [x, star] : {XAndStar{-15, -1}, {1, 1}, {10, 1}, {33, 1}, {34, 2}, {129, 5}, {130, -1}})
        EXPECT_EQ(editor->starAtPosition(x), star) << x;

    parent.show();
    QTest::mouseMove(editor, {90, 20});
    EXPECT_TRUE(waitUntil([&] { return editor->starRating().starCount() == 4; }));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(editor, &leave);
    EXPECT_EQ(editor->starRating().starCount(), 2);
    EXPECT_EQ(committed.count(), 0);

    editor->grab();
    QTest::mouseMove(editor, {50, 20});
    QTest::mouseMove(editor, {115, 20});
    EXPECT_TRUE(waitUntil([&] { return editor->starRating().starCount() == 5; }));
    QTest::mouseRelease(editor, Qt::LeftButton, {}, {115, 20});
    QApplication::sendEvent(editor, &leave);
    EXPECT_EQ(committed.count(), 1);
    EXPECT_EQ(closed.count(), 1);
    delegate.setModelData(editor, &model, cell);
    EXPECT_EQ(cell.data().value<StarRating>().starCount(), 5);
}
