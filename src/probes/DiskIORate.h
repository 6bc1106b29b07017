#pragma once

#include "sampling/SensorReading.h"
#include "sampling/TimePoint.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

// Cumulative bytes of one whole disk, as the platform counts them.
struct DiskDeviceCounters {
    QString name;
    std::uint64_t bytesRead = 0;
    std::uint64_t bytesWritten = 0;

    bool operator==(const DiskDeviceCounters &) const = default;
};

struct DiskByteSnapshot {
    std::uint64_t bytesRead = 0;
    std::uint64_t bytesWritten = 0;
    TimePoint timestamp;

    bool operator==(const DiskByteSnapshot &) const = default;
};

// The disk with the largest read-plus-written total; the earliest on a tie.
// Only that one disk's counters make the rate: it is not a sum over disks.
std::optional<DiskDeviceCounters> largestDisk(const std::vector<DiskDeviceCounters> &devices);

// The machine-wide disk rate of every platform: keeps the previous snapshot
// and turns each tick's device counters into a reading.
class DiskIORateTracker {
public:
    explicit DiskIORateTracker(QString source);

    // One tick. An empty list means no counters were found; the previous
    // snapshot then stays, so the next good tick's rate spans the gap.
    SensorReading<double> update(const std::vector<DiskDeviceCounters> &devices, TimePoint now);

    const std::optional<DiskByteSnapshot> &previous() const { return m_previous; }

private:
    QString m_source;
    std::optional<DiskByteSnapshot> m_previous;
};
