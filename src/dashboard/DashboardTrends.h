#pragma once

// What the charts and the sensor table show, derived from the sample history
// and the latest sample. Pure functions: nothing here holds state, and each
// call computes afresh.

#include "sampling/MetricSampleHistory.h"
#include "sampling/SystemMetricSample.h"

#include <QString>

#include <optional>
#include <vector>

// One point of the heat chart. Identified by `elapsedSeconds`.
struct HeatTrendPoint {
    double elapsedSeconds = 0.0; // 0 at the window's start, the window's length at the newest
    std::optional<double> cpu;
    std::optional<double> temperature;
    std::optional<double> fanRPM;
    std::optional<SystemThermalState> thermalState;

    bool operator==(const HeatTrendPoint &) const = default;
};

// One point of the hardware charts. Identified by `timestamp`.
struct HardwareTrendPoint {
    TimePoint timestamp;
    double elapsedSeconds = 0.0;
    std::optional<double> cpu;
    std::optional<double> gpu;
    std::optional<double> memoryPercent;
    std::optional<double> temperature;
    std::optional<double> fanRPM;
    std::optional<double> diskBytesPerSecond;
    std::optional<double> networkReceivedBytesPerSecond;
    std::optional<double> networkSentBytesPerSecond;

    bool operator==(const HardwareTrendPoint &) const = default;
};

enum class SensorAvailability { available, warmingUp, unavailable };
QString sensorAvailabilityName(SensorAvailability availability); // "available", ...
SensorAvailability sensorAvailability(SensorReadingCase readingCase);

// One row of the sensor table. Identified by `id`.
struct DashboardSensorStatus {
    QString id;
    QString title;
    QString symbolName;
    QString source;
    QString currentValue;
    SensorAvailability availability = SensorAvailability::unavailable;

    bool operator==(const DashboardSensorStatus &) const = default;
};

// Points over the last `windowSeconds` of the history, oldest first (at most
// 361, through recentSamples). A reading that is not `available` leaves its
// field absent, so a gap in a series is a gap and never a zero.
std::vector<HeatTrendPoint> heatTrendPoints(const MetricSampleHistory &history,
                                            double windowSeconds);
std::vector<HardwareTrendPoint> hardwareTrendPoints(const MetricSampleHistory &history,
                                                    double windowSeconds);

// The sensor table of the latest sample: one "sampling" row before the first
// sample, then the seven rows temperature, fan, gpu, memory, disk, network,
// processes. `processesSource` names the platform's process reader.
std::vector<DashboardSensorStatus> sensorStatuses(const std::optional<SystemMetricSample> &latest,
                                                  const QString &processesSource);
