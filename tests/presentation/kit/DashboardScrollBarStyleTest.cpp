#include "presentation/kit/DashboardScrollBarStyle.h"

#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionSlider>

#include <gtest/gtest.h>

namespace {

QImage paintedBar(QScrollBar &bar, const QPalette &palette)
{
    bar.setPalette(palette);
    QImage image(bar.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    bar.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

} // namespace

TEST(DashboardScrollBarStyle, ThinWithoutArrowsAndTheSameOnALightOrDarkDesktop)
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

    QPalette dark;
    dark.setColor(QPalette::Window, QColor(0x20, 0x20, 0x20));
    dark.setColor(QPalette::Button, QColor(0x30, 0x30, 0x30));
    dark.setColor(QPalette::Base, QColor(0x10, 0x10, 0x10));
    const QImage light = paintedBar(bar, QPalette(Qt::white));
    EXPECT_EQ(paintedBar(bar, dark), light);
    // Nothing to scroll: nothing drawn, though the bar keeps its room.
    bar.setRange(0, 0);
    QImage blank(bar.size(), QImage::Format_ARGB32_Premultiplied);
    blank.fill(Qt::transparent);
    EXPECT_EQ(paintedBar(bar, dark), blank);
}
