#pragma once

#include "sampling/SensorReading.h"
#include "sampling/SystemMetricSample.h"
#include "sampling/TimePoint.h"

#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

// Interface flag bits, the same on Linux and macOS (net/if.h).
inline constexpr std::uint32_t kInterfaceUpFlag = 0x1;
inline constexpr std::uint32_t kInterfaceLoopbackFlag = 0x8;

struct NetworkCounters {
    std::uint64_t receivedBytes = 0;
    std::uint64_t sentBytes = 0;

    bool operator==(const NetworkCounters &) const = default;
};

// One record of the platform's interface address list.
struct NetworkInterfaceRecord {
    QString name;
    std::uint32_t flags = 0;
    int family = 0;                          // address family of the record
    std::optional<NetworkCounters> counters; // absent: the record carries none

    bool operator==(const NetworkInterfaceRecord &) const = default;
};

struct NetworkByteSnapshot {
    std::uint64_t receivedBytes = 0;
    std::uint64_t sentBytes = 0;
    TimePoint timestamp;
    // The counted interfaces' own counters: a rate comes only from interfaces
    // counted in both ticks.
    std::map<QString, NetworkCounters> interfaces;

    bool operator==(const NetworkByteSnapshot &) const = default;
};

// A record counts when it is up, not loopback, of the link-level family (one
// such record per interface, so an interface with many addresses counts
// once) and carries counters. No name filter: virtual and tunnel interfaces
// that are up count like physical ones.
bool countsTowardThroughput(const NetworkInterfaceRecord &record, int linkLevelFamily);

// Sums of the counted records; nothing when the list could not be read
// (absent) or is empty.
std::optional<NetworkCounters>
sumNetworkCounters(const std::optional<std::vector<NetworkInterfaceRecord>> &records,
                   int linkLevelFamily);

// The counted records' counters by interface name (a name listed twice adds up).
std::map<QString, NetworkCounters>
countedNetworkInterfaces(const std::vector<NetworkInterfaceRecord> &records, int linkLevelFamily);

// The machine-wide network rate of every platform. `linkLevelFamily` is the
// platform's link-level address family (AF_LINK 18 on macOS, AF_PACKET 17
// on Linux).
//
// The rate is the sum of each interface's own delta over the interfaces
// counted in both ticks. An interface that appears (plugged in, a VPN or
// container link coming up), disappears or cannot be read for one tick adds
// nothing to that tick: a difference of sums would turn its lifetime total
// into a spike of gigabytes per second, or lose every other interface's
// traffic to a falling sum. A counter that goes backwards on an interface
// counted in both ticks (a wrap, a driver reset) is no delta.
class NetworkIORateTracker {
public:
    NetworkIORateTracker(int linkLevelFamily, QString source);

    SensorReading<NetworkThroughput>
    update(const std::optional<std::vector<NetworkInterfaceRecord>> &records, TimePoint now);

    const std::optional<NetworkByteSnapshot> &previous() const { return m_previous; }

private:
    int m_linkLevelFamily;
    QString m_source;
    std::optional<NetworkByteSnapshot> m_previous;
};
