#include "presentation/kit/DashboardLayoutMetrics.h"

#include "presentation/kit/DashboardFonts.h"
#include "support/FixtureTable.h"

#include <QFontInfo>

#include <cstdlib>
#include <tuple>

#include <gtest/gtest.h>

namespace {

TEST(DashboardLayoutMetrics, ClassEdgesBelongToTheUpperClass)
{
    constexpr const char *kSizeNames[] = {"compact", "standard", "spacious"}; // in order
    for (const FixtureRow &row : fixtureTable(QStringLiteral("dashboard-size-classes"))) {
        const DashboardLayoutMetrics metrics =
            DashboardLayoutMetrics::forSize(std::strtod(row.fields[0].constData(), nullptr),
                                            std::strtod(row.fields[1].constData(), nullptr));
        EXPECT_EQ(kSizeNames[int(metrics.horizontalSize)], row.fields[2]) << row.where;
        EXPECT_EQ(metrics.sidebarWidth, row.fields[3].toDouble()) << row.where;
        EXPECT_EQ(metrics.isShort, row.fields[4] == "1") << row.where;
        EXPECT_EQ(metrics.showsSidebarLabels, row.fields[5] == "1") << row.where;
        EXPECT_EQ(metrics.showsPrivacyLabel, row.fields[5] == "1") << row.where;
    }
}

TEST(DashboardLayoutMetrics, NoTextUnderElevenPixelsBelowARatioOfTwo)
{
    // Below a device pixel ratio of 2 no text is under 11 px, scaled or not.
    for (const auto &[size, ratio, legible] :
         {std::tuple{8.5, 1.0, 11.0}, std::tuple{8.5, 2.0, 8.5}, std::tuple{13.0, 1.0, 13.0}})
        EXPECT_EQ(legibleFontPixelSize(size, ratio), legible) << size << " at " << ratio;
    const QFont caption = dashboardFont(DashboardLayoutMetrics::forSize(960, 640), 10);
    EXPECT_GE(QFontInfo(caption).pixelSize(), 11); // the test screen is 1x
}

} // namespace
