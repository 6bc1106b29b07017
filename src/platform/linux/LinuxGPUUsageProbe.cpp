#include "platform/linux/LinuxGPUUsageProbe.h"

#include "probes/GPUUsage.h"

#include <algorithm>
#include <optional>

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(LinuxGPUUsageProbe)
};

} // namespace

std::vector<double> readAmdgpuBusyPercents(const QByteArray &sysRoot, const KernelFileReader &read)
{
    std::vector<double> values;
    const QByteArray drmPath = sysRoot + "/class/drm/";
    const auto names = listDirectory(drmPath);
    if (!names)
        return values;
    for (const NumberedEntry &card : numberedEntries(*names, "card")) {
        const QByteArray device = drmPath + card.name + "/device/";
        // Runtime power management: a sleeping card is idle, and reading its
        // busy file would wake it. Whether the file exists is in the listing,
        // which the driver does not answer.
        if (deviceAsleep(device, read)) {
            const auto entries = listDirectory(device);
            if (entries && std::find(entries->begin(), entries->end(),
                                     QByteArray("gpu_busy_percent")) != entries->end())
                values.push_back(0.0);
            continue;
        }
        const FileReadResult file = read(device + "gpu_busy_percent");
        if (!file.bytes)
            continue;
        if (const std::optional<long long> percent = parseDecimal(asView(*file.bytes)))
            values.push_back(static_cast<double>(*percent));
    }
    return values;
}

namespace {

// Whether the device at `device` is an NVIDIA display function; nothing when
// its vendor or class cannot be read.
std::optional<bool> isNvidiaDisplayFunction(const QByteArray &device, const KernelFileReader &read)
{
    // vendor and class come from the configuration space the kernel read at
    // enumeration; reading them wakes nothing.
    const FileReadResult vendor = read(device + "vendor");
    if (!vendor.bytes)
        return std::nullopt;
    if (vendor.bytes->trimmed() != "0x10de")
        return false;
    const FileReadResult pciClass = read(device + "class");
    if (!pciClass.bytes)
        return std::nullopt;
    return pciClass.bytes->startsWith("0x03"); // not an audio function or USB controller
}

} // namespace

NvidiaDisplayDevices countNvidiaDisplayDevices(const QByteArray &sysRoot,
                                               const KernelFileReader &read,
                                               PciDisplayFunctions *known)
{
    NvidiaDisplayDevices devices;
    const QByteArray pciPath = sysRoot + "/bus/pci/devices/";
    const auto names = listDirectory(pciPath);
    PciDisplayFunctions listed;
    for (const QByteArray &name : names.value_or(std::vector<QByteArray>())) {
        const QByteArray device = pciPath + name + '/';
        std::optional<bool> isDisplay;
        if (known) {
            if (const auto found = known->constFind(name); found != known->cend())
                isDisplay = *found;
        }
        if (!isDisplay)
            isDisplay = isNvidiaDisplayFunction(device, read);
        if (!isDisplay)
            continue;
        listed.insert(name, *isDisplay);
        if (!*isDisplay)
            continue;
        if (deviceAsleep(device, read))
            ++devices.asleep;
        else
            ++devices.awake;
    }
    if (known)
        *known = std::move(listed);
    return devices;
}

LinuxGPUUsageProbe::LinuxGPUUsageProbe(QString sysRoot, QByteArray nvmlLibraryPath,
                                       KernelFileReader reader)
    : m_sysRoot(sysRoot.toLocal8Bit()), m_nvmlLibraryPath(std::move(nvmlLibraryPath)),
      m_read(std::move(reader))
{
}

std::vector<double> LinuxGPUUsageProbe::nvmlUtilisations(const NvidiaDisplayDevices &devices)
{
    if (devices.awake == 0 && m_nvml)
        m_nvml->endSession(); // let the last card that was awake sleep
    if (devices.awake == 0 && devices.asleep == 0)
        return {};
    if (!m_nvml) {
        m_nvml = NvmlLibrary::load(m_nvmlLibraryPath);
        if (!m_nvml)
            return {};
    }
    std::vector<double> values(static_cast<std::size_t>(devices.asleep), 0.0);
    if (devices.awake == 0 || !m_nvml->startSession())
        return values;
    std::optional<std::vector<double>> busy = m_nvml->utilisations();
    if (!busy) {
        // The session broke (driver unloaded or reset): end it and start a
        // new one on the next tick.
        m_nvml->endSession();
        return values;
    }
    values.insert(values.end(), busy->begin(), busy->end());
    return values;
}

SensorReading<double> LinuxGPUUsageProbe::sample()
{
    std::vector<GPUBusyValue> devices;
    // sysfs first: on a tie the sysfs source names the reading.
    for (const double percent : readAmdgpuBusyPercents(m_sysRoot, m_read))
        devices.push_back({percent, QStringLiteral("Linux GPU busy percent")});
    for (const double percent :
         nvmlUtilisations(countNvidiaDisplayDevices(m_sysRoot, m_read, &m_displayFunctions)))
        devices.push_back({percent, QStringLiteral("NVIDIA NVML")});
    return gpuUsageReading(devices, Words::tr("未发现可读取的 GPU 利用率通道"));
}
