#pragma once

#include "platform/linux/NvmlLibrary.h"
#include "platform/linux/SysfsDirectory.h"
#include "sampling/Probing.h"

#include <QString>

#include <memory>
#include <vector>

// amdgpu's busy percent of every DRM card: <sysRoot>/class/drm/card<n>/device/
// gpu_busy_percent, in card order. Connector entries (card0-DP-1) and render
// nodes are not cards. A file that is missing, unreadable or not a number
// gives nothing for that card.
std::vector<double> readAmdgpuBusyPercents(const QByteArray &sysRoot, const KernelFileReader &read);

// GPU utilisation: amdgpu through sysfs and NVIDIA through NVML, the largest
// value of all devices.
//
// The NVML session is kept while it works (see NvmlLibrary). A failed open is
// tried again on a later tick, not on every tick: nvmlInit can be slow to
// fail and may even start nvidia-modprobe, and a driver that was not there a
// minute ago rarely appears in the next two seconds.
class LinuxGPUUsageProbe final : public GPUUsageProbing {
public:
    static constexpr int kTicksBetweenNvmlAttempts = 30; // about a minute at one tick per 2 s

    explicit LinuxGPUUsageProbe(QString sysRoot = QStringLiteral("/sys"),
                                QByteArray nvmlLibraryPath = "libnvidia-ml.so.1",
                                KernelFileReader reader = systemFileReader());
    SensorReading<double> sample() override;

private:
    std::vector<double> nvmlUtilisations();

    QByteArray m_sysRoot;
    QByteArray m_nvmlLibraryPath;
    KernelFileReader m_read;
    std::unique_ptr<NvmlLibrary> m_nvml;
    int m_ticksUntilNvmlAttempt = 0; // 0: try to open on this tick
};
