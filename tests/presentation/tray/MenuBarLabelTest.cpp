// The tray item's icon: the state's dot that only the abnormal states carry,
// over the mark in the ink with a halo around it.

#include "presentation/kit/DashboardPalette.h"
#include "presentation/tray/KilnWardenMenuBarLabel.h"

#include <gtest/gtest.h>

namespace {

TEST(MenuBarLabel, carriesTheStateColourOnlyWhenAbnormalAndAHalo)
{
    using S = MenuBarPresentationState;
    const std::pair<S, std::optional<QRgb>> cases[] = {
        {S::collecting, std::nullopt},
        {S::normal, std::nullopt},
        {S::highLoad, DashboardPalette::warning},
        {S::actionRecommended, DashboardPalette::danger},
    };
    for (const int size : {16, 48}) {
        for (const auto &[state, dot] : cases) {
            SCOPED_TRACE(testing::Message() << "size " << size << " state " << int(state));
            const QImage icon = menuBarLabelImage(state, size, Qt::black);
            ASSERT_EQ(icon.size(), QSize(size, size));
            // The dot's centre sits at the lower right.
            const int at = size - static_cast<int>(size * 0.22) - 1;
            const QRgb pixel = icon.pixelColor(at, at).rgb();
            if (dot) {
                EXPECT_EQ(pixel, QColor::fromRgb(*dot).rgb());
            }
            for (const QRgb other : {DashboardPalette::warning, DashboardPalette::danger})
                EXPECT_TRUE(dot || (pixel & 0xFFFFFF) != (other & 0xFFFFFF));
        }
    }
    // The mark is in the ink (the middle of the left bracket); just outside
    // its stroke only the halo is painted, light around dark ink and dark
    // around light ink.
    const int size = 64;
    const QPoint bracket(static_cast<int>(size * 0.10), static_cast<int>(size * 0.20));
    const QPoint outside = bracket - QPoint(3, 0);
    const QImage dark = menuBarLabelImage(S::normal, size, Qt::black);
    const QImage light = menuBarLabelImage(S::normal, size, Qt::white);
    EXPECT_LT(dark.pixelColor(bracket).lightness(), 100);
    EXPECT_GT(dark.pixelColor(bracket).alpha(), 0);
    ASSERT_GT(dark.pixelColor(outside).alpha(), 0);
    ASSERT_GT(light.pixelColor(outside).alpha(), 0);
    EXPECT_GT(dark.pixelColor(outside).lightness(), 200);
    EXPECT_LT(light.pixelColor(outside).lightness(), 55);
}

} // namespace
