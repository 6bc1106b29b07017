#include "probes/NetworkIORate.h"

#include <limits>
#include <utility>

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(NetworkIORate)
};

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

std::map<QString, NetworkCounters>
countedNetworkInterfaces(const std::vector<NetworkInterfaceRecord> &records, int linkLevelFamily)
{
    std::map<QString, NetworkCounters> interfaces;
    for (const NetworkInterfaceRecord &record : records) {
        if (!countsTowardThroughput(record, linkLevelFamily))
            continue;
        NetworkCounters &counters = interfaces[record.name];
        counters.receivedBytes =
            saturatingAdd(counters.receivedBytes, record.counters->receivedBytes);
        counters.sentBytes = saturatingAdd(counters.sentBytes, record.counters->sentBytes);
    }
    return interfaces;
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
            Words::tr("无法读取网络接口计数器"));
    NetworkByteSnapshot snapshot{sums->receivedBytes, sums->sentBytes, now,
                                 countedNetworkInterfaces(*records, m_linkLevelFamily)};
    const std::optional<NetworkByteSnapshot> older = std::exchange(m_previous, std::move(snapshot));
    if (!older)
        return SensorReading<NetworkThroughput>::warmingUp();
    const NetworkByteSnapshot &newer = *m_previous;
    const double elapsed = now.secondsSince(older->timestamp);
    // Compared before subtracting: an unsigned difference would wrap instead
    // of going negative.
    bool wentBackwards = false;
    NetworkCounters delta;
    for (const auto &[name, counters] : newer.interfaces) {
        const auto before = older->interfaces.find(name);
        if (before == older->interfaces.end())
            continue;
        if (counters.receivedBytes < before->second.receivedBytes ||
            counters.sentBytes < before->second.sentBytes) {
            wentBackwards = true;
            break;
        }
        delta.receivedBytes = saturatingAdd(delta.receivedBytes,
                                            counters.receivedBytes - before->second.receivedBytes);
        delta.sentBytes =
            saturatingAdd(delta.sentBytes, counters.sentBytes - before->second.sentBytes);
    }
    if (!(elapsed > 0.0) || wentBackwards)
        return SensorReading<NetworkThroughput>::temporarilyUnavailable(
            Words::tr("网络接口计数器无有效增量"));
    const NetworkThroughput throughput{static_cast<double>(delta.receivedBytes) / elapsed,
                                       static_cast<double>(delta.sentBytes) / elapsed};
    return SensorReading<NetworkThroughput>::available(throughput, m_source);
}
