#include "platform/linux/LinuxGPUUsageProbe.h"

#include "probes/GPUUsage.h"
#include "sampling/Text.h"

#include <algorithm>

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
        const FileReadResult power = read(device + "power/runtime_status");
        if (power.bytes && power.bytes->trimmed() == "suspended") {
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

LinuxGPUUsageProbe::LinuxGPUUsageProbe(QString sysRoot, QByteArray nvmlLibraryPath,
                                       KernelFileReader reader)
    : m_sysRoot(sysRoot.toLocal8Bit()), m_nvmlLibraryPath(std::move(nvmlLibraryPath)),
      m_read(std::move(reader))
{
}

std::vector<double> LinuxGPUUsageProbe::nvmlUtilisations()
{
    if (!m_nvml) {
        m_nvml = NvmlLibrary::open(m_nvmlLibraryPath);
        if (!m_nvml)
            return {};
    }
    std::optional<std::vector<double>> values = m_nvml->utilisations();
    if (!values) {
        // The session broke (driver unloaded or reset): end it and open a
        // new one on the next tick.
        m_nvml.reset();
        return {};
    }
    return std::move(*values);
}

SensorReading<double> LinuxGPUUsageProbe::sample()
{
    std::vector<GPUBusyValue> devices;
    // sysfs first: on a tie the sysfs source names the reading.
    for (const double percent : readAmdgpuBusyPercents(m_sysRoot, m_read))
        devices.push_back({percent, QStringLiteral("Linux GPU busy percent")});
    for (const double percent : nvmlUtilisations())
        devices.push_back({percent, QStringLiteral("NVIDIA NVML")});
    return gpuUsageReading(devices, kwText("未发现可读取的 GPU 利用率通道"));
}
