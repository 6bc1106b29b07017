#pragma once

#include "sampling/ProcessMetric.h"
#include "sampling/TimePoint.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

// One process at one tick, before rates: a snapshot with running counters.
// The argument vector and the working directory are already reduced to
// `command`; nothing else of them is carried.
struct RawProcessMetric {
    ProcessIdentity identity;
    pid_t parentPID = 0;
    pid_t processGroupID = 0;
    uid_t userID = 0;
    bool isServiceManager = false;          // see ProcessMetric
    bool leadsTerminalSession = false;      // see ProcessMetric
    QString controlGroup;                   // see ProcessMetric
    QString name;                           // short name, else the executable's last component
    std::optional<QString> applicationPath; // the application identity, when there is one
    QString applicationName;                // the platform's name for it, when it has one
    RedactedCommandSummary command;
    std::uint64_t residentBytes = 0;
    std::uint64_t totalCPUNanoseconds = 0; // user + system since the process started
    std::uint64_t diskBytes = 0;           // read + written, wrapping
    TimePoint sampledAt;                   // the tick's time passed to the reader

    bool operator==(const RawProcessMetric &) const = default;
};

// Reads every visible process of the current user once.
// Contract: called by ProcessMetricsProbe only, one tick at a time; never
// throws and reports no failure: a process that cannot be read at any step is
// simply absent. The records come in the order the platform lists the
// processes. A reader that keeps its processes from one tick to the next
// hands out the records it keeps, not copies: each is valid during the call
// that receives it only.
class RawProcessMetricReading {
public:
    using Visitor = std::function<void(const RawProcessMetric &)>;

    virtual ~RawProcessMetricReading() = default;
    virtual void visitMetrics(TimePoint now, const Visitor &visit) = 0;

    // The same tick's records, copied.
    std::vector<RawProcessMetric> readMetrics(TimePoint now)
    {
        std::vector<RawProcessMetric> records;
        visitMetrics(now, [&](const RawProcessMetric &record) { records.push_back(record); });
        return records;
    }
};
