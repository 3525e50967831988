#include "ui/widgets/Style.h"

#include "ui/table/SearchField.h"
#include "ui/widgets/Splitter.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QSlider>
#include <QStyleOption>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <array>

TEST(StyleTest, AClickInASliderMovesItThereAsDraggingDoes) {
    Style style;
    QSlider slider(Qt::Horizontal);
    slider.setStyle(&style);
    slider.setRange(0, 100);
    slider.resize(220, 24);
    slider.show();
    QSignalSpy released(&slider, &QSlider::sliderReleased);
    QTest::mouseClick(&slider, Qt::LeftButton, {}, {160, 12});
    EXPECT_NEAR(slider.value(), 75, 1);
    EXPECT_EQ(released.count(), 1);
    for (const int end : {0, 219}) {
        QTest::mouseClick(&slider, Qt::LeftButton, {}, {end, 12});
        EXPECT_EQ(slider.value(), end == 0 ? 0 : 100);
    }
}

TEST(StyleTest, MarksAndHandlesGrowWithTheFontAndTargetsAreLargeEnough) {
    const QFont before = QGuiApplication::font();
    const Style style;
    const auto sizes = [&] {
        QStyleOptionMenuItem item;
        item.menuHasCheckableItems = true;
        item.maxIconWidth = 16;
        item.font = QGuiApplication::font();
        QStyleOptionSlider slider;
        slider.rect = {0, 0, 300, 100};
        slider.fontMetrics = QFontMetrics(item.font);
        const QRect handle = style.subControlRect(QStyle::CC_Slider, &slider, QStyle::SC_SliderHandle);
        return std::array{
            style.sizeFromContents(QStyle::CT_MenuItem, &item, {}).width(), handle.height(),
            style.pixelMetric(QStyle::PM_SliderThickness), style.pixelMetric(QStyle::PM_IndicatorWidth),
            style.pixelMetric(QStyle::PM_SmallIconSize)};
    };
    const auto small = sizes();
    QFont large = before;
    large.setPixelSize(40);
    QGuiApplication::setFont(large);
    const auto grown = sizes();
    QGuiApplication::setFont(before);
    for (std::size_t part = 0; part < small.size(); ++part)
        EXPECT_GE(grown[part], small[part] + 20) << part;

    constexpr int target = 24;
    EXPECT_GE(style.pixelMetric(QStyle::PM_ScrollBarExtent), target);
    Splitter splitter;
    splitter.setStyle(new Style);
    splitter.style()->setParent(&splitter);
    splitter.addWidget(new QWidget);
    splitter.addWidget(new QWidget);
    splitter.resize(400, 100);
    splitter.show();
    EXPECT_EQ(splitter.handle(1)->width(), target);
    EXPECT_LE(splitter.handleWidth(), 8);
    SearchField field;
    field.setStyle(splitter.style());
    field.setText("term");
    field.show();
    const QSize button = field.findChild<QAbstractButton*>()->size();
    EXPECT_EQ(button.expandedTo({target, target}), button);
}
