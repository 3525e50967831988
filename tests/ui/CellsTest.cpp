#include "support/LogCapture.h"
#include "support/Waiting.h"
#include "ui/table/BoolDot.h"
#include "ui/table/CellValue.h"
#include "ui/table/ProgressBar.h"
#include "ui/table/StarDelegate.h"
#include "ui/table/StarEditor.h"
#include "ui/table/StarRating.h"
#include "ui/widgets/ToolButton.h"

#include <QApplication>
#include <QDateTime>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QtTest/QTest>

#include <gtest/gtest.h>

using Stemhaven::Format;

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
}

TEST(StarRatingTest, MissingStarsAreOutlinesOfTheSizeOfGivenOnes) {
    const auto paint = [](int stars, StarRating::EditMode mode) {
        QImage image(120, 24, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QPalette palette(Qt::black, Qt::white);
        StarRating(stars).paint(&painter, image.rect(), palette, mode, false);
        return image;
    };
    const auto inked = [](const QImage& image) {
        QRect box;
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qGray(image.pixel(x, y)) > 230)
                    continue;
                box |= QRect(x, y, 1, 1);
                ++count;
            }
        }
        return std::pair(box, count);
    };
    for (const auto mode : {StarRating::EditMode::ReadOnly, StarRating::EditMode::Editable}) {
        const auto [fullBox, full] = inked(paint(5, mode));
        const auto [emptyBox, empty] = inked(paint(0, mode));
        EXPECT_LE(std::abs(emptyBox.width() - fullBox.width()), 4);
        EXPECT_LE(std::abs(emptyBox.height() - fullBox.height()), 3);
        EXPECT_LT(empty, full);
        EXPECT_GT(empty, full / 3);
        const int side = StarRating().sizeHint(mode).height();
        const QImage three = paint(3, mode);
        EXPECT_LT(qGray(three.pixel(60, 12)), 200);
        EXPECT_GT(qGray(three.pixel(60 + side, 12)), 250);
    }
}

TEST(StarEditorTest, IsMirroredWhereOneReadsFromRightToLeft) {
    StarEditor editor;
    editor.setLayoutDirection(Qt::RightToLeft);
    editor.resize(120, 24);
    editor.grab();
    EXPECT_EQ(editor.starAtPosition(119), 1);
    EXPECT_EQ(editor.starAtPosition(1), 5);
    QTest::keyClick(&editor, Qt::Key_Left);
    EXPECT_EQ(editor.starRating().starCount(), 1);
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
