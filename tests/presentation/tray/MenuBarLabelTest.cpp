// The tray item's icon: the state's dot that only the abnormal states carry.

#include "presentation/kit/DashboardPalette.h"
#include "presentation/tray/KilnWardenMenuBarLabel.h"

#include <gtest/gtest.h>

namespace {

TEST(MenuBarLabel, carriesTheStateColourOnlyWhenAbnormal)
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
}

} // namespace
