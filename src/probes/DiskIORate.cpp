#include "probes/DiskIORate.h"

#include <limits>
#include <utility>

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DiskIORate)
};

// A total that cannot wrap: two counters near the top would otherwise sum to
// a small number and lose the comparison.
std::uint64_t saturatingTotal(const DiskDeviceCounters &device)
{
    const std::uint64_t room = std::numeric_limits<std::uint64_t>::max() - device.bytesRead;
    return device.bytesWritten > room ? std::numeric_limits<std::uint64_t>::max()
                                      : device.bytesRead + device.bytesWritten;
}

} // namespace

std::optional<DiskDeviceCounters> largestDisk(const std::vector<DiskDeviceCounters> &devices)
{
    const DiskDeviceCounters *largest = nullptr;
    for (const DiskDeviceCounters &device : devices) {
        if (!largest || saturatingTotal(device) > saturatingTotal(*largest))
            largest = &device;
    }
    if (!largest)
        return std::nullopt;
    return *largest;
}

DiskIORateTracker::DiskIORateTracker(QString source) : m_source(std::move(source)) {}

SensorReading<double> DiskIORateTracker::update(const std::vector<DiskDeviceCounters> &devices,
                                                TimePoint now)
{
    const std::optional<DiskDeviceCounters> chosen = largestDisk(devices);
    if (!chosen)
        return SensorReading<double>::unsupported(Words::tr("未发现系统磁盘累计读写计数器"));
    const DiskByteSnapshot snapshot{chosen->bytesRead, chosen->bytesWritten, now};
    const std::optional<DiskByteSnapshot> older = std::exchange(m_previous, snapshot);
    if (!older)
        return SensorReading<double>::warmingUp();
    const double elapsed = now.secondsSince(older->timestamp);
    // Checked before subtracting: an unsigned difference of a counter that
    // went down would be a huge number, not a negative one.
    if (!(elapsed > 0.0) || snapshot.bytesRead < older->bytesRead ||
        snapshot.bytesWritten < older->bytesWritten)
        return SensorReading<double>::temporarilyUnavailable(Words::tr("磁盘累计计数器无有效增量"));
    const double delta = static_cast<double>(snapshot.bytesRead - older->bytesRead) +
                         static_cast<double>(snapshot.bytesWritten - older->bytesWritten);
    return SensorReading<double>::available(delta / elapsed, m_source);
}
