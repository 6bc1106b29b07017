#pragma once

#include "platform/linux/SysfsDirectory.h"
#include "probes/DiskIORate.h"
#include "sampling/Probing.h"

#include <QString>

#include <cstdint>
#include <string_view>
#include <vector>

// One line of /proc/diskstats: the device name and its sectors read and
// written (fields 3, 6 and 10, counted from 1; Documentation/admin-guide/
// iostats.rst). Sectors are 512 bytes whatever the device's own sector size.
struct DiskstatsLine {
    QString name;
    std::uint64_t sectorsRead = 0;
    std::uint64_t sectorsWritten = 0;

    bool operator==(const DiskstatsLine &) const = default;
};

// Every well-formed line; a line with fewer than ten fields or a counter that
// is not a number is passed over.
std::vector<DiskstatsLine> parseDiskstats(std::string_view text);

// Whole disks only: a name listed in /sys/block (partitions are not; "/" in a
// diskstats name is "!" there), and not
// a loop, ram, zram, device-mapper (dm-) or software RAID (md) device. Those
// are either memory or stacked on the real disks, and counting them would let
// the largest-total choice jump between a disk and the volume on top of it.
bool isCountedDisk(const QString &name, const std::vector<QByteArray> &blockDevices);

// The counted disks' bytes (sectors x 512, capped rather than wrapped).
std::vector<DiskDeviceCounters> wholeDiskCounters(const std::vector<DiskstatsLine> &lines,
                                                  const std::vector<QByteArray> &blockDevices);

// Disk throughput of the busiest whole disk from <procRoot>/diskstats.
class ProcDiskstatsDiskProbe final : public DiskIOProbing {
public:
    explicit ProcDiskstatsDiskProbe(QString procRoot = QStringLiteral("/proc"),
                                    QString sysRoot = QStringLiteral("/sys"),
                                    KernelFileReader reader = systemFileReader());
    SensorReading<double> sample(TimePoint now) override;

private:
    QByteArray m_diskstatsPath;
    QByteArray m_blockPath;
    KernelFileReader m_read;
    DiskIORateTracker m_tracker;
};
