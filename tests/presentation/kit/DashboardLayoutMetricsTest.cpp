#include "presentation/kit/DashboardLayoutMetrics.h"

#include <gtest/gtest.h>

namespace {

struct ClassCase {
    const char *name;
    double width;
    double height;
    DashboardHorizontalSize size;
    double sidebar;
    bool isShort;
    bool labels;
};

class LayoutClassTest : public testing::TestWithParam<ClassCase> {};

TEST_P(LayoutClassTest, ClassEdgesBelongToTheUpperClass)
{
    const ClassCase &c = GetParam();
    const DashboardLayoutMetrics metrics = DashboardLayoutMetrics::forSize(c.width, c.height);
    EXPECT_EQ(metrics.horizontalSize, c.size);
    EXPECT_EQ(metrics.sidebarWidth, c.sidebar);
    EXPECT_EQ(metrics.isShort, c.isShort);
    EXPECT_EQ(metrics.showsSidebarLabels, c.labels);
    EXPECT_EQ(metrics.showsPrivacyLabel, c.labels);
    EXPECT_EQ(metrics.footerHeight, 0);
    EXPECT_FALSE(metrics.showsDetailedFooter);
}

INSTANTIATE_TEST_SUITE_P(
    Edges, LayoutClassTest,
    testing::Values(ClassCase{"below_compact_edge", 1119.99, 900, DashboardHorizontalSize::compact,
                              76, false, false},
                    ClassCase{"standard_from_1120", 1120, 900, DashboardHorizontalSize::standard,
                              210, false, true},
                    ClassCase{"standard_to_1399", 1399.99, 900, DashboardHorizontalSize::standard,
                              210, false, true},
                    ClassCase{"spacious_from_1400", 1400, 900, DashboardHorizontalSize::spacious,
                              240, false, true},
                    ClassCase{"short_below_760", 1440, 759.99, DashboardHorizontalSize::spacious,
                              240, true, true},
                    ClassCase{"not_short_at_760", 1440, 760, DashboardHorizontalSize::spacious, 240,
                              false, true},
                    ClassCase{"nan_is_smallest", std::nan(""), std::nan(""),
                              DashboardHorizontalSize::compact, 76, true, false}),
    [](const testing::TestParamInfo<ClassCase> &info) { return std::string(info.param.name); });

TEST(DashboardLayoutMetrics, EachClassHasItsRow)
{
    const auto compact = DashboardLayoutMetrics::forSize(1000, 800);
    const auto standard = DashboardLayoutMetrics::forSize(1200, 800);
    const auto spacious = DashboardLayoutMetrics::forSize(1500, 800);
    EXPECT_EQ((std::array{compact.headerHeight, compact.pageHorizontalPadding,
                          compact.contentSpacing, compact.taskColumnWidth, compact.eventColumnWidth,
                          compact.diagnosisChartHeight, compact.hardwareChartHeight}),
              (std::array{100.0, 20.0, 16.0, 286.0, 300.0, 288.0, 250.0}));
    EXPECT_EQ(
        (std::array{standard.headerHeight, standard.pageHorizontalPadding, standard.contentSpacing,
                    standard.taskColumnWidth, standard.eventColumnWidth,
                    standard.diagnosisChartHeight, standard.hardwareChartHeight}),
        (std::array{108.0, 24.0, 20.0, 340.0, 640.0, 300.0, 278.0}));
    EXPECT_EQ(
        (std::array{spacious.headerHeight, spacious.pageHorizontalPadding, spacious.contentSpacing,
                    spacious.taskColumnWidth, spacious.eventColumnWidth,
                    spacious.diagnosisChartHeight, spacious.hardwareChartHeight}),
        (std::array{116.0, 32.0, 24.0, 392.0, 764.0, 300.0, 286.0}));
    // A view outside any window sees the spacious row at full scale.
    EXPECT_EQ(DashboardLayoutMetrics(), DashboardLayoutMetrics::forSize(1440, 900));
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
}

} // namespace
