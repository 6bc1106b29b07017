#include "probes/NetworkIORate.h"

#include "sampling/Text.h"

#include <limits>
#include <utility>

namespace {

std::uint64_t saturatingAdd(std::uint64_t a, std::uint64_t b)
{
    return b > std::numeric_limits<std::uint64_t>::max() - a
               ? std::numeric_limits<std::uint64_t>::max()
               : a + b;
}

} // namespace

bool countsTowardThroughput(const NetworkInterfaceRecord &record, int linkLevelFamily)
{
    return (record.flags & kInterfaceUpFlag) != 0 && (record.flags & kInterfaceLoopbackFlag) == 0 &&
           record.family == linkLevelFamily && record.counters.has_value();
}

std::optional<NetworkCounters>
sumNetworkCounters(const std::optional<std::vector<NetworkInterfaceRecord>> &records,
                   int linkLevelFamily)
{
    if (!records || records->empty())
        return std::nullopt;
    NetworkCounters sum;
    for (const NetworkInterfaceRecord &record : *records) {
        if (!countsTowardThroughput(record, linkLevelFamily))
            continue;
        sum.receivedBytes = saturatingAdd(sum.receivedBytes, record.counters->receivedBytes);
        sum.sentBytes = saturatingAdd(sum.sentBytes, record.counters->sentBytes);
    }
    return sum;
}

NetworkIORateTracker::NetworkIORateTracker(int linkLevelFamily, QString source)
    : m_linkLevelFamily(linkLevelFamily), m_source(std::move(source))
{
}

SensorReading<NetworkThroughput>
NetworkIORateTracker::update(const std::optional<std::vector<NetworkInterfaceRecord>> &records,
                             TimePoint now)
{
    const std::optional<NetworkCounters> sums = sumNetworkCounters(records, m_linkLevelFamily);
    if (!sums)
        return SensorReading<NetworkThroughput>::temporarilyUnavailable(
            kwText("无法读取网络接口计数器"));
    const NetworkByteSnapshot snapshot{sums->receivedBytes, sums->sentBytes, now};
    const std::optional<NetworkByteSnapshot> older = std::exchange(m_previous, snapshot);
    if (!older)
        return SensorReading<NetworkThroughput>::warmingUp();
    const double elapsed = now.secondsSince(older->timestamp);
    // Compared before subtracting: an interface that went down leaves the sum,
    // and an unsigned difference would then wrap instead of going negative.
    if (!(elapsed > 0.0) || snapshot.receivedBytes < older->receivedBytes ||
        snapshot.sentBytes < older->sentBytes)
        return SensorReading<NetworkThroughput>::temporarilyUnavailable(
            kwText("网络接口计数器无有效增量"));
    const NetworkThroughput throughput{
        static_cast<double>(snapshot.receivedBytes - older->receivedBytes) / elapsed,
        static_cast<double>(snapshot.sentBytes - older->sentBytes) / elapsed};
    return SensorReading<NetworkThroughput>::available(throughput, m_source);
}
