#include "presentation/kit/DashboardLayoutMetrics.h"

#include "presentation/kit/DashboardFonts.h"

#include <QFontInfo>

#include <tuple>

#include <gtest/gtest.h>

namespace {

TEST(DashboardLayoutMetrics, ClassEdgesBelongToTheUpperClass)
{
    using H = DashboardHorizontalSize;
    const struct {
        const char *name;
        double width, height;
        H size;
        double sidebar;
        bool isShort, labels;
    } cases[] = {
        {"below the compact edge", 1119.99, 900, H::compact, 76, false, false},
        {"standard from 1120", 1120, 900, H::standard, 210, false, true},
        {"standard to 1399", 1399.99, 900, H::standard, 210, false, true},
        {"spacious from 1400", 1400, 900, H::spacious, 240, false, true},
        {"short below 760", 1440, 759.99, H::spacious, 240, true, true},
        {"not short at 760", 1440, 760, H::spacious, 240, false, true},
        {"NaN is the smallest", std::nan(""), std::nan(""), H::compact, 76, true, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const DashboardLayoutMetrics metrics = DashboardLayoutMetrics::forSize(c.width, c.height);
        EXPECT_EQ(metrics.horizontalSize, c.size);
        EXPECT_EQ(metrics.sidebarWidth, c.sidebar);
        EXPECT_EQ(metrics.isShort, c.isShort);
        EXPECT_EQ(metrics.showsSidebarLabels, c.labels);
        EXPECT_EQ(metrics.showsPrivacyLabel, c.labels);
    }
}

TEST(DashboardLayoutMetrics, TypographyScaleAndHalfPointFonts)
{
    struct Row {
        double width, scale;
    };
    for (const Row row :
         {Row{500, 0.84}, Row{960, 0.84}, Row{1200, 0.92}, Row{1440, 1.0}, Row{3000, 1.0}})
        EXPECT_DOUBLE_EQ(dashboardTypographyScale(row.width), row.scale) << row.width;
    EXPECT_EQ(dashboardTypographyScale(1440), 1.0); // exactly, not nearly
    EXPECT_EQ(dashboardScaledFontSize(13, 0.84), 11.0);
    EXPECT_EQ(dashboardScaledFontSize(15, 0.84), 12.5);
    EXPECT_EQ(dashboardScaledFontSize(22, 1.0), 22.0);
    // Halves round away from zero: 12.25 is a half-point tie.
    EXPECT_EQ(dashboardScaledFontSize(12.25, 1.0), 12.5);

    // Below a device pixel ratio of 2 no text is under 11 px, scaled or not.
    for (const auto &[size, ratio, legible] :
         {std::tuple{8.5, 1.0, 11.0}, std::tuple{8.5, 2.0, 8.5}, std::tuple{13.0, 1.0, 13.0}})
        EXPECT_EQ(legibleFontPixelSize(size, ratio), legible) << size << " at " << ratio;
    const QFont caption = dashboardFont(DashboardLayoutMetrics::forSize(960, 640), 10);
    EXPECT_GE(QFontInfo(caption).pixelSize(), 11); // the test screen is 1x
}

} // namespace
