#pragma once

#include "sampling/SensorReading.h"

#include <QString>

#include <optional>

// Cumulative tick counts of the whole host. Floats, so that deltas are float
// subtractions and a counter that went down gives a negative delta instead of
// a wrapped unsigned number.
struct CPUTickSnapshot {
    double user = 0.0;
    double system = 0.0;
    double idle = 0.0;
    double nice = 0.0;

    bool operator==(const CPUTickSnapshot &) const = default;
};

// Busy share in percent between two snapshots; nothing when a counter went
// down or no time passed. Nice time counts as busy.
std::optional<double> cpuUsageBetween(const CPUTickSnapshot &older, const CPUTickSnapshot &newer);

// The machine-wide CPU reading of every platform: the platform reads its
// counters, this keeps the previous snapshot and turns them into a reading.
class CPUUsageTracker {
public:
    // `source` names the counters, `readFailureReason` is the platform's text
    // for a failed read.
    CPUUsageTracker(QString source, QString readFailureReason);

    // One tick. `ticks` absent means the counter read failed this tick.
    SensorReading<double> update(const std::optional<CPUTickSnapshot> &ticks);

    const std::optional<CPUTickSnapshot> &previous() const { return m_previous; }

private:
    QString m_source;
    QString m_readFailureReason;
    std::optional<CPUTickSnapshot> m_previous;
};
