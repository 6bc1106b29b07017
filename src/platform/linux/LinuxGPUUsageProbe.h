#pragma once

#include "platform/linux/NvmlLibrary.h"
#include "platform/linux/SysfsDirectory.h"
#include "sampling/Probing.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <memory>
#include <vector>

// amdgpu's busy percent of every DRM card: <sysRoot>/class/drm/card<n>/device/
// gpu_busy_percent, in card order. Connector entries (card0-DP-1) and render
// nodes are not cards. A file that is missing, unreadable or not a number
// gives nothing for that card. A card whose device/power/runtime_status is
// "suspended" is idle: 0 %, and its busy file is not read, because that read
// would wake it and keep a laptop's second GPU powered.
std::vector<double> readAmdgpuBusyPercents(const QByteArray &sysRoot, const KernelFileReader &read);

// NVIDIA display devices (vendor 0x10de, PCI class 0x03xxxx) among
// <sysRoot>/bus/pci/devices/*, by their runtime power state. Of other devices
// only the vendor is read, of NVIDIA's only the class and the power state.
struct NvidiaDisplayDevices {
    int awake = 0;
    int asleep = 0;

    bool operator==(const NvidiaDisplayDevices &) const = default;
};
// Whether each listed PCI device is an NVIDIA display function, by its name
// (the bus address). A device's vendor and class are fixed while it stays
// listed, so with `known` they are read once: when it first appears, or on a
// later tick if they could not be read then. `known` keeps what this tick
// listed.
using PciDisplayFunctions = QHash<QByteArray, bool>;
NvidiaDisplayDevices countNvidiaDisplayDevices(const QByteArray &sysRoot,
                                               const KernelFileReader &read,
                                               PciDisplayFunctions *known = nullptr);

// GPU utilisation: amdgpu through sysfs and NVIDIA through NVML, the largest
// value of all devices.
//
// NVML is asked only while an NVIDIA display device is awake: its session
// wakes a sleeping card (see NvmlLibrary). It is kept while it works and
// ended when every NVIDIA device has gone to sleep; a sleeping NVIDIA device
// counts as idle, 0 %, where the library is there to measure it. A failed
// load or start is tried again at the next tick, like every other reading: a
// driver loaded after start (or after a reset) is seen within one tick.
class LinuxGPUUsageProbe final : public GPUUsageProbing {
public:
    explicit LinuxGPUUsageProbe(QString sysRoot = QStringLiteral("/sys"),
                                QByteArray nvmlLibraryPath = "libnvidia-ml.so.1",
                                KernelFileReader reader = systemFileReader());
    SensorReading<double> sample() override;

private:
    std::vector<double> nvmlUtilisations(const NvidiaDisplayDevices &devices);

    QByteArray m_sysRoot;
    QByteArray m_nvmlLibraryPath;
    KernelFileReader m_read;
    std::unique_ptr<NvmlLibrary> m_nvml;
    PciDisplayFunctions m_displayFunctions;
};
