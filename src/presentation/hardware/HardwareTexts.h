#pragma once

// What the hardware page shows, as plain values: a category's series and its
// scale, the figures of the summary row, the axis words and the sensor
// table's columns, locations and status words. Pure functions over the
// store's values, so the page only lays these out.

#include "dashboard/DashboardTrends.h"
#include "presentation/hardware/HardwareCategory.h"
#include "sampling/SystemMetricSample.h"

#include <QPointF>
#include <QRgb>
#include <QString>

#include <optional>
#include <vector>

// The chart's window.
inline constexpr double kHardwareTrendWindowSeconds = 60.0;

// The category's series over the points, oldest first, as (elapsedSeconds,
// value): points without the field, or with a value that is not a number,
// are left out. Disk values are in megabytes per second.
std::vector<QPointF> hardwareSeries(HardwareCategory category,
                                    const std::vector<HardwareTrendPoint> &points);
// Whether the newest point of the window has the category's value (the
// current-point mark is shown only then).
bool hardwareNewestPointHasValue(HardwareCategory category,
                                 const std::vector<HardwareTrendPoint> &points);

// A figure of the series (peak, average): "61.3°C", "42%", "12.5 MB/s",
// "2,150 RPM" (grouping by the locale).
QString hardwareSeriesValueText(HardwareCategory category, double value);

struct HardwareSeriesFigures {
    QString peak;
    QString average;

    bool operator==(const HardwareSeriesFigures &) const = default;
};
// The largest value and the mean of the series; when it is empty, "采集中"
// for both, or "不可用" once the reading is unavailable.
HardwareSeriesFigures hardwareSeriesFigures(HardwareCategory category,
                                            const std::vector<QPointF> &series,
                                            bool unavailable = false);

// Why the category's reading is missing, once it is unavailable (unsupported,
// refused or failed; the store's availability mapping) rather than warming
// up: the page shows it where it would otherwise say it is collecting, so a
// machine without the sensor does not look as if it were still starting.
std::optional<QString> hardwareUnavailableReason(HardwareCategory category,
                                                 const std::optional<SystemMetricSample> &latest);

// The current figure from the latest sample; "采集中" before the first one.
// A temperature that is warming up reads "采集中", an unavailable one "不可用".
QString hardwareCurrentText(HardwareCategory category,
                            const std::optional<SystemMetricSample> &latest);

struct HardwareStatusLine {
    QString text;
    QRgb color = 0;

    bool operator==(const HardwareStatusLine &) const = default;
};
// Temperature: "热状态" and the line's own thermal word by the thermal state;
// with no thermal state and an unavailable temperature, the reading's reason.
// Other categories: the availability of the category's reading.
HardwareStatusLine hardwareStatusLine(HardwareCategory category,
                                      const std::optional<SystemMetricSample> &latest);

struct HardwareScale {
    double lowerBound = 0.0;
    double upperBound = 100.0;

    bool operator==(const HardwareScale &) const = default;
};
// Fixed for temperature (30..90) and the percents (0..100); disk and fan
// grow with the series' peak, over a floor of 10 MB/s and 4000 RPM.
HardwareScale hardwareScale(HardwareCategory category, const std::vector<QPointF> &series);
// Where the vertical axis is labelled: multiples of a round step (1, 2 or 5
// times a power of ten) that give about six labels within the scale.
std::vector<double> hardwareScaleTicks(const HardwareScale &scale);
// A vertical axis label: whole numbers for temperature and percents, at most
// one fraction digit for disk, grouped whole RPM for fan.
QString hardwareAxisValueText(HardwareCategory category, double value);
// A horizontal axis label: "现在" at 60, "-30s" at 30, "-60s" at 0.
QString hardwareTimeAxisLabel(double elapsedSeconds);

// The sensor table's column widths for a table `width` wide.
struct SensorTableColumns {
    double sensor = 0.0;
    double location = 0.0;
    double reading = 0.0;
    double status = 0.0;

    bool operator==(const SensorTableColumns &) const = default;
};
SensorTableColumns sensorTableColumns(double width);

// Where a sensor sits on a PC: "处理器" (temperature), "显卡", "机身内部", "系统", "存储",
// "当前用户", or the row's own source for any other row.
QString sensorLocationText(const DashboardSensorStatus &status);

struct SensorStatusLook {
    QString text;
    QRgb color = 0;

    bool operator==(const SensorStatusLook &) const = default;
};
SensorStatusLook sensorStatusLook(SensorAvailability availability);
