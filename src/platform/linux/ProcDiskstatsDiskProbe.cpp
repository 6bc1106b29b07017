#include "platform/linux/ProcDiskstatsDiskProbe.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr std::uint64_t kSectorBytes = 512;

std::uint64_t sectorsToBytes(std::uint64_t sectors)
{
    constexpr std::uint64_t limit = std::numeric_limits<std::uint64_t>::max() / kSectorBytes;
    return sectors > limit ? std::numeric_limits<std::uint64_t>::max() : sectors * kSectorBytes;
}

// Splits on runs of blanks; at most `Count` fields are kept.
template <std::size_t Count>
std::size_t splitFields(std::string_view line, std::array<std::string_view, Count> &fields)
{
    std::size_t count = 0;
    std::size_t position = 0;
    while (count < Count) {
        position = line.find_first_not_of(" \t", position);
        if (position == std::string_view::npos)
            break;
        const std::size_t end = std::min(line.find_first_of(" \t", position), line.size());
        fields[count++] = line.substr(position, end - position);
        position = end;
    }
    return count;
}

} // namespace

std::vector<DiskstatsLine> parseDiskstats(std::string_view text)
{
    std::vector<DiskstatsLine> disks;
    TextLines lines(text);
    while (const std::optional<std::string_view> line = lines.next()) {
        // major minor name reads merged sectors ms writes merged sectors ...
        std::array<std::string_view, 10> fields;
        if (splitFields(*line, fields) < fields.size())
            continue;
        const auto read = parseUnsignedDecimal(fields[5]);
        const auto written = parseUnsignedDecimal(fields[9]);
        if (!read || !written)
            continue;
        disks.push_back(
            {QString::fromUtf8(fields[2].data(), qsizetype(fields[2].size())), *read, *written});
    }
    return disks;
}

bool isCountedDisk(const QString &name, const std::vector<QByteArray> &blockDevices)
{
    static constexpr std::string_view excludedPrefixes[] = {"loop", "ram", "zram", "dm-", "md"};
    for (const std::string_view prefix : excludedPrefixes) {
        if (name.startsWith(QLatin1String(prefix.data(), qsizetype(prefix.size()))))
            return false;
    }
    // A name with "/" in diskstats (cciss/c0d0) has "!" in /sys/block, since
    // a file name cannot hold "/".
    const QByteArray encoded = name.toUtf8().replace('/', '!');
    return std::find(blockDevices.begin(), blockDevices.end(), encoded) != blockDevices.end();
}

std::vector<DiskDeviceCounters> wholeDiskCounters(const std::vector<DiskstatsLine> &lines,
                                                  const std::vector<QByteArray> &blockDevices)
{
    std::vector<DiskDeviceCounters> devices;
    for (const DiskstatsLine &line : lines) {
        if (isCountedDisk(line.name, blockDevices))
            devices.push_back(
                {line.name, sectorsToBytes(line.sectorsRead), sectorsToBytes(line.sectorsWritten)});
    }
    return devices;
}

ProcDiskstatsDiskProbe::ProcDiskstatsDiskProbe(QString procRoot, QString sysRoot,
                                               KernelFileReader reader)
    : m_diskstatsPath((procRoot + QStringLiteral("/diskstats")).toLocal8Bit()),
      m_blockPath((sysRoot + QStringLiteral("/block")).toLocal8Bit()), m_read(std::move(reader)),
      m_tracker(QStringLiteral("Linux /proc/diskstats"))
{
}

SensorReading<double> ProcDiskstatsDiskProbe::sample(TimePoint now)
{
    // Both are read afresh: disks come and go (USB, NVMe hot plug).
    const FileReadResult diskstats = m_read(m_diskstatsPath);
    const std::vector<QByteArray> blockDevices =
        listDirectory(m_blockPath).value_or(std::vector<QByteArray>{});
    std::vector<DiskDeviceCounters> devices;
    if (diskstats.bytes)
        devices = wholeDiskCounters(parseDiskstats(asView(*diskstats.bytes)), blockDevices);
    return m_tracker.update(devices, now);
}
