#include "presentation/kit/KilnWardenMark.h"
#include "presentation/kit/DashboardPalette.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

QImage render(QSize size, KilnWardenMarkPalette palette, bool bars)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintKilnWardenMark(painter, QRectF(QPointF(0, 0), size), palette, bars, Qt::black);
    return image;
}

QRect inkBounds(const QImage &image)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 0)
                bounds |= QRect(x, y, 1, 1);
    return bounds;
}

// The colour at the middle of a load bar, in canvas coordinates of a 100 square.
QRgb barColour(const QImage &image, int bar)
{
    const QPointF centre = KilnWardenMarkGeometry::loadBar(bar).center();
    return image.pixel(qRound(centre.x()), qRound(centre.y())) | 0xFF000000;
}

TEST(KilnWardenMark, CentresInAWideCanvasWithItsPalettesAndBars)
{
    // 300 by 100: the mark is 100 wide and starts at x = 100.
    const QRect bounds = inkBounds(render({300, 100}, KilnWardenMarkPalette::fullColor, true));
    // The brackets run from 10 to 90 with a 7-unit stroke: ink from 6.5 to 93.5.
    EXPECT_NEAR(bounds.left(), 100 + 6.5, 0.5);
    EXPECT_NEAR(bounds.right(), 100 + 93, 1);
    EXPECT_GE(bounds.top(), 6);
    // Only the fourth bar carries the heat colour; the monochrome mark is all ink.
    const QImage full = render({100, 100}, KilnWardenMarkPalette::fullColor, true);
    const QImage mono = render({100, 100}, KilnWardenMarkPalette::monochrome, true);
    for (int bar = 0; bar < 5; ++bar) {
        EXPECT_EQ(barColour(full, bar), bar == KilnWardenMarkGeometry::markedBarIndex
                                            ? DashboardPalette::brandOrange
                                            : DashboardPalette::accent)
            << "bar " << bar;
        EXPECT_EQ(barColour(mono, bar), DashboardPalette::brandInk);
    }
    const QImage reversed = render({100, 100}, KilnWardenMarkPalette::reversed, false);
    EXPECT_EQ(reversed.pixel(10, 20) | 0xFF000000, 0xFFFFFFFF); // a white bracket
    // Without bars the bars' middles stay (nearly) empty: only the pulse's
    // anti-aliased edge may reach one of them.
    for (int bar = 0; bar < 5; ++bar) {
        const QPointF centre = KilnWardenMarkGeometry::loadBar(bar).center();
        EXPECT_LT(qAlpha(reversed.pixel(qRound(centre.x()), qRound(centre.y()))), 128);
    }
}

} // namespace
