#include "presentation/kit/DashboardScrollBarStyle.h"

#include <QScrollBar>
#include <QStyleOptionSlider>

#include <gtest/gtest.h>

TEST(DashboardScrollBarStyle, ThinWithoutArrowsAndAThumbInProportion)
{
    DashboardScrollBarStyle style;
    QScrollBar bar(Qt::Vertical);
    bar.setStyle(&style);
    bar.setRange(0, 300);
    bar.setPageStep(100);
    bar.resize(bar.sizeHint().width(), 400);
    EXPECT_EQ(bar.width(), DashboardScrollBarStyle::kThickness);

    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = Qt::Vertical;
    option.minimum = 0;
    option.maximum = 300;
    option.pageStep = 100;
    option.sliderPosition = 300;
    for (QStyle::SubControl arrow : {QStyle::SC_ScrollBarAddLine, QStyle::SC_ScrollBarSubLine,
                                     QStyle::SC_ScrollBarFirst, QStyle::SC_ScrollBarLast})
        EXPECT_TRUE(style.subControlRect(QStyle::CC_ScrollBar, &option, arrow).isEmpty());
    // The whole length is track: a quarter of the content shows, so the
    // thumb is a quarter long, at the very end when scrolled to the end.
    EXPECT_EQ(style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider),
              QRect(0, 300, DashboardScrollBarStyle::kThickness, 100));
}
