#include "ui/widgets/Style.h"

#include "ui/table/StarEditor.h"

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

class StyleTest : public testing::Test {
protected:
    /// A widget with the style, which is not made the application's.
    template <typename Widget>
    std::unique_ptr<Widget> styled() {
        auto widget = std::make_unique<Widget>();
        widget->setStyle(&style);
        return widget;
    }

    Style style;
};

} // namespace

TEST_F(StyleTest, ControlsInARowHaveOneHeightAndRoomForTheLongestEntry) {
    EXPECT_EQ(styled<QPushButton>()->sizeHint().height(), 32);
    EXPECT_EQ(styled<QLineEdit>()->sizeHint().height(), 32);
    EXPECT_EQ(styled<QComboBox>()->sizeHint().height(), 32);
    const auto box = styled<QComboBox>();
    box->addItems({"Done", "A status with a long name"});
    QStyleOptionComboBox option;
    option.initFrom(box.get());
    option.rect = QRect(QPoint(), box->sizeHint());
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        option.direction = direction;
        const auto part = [&](QStyle::SubControl control) {
            return style.subControlRect(QStyle::CC_ComboBox, &option, control, box.get());
        };
        const QRect text = part(QStyle::SC_ComboBoxEditField);
        const QRect arrow = part(QStyle::SC_ComboBoxArrow);
        EXPECT_GE(text.width(), box->fontMetrics().horizontalAdvance(box->itemText(1)));
        EXPECT_FALSE(text.intersects(arrow));
        EXPECT_TRUE(option.rect.contains(text | arrow));
    }
}

TEST_F(StyleTest, AMenuHasRoomForTextsAndShortcuts) {
    const auto menu = styled<QMenu>();
    const QString text = "A long name of a collection";
    menu->addAction(text)->setShortcut(QKeySequence("Ctrl+Shift+F12"));
    menu->addAction("x")->setCheckable(true);
    const int texts = menu->fontMetrics().horizontalAdvance(text + "Ctrl+Shift+F12");
    // The margins of the row, the column of check marks, and a gap that keeps the two apart.
    EXPECT_GE(menu->sizeHint().width(), texts + 20 + 20 + 16);
    EXPECT_EQ(menu->actionGeometry(menu->actions().constFirst()).height(), 28);
}

TEST_F(StyleTest, AClickInASliderMovesItThereAsDraggingDoes) {
    const auto slider = styled<QSlider>();
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

TEST_F(StyleTest, TheGroundOfATreesRowGoesFromEdgeToEdgeBelowItsText) {
    for (const int columns : {1, 2}) {
        const auto tree = styled<QTreeWidget>();
        tree->setColumnCount(columns);
        tree->setColumnWidth(0, 120);
        auto* parent = new QTreeWidgetItem(tree.get(), {"Genres", "2"});
        auto* child = new QTreeWidgetItem(parent, {QString(5, QChar(0x2588)), "1"});
        parent->setExpanded(true);
        tree->setHeaderHidden(true);
        tree->setCurrentItem(child);
        tree->resize(300, 200);
        tree->show();
        const auto colorAt = [&](QTreeWidgetItem* item, int x) {
            return tree->viewport()->grab().toImage().pixelColor(
                x, tree->visualItemRect(item).center().y() + 4);
        };
        const int farRight = tree->viewport()->width() - 8;
        const QColor base = tree->palette().color(QPalette::Base);
        const QColor selected = colorAt(child, 8);
        EXPECT_EQ(tree->visualItemRect(child).height(), 28);
        EXPECT_NE(selected, base);
        EXPECT_EQ(colorAt(child, farRight), selected);
        EXPECT_EQ(colorAt(child, 115), selected);
        EXPECT_NE(colorAt(child, 60), selected);
        EXPECT_EQ(colorAt(parent, 8), base);

        for (auto* item : {parent, child}) {
            const QPointF mouse = tree->visualItemRect(item).center();
            QHoverEvent hover(QEvent::HoverMove, mouse, mouse, mouse);
            QApplication::sendEvent(tree->viewport(), &hover);
            const QColor hovered = colorAt(item, 8);
            EXPECT_NE(hovered, base);
            EXPECT_EQ(hovered == selected, item == child);
            EXPECT_EQ(colorAt(item, 115), hovered);
        }
    }
}

TEST_F(StyleTest, MessagesHaveASignAndTheFocusARing) {
    for (const auto icon : {QMessageBox::Question, QMessageBox::Information, QMessageBox::Warning}) {
        const auto box = styled<QMessageBox>();
        box->setIcon(icon);
        EXPECT_FALSE(box->iconPixmap().isNull());
    }
    EXPECT_FALSE(style.standardIcon(QStyle::SP_LineEditClearButton).isNull());

    const auto stars = styled<StarEditor>();
    stars->show();
    QApplication::setActiveWindow(stars.get());
    stars->setFocus();
    const QImage focused = stars->grab().toImage();
    stars->clearFocus();
    EXPECT_NE(stars->grab().toImage(), focused);
}

TEST_F(StyleTest, ScrollBarPartsCoverTheBar) {
    QStyleOptionSlider option;
    option.rect = {5, 7, 12, 300};
    option.orientation = Qt::Vertical;
    option.pageStep = 100;
    for (const int maximum : {0, 50, 3'200'000, std::numeric_limits<int>::max()}) {
        option.minimum = 0;
        option.maximum = maximum;
        for (const int position : {0, maximum / 2, maximum}) {
            SCOPED_TRACE(testing::Message() << position << " of " << maximum);
            option.sliderPosition = position;
            const auto part = [&](QStyle::SubControl control) {
                return style.subControlRect(QStyle::CC_ScrollBar, &option, control);
            };
            const QRect slider = part(QStyle::SC_ScrollBarSlider);
            EXPECT_GE(slider.height(), 32);
            EXPECT_TRUE(option.rect.contains(slider));
            const int above = part(QStyle::SC_ScrollBarSubPage).height();
            const int below = part(QStyle::SC_ScrollBarAddPage).height();
            EXPECT_EQ(above + slider.height() + below, option.rect.height());
            EXPECT_EQ(slider.top() == option.rect.top(), position == 0);
            EXPECT_EQ(slider.bottom() == option.rect.bottom(), position == maximum);
        }
    }
}
