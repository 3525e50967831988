#include "ui/widgets/Style.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QStyleOption>
#include <QTreeWidget>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

/// Gives widgets the style without making it the application's.
template <typename Widget>
std::unique_ptr<Widget> styled(Style& style) {
    auto widget = std::make_unique<Widget>();
    widget->setStyle(&style);
    return widget;
}

} // namespace

TEST(StyleTest, ControlsInARowHaveOneHeight) {
    Style style;
    EXPECT_EQ(styled<QPushButton>(style)->sizeHint().height(), 32);
    EXPECT_EQ(styled<QComboBox>(style)->sizeHint().height(), 32);
    EXPECT_EQ(styled<QLineEdit>(style)->sizeHint().height(), 32);
}

TEST(StyleTest, AComboBoxHasRoomForItsLongestEntry) {
    Style style;
    const auto box = styled<QComboBox>(style);
    box->addItems({QStringLiteral("Done"), QStringLiteral("A status with a long name")});
    QStyleOptionComboBox option;
    option.initFrom(box.get());
    option.rect = QRect(QPoint(), box->sizeHint());
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        option.direction = direction;
        const QRect text =
            style.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box.get());
        const QRect arrow =
            style.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, box.get());
        EXPECT_GE(text.width(), box->fontMetrics().horizontalAdvance(box->itemText(1)));
        EXPECT_FALSE(text.intersects(arrow));
        EXPECT_TRUE(option.rect.contains(text | arrow));
    }
}

TEST(StyleTest, AMenuHasRoomForTextsAndShortcuts) {
    Style style;
    const auto menu = styled<QMenu>(style);
    const QString text = QStringLiteral("A long name of a collection");
    menu->addAction(text)->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+F12")));
    menu->addAction(QStringLiteral("x"))->setCheckable(true);
    const QFontMetrics metrics = menu->fontMetrics();
    const int texts = metrics.horizontalAdvance(text + QStringLiteral("Ctrl+Shift+F12"));
    // The margins of the row, the column of check marks, and a gap that keeps the two apart.
    EXPECT_GE(menu->sizeHint().width(), texts + 20 + 20 + 16);
    EXPECT_EQ(menu->actionGeometry(menu->actions().constFirst()).height(), 28);
}

TEST(StyleTest, AClickInASliderMovesItThereAsDraggingDoes) {
    Style style;
    const auto slider = styled<QSlider>(style);
    slider->setOrientation(Qt::Horizontal);
    slider->setRange(0, 100);
    slider->resize(220, 24);
    slider->show();
    QSignalSpy released(slider.get(), &QSlider::sliderReleased);
    QTest::mouseClick(slider.get(), Qt::LeftButton, {}, {160, 12});
    EXPECT_NEAR(slider->value(), 75, 1);
    EXPECT_EQ(released.count(), 1);
    for (const int end : {0, 219}) {
        QTest::mouseClick(slider.get(), Qt::LeftButton, {}, {end, 12});
        EXPECT_EQ(slider->value(), end == 0 ? 0 : 100);
    }
}

TEST(StyleTest, TheGroundOfATreesRowGoesFromEdgeToEdge) {
    Style style;
    for (const int columns : {1, 2}) {
        const auto tree = styled<QTreeWidget>(style);
        tree->setColumnCount(columns);
        tree->setColumnWidth(0, 120);
        auto* parent = new QTreeWidgetItem(tree.get(), {QStringLiteral("Genres"), QStringLiteral("2")});
        auto* child = new QTreeWidgetItem(parent, {QStringLiteral("Ambient"), QStringLiteral("1")});
        parent->setExpanded(true);
        tree->setHeaderHidden(true);
        tree->setCurrentItem(child);
        tree->resize(300, 200);
        tree->show();
        const auto colorAt = [&](QTreeWidgetItem* item, int x) {
            return tree->viewport()->grab().toImage().pixelColor(
                x, tree->visualItemRect(item).center().y() + 8);
        };
        const int farRight = tree->viewport()->width() - 8;
        const QColor base = tree->palette().color(QPalette::Base);
        const QColor selected = colorAt(child, 8);
        EXPECT_EQ(tree->visualItemRect(child).height(), 28);
        EXPECT_NE(selected, base);
        EXPECT_EQ(colorAt(child, farRight), selected);
        EXPECT_EQ(colorAt(child, 115), selected);
        EXPECT_EQ(colorAt(parent, 8), base);

        for (auto* item : {parent, child}) {
            const QPointF mouse = tree->visualItemRect(item).center();
            QHoverEvent hover(QEvent::HoverMove, mouse, mouse, mouse);
            QApplication::sendEvent(tree->viewport(), &hover);
            const QColor hovered = colorAt(item, 8);
            EXPECT_EQ(hovered == base, false);
            EXPECT_EQ(hovered == selected, item == child);
            EXPECT_EQ(colorAt(item, 115), hovered);
        }
    }
}

TEST(StyleTest, ATreesSelectionDoesNotCoverItsTexts) {
    Style style;
    const auto tree = styled<QTreeWidget>(style);
    tree->setColumnCount(2);
    auto* item = new QTreeWidgetItem(tree.get(), {QString(10, QChar(0x2588)), QString()});
    tree->setHeaderHidden(true);
    tree->setCurrentItem(item);
    tree->resize(400, 100);
    tree->show();
    const QRect row = tree->visualItemRect(item);
    const QImage image = tree->viewport()->grab().toImage();
    EXPECT_NE(image.pixelColor(50, row.center().y()), image.pixelColor(row.right() - 60, row.center().y()));
}

TEST(StyleTest, MessagesHaveASign) {
    Style style;
    for (const auto icon : {QMessageBox::Question, QMessageBox::Information, QMessageBox::Warning}) {
        const auto box = styled<QMessageBox>(style);
        box->setIcon(icon);
        EXPECT_FALSE(box->iconPixmap().isNull());
    }
    EXPECT_FALSE(style.standardIcon(QStyle::SP_LineEditClearButton).isNull());
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
