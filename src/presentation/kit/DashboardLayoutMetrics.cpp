#include "presentation/kit/DashboardLayoutMetrics.h"

#include <algorithm>
#include <cmath>

double dashboardTypographyScale(double width)
{
    const double s = (width - 960.0) / 480.0;
    if (!(s > 0.0))
        return 0.84;
    // 1 - 0.84 as a 64-bit float, so that the full width gives exactly 1.0.
    return 0.84 + std::min(s, 1.0) * (1.0 - 0.84);
}

double dashboardScaledFontSize(double size, double typographyScale)
{
    return std::round(2.0 * size * typographyScale) / 2.0;
}

DashboardLayoutMetrics DashboardLayoutMetrics::forSize(double width, double height)
{
    struct Row {
        double sidebar, header, padding, spacing, taskColumn, eventColumn, diagnosisChart,
            hardwareChart;
        bool labels;
    };
    static constexpr Row compact{76, 72, 20, 16, 286, 300, 288, 250, false};
    static constexpr Row standard{210, 80, 24, 20, 340, 640, 300, 278, true};
    static constexpr Row spacious{240, 88, 32, 24, 392, 764, 300, 286, true};

    DashboardLayoutMetrics metrics;
    // NaN and negative sizes fall to the smallest class rather than to none.
    metrics.horizontalSize = !(width >= 1120.0)   ? DashboardHorizontalSize::compact
                             : !(width >= 1400.0) ? DashboardHorizontalSize::standard
                                                  : DashboardHorizontalSize::spacious;
    metrics.isShort = !(height >= 760.0);
    const Row &row = metrics.horizontalSize == DashboardHorizontalSize::compact    ? compact
                     : metrics.horizontalSize == DashboardHorizontalSize::standard ? standard
                                                                                   : spacious;
    metrics.sidebarWidth = row.sidebar;
    metrics.headerHeight = row.header;
    metrics.pageHorizontalPadding = row.padding;
    metrics.contentSpacing = row.spacing;
    metrics.taskColumnWidth = row.taskColumn;
    metrics.eventColumnWidth = row.eventColumn;
    metrics.diagnosisChartHeight = row.diagnosisChart;
    metrics.hardwareChartHeight = row.hardwareChart;
    metrics.typographyScale = dashboardTypographyScale(width);
    metrics.showsSidebarLabels = row.labels;
    metrics.showsPrivacyLabel = row.labels;
    return metrics;
}
