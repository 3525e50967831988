#include "ui/widgets/Style.h"

#include <QSignalSpy>
#include <QSlider>
#include <QStyleOption>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <limits>

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

TEST(StyleTest, ScrollBarPartsCoverTheBar) {
    const Style style;
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
