#pragma once

// What the overview shows, as plain values: the four metric cards, the CPU
// mean of the last five minutes, the impact badge of a load source, the look
// of an incident's status and the chart's axis words. Pure functions, so the
// page only lays these out and tests check them without painting.

#include "dashboard/DashboardIncident.h"
#include "dashboard/DashboardTrends.h"
#include "sampling/SystemMetricSample.h"

#include <QRgb>
#include <QString>

#include <array>
#include <optional>
#include <vector>

// The chart's window: thirty minutes, of which the CPU mean takes the last five.
inline constexpr double kOverviewTrendWindowSeconds = 1800.0;
inline constexpr double kOverviewRecentAverageFromSeconds = 1500.0;

struct OverviewMetricCardContent {
    QString identifier; // "liveMetric-temperature", ...
    QString value;
    QString caption;
    QRgb accent = 0;
    QRgb tint = 0;

    bool operator==(const OverviewMetricCardContent &) const = default;
    // What a screen reader hears for the whole card: caption, then value.
    QString accessibleLabel() const { return caption + QLatin1Char(' ') + value; }
};

// Temperature, CPU, fan and disk, in that order. `latest` is absent before
// the first sample; `trendPoints` are the heat points of the 30-minute window.
std::array<OverviewMetricCardContent, 4>
overviewMetricCards(const std::optional<SystemMetricSample> &latest,
                    const std::vector<HeatTrendPoint> &trendPoints);

// The mean CPU of the points at 1500 s or later of the 30-minute window,
// points without a CPU value left out, as a whole percent; "采集中" when no
// point is left.
QString overviewRecentCPUAverageText(const std::vector<HeatTrendPoint> &trendPoints);

struct OverviewImpactBadge {
    QString text;
    QRgb foreground = 0;
    QRgb background = 0;

    bool operator==(const OverviewImpactBadge &) const = default;
};

// From 30 % "高影响", from 8 % "中影响", below "低影响". A CPU figure that is
// not a number counts as no load.
OverviewImpactBadge overviewImpactBadge(double cpuPercent);

struct OverviewIncidentStatusLook {
    QString title;
    QRgb dot = 0;

    bool operator==(const OverviewIncidentStatusLook &) const = default;
};

OverviewIncidentStatusLook overviewIncidentStatusLook(DashboardIncidentStatus status);

// A time of day in the user's locale's short form, without the date.
QString overviewShortTimeText(TimePoint time);

// The label of the chart's x value: "现在" at the window's end, else
// "-N 分钟" with the whole minutes before it.
QString overviewTrendAxisLabel(double elapsedSeconds);
