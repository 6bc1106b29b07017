#include "platform/linux/ProcStatCPUUsageProbe.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/ProcStat.h"
#include "sampling/Text.h"

ProcStatCPUUsageProbe::ProcStatCPUUsageProbe(QString procRoot)
    : m_statPath((procRoot + QStringLiteral("/stat")).toLocal8Bit()),
      m_tracker(QStringLiteral("Linux /proc/stat CPU ticks"), kwText("/proc/stat 读取失败"))
{
}

SensorReading<double> ProcStatCPUUsageProbe::sample()
{
    const FileReadResult file = readKernelFile(m_statPath);
    std::optional<CPUTickSnapshot> ticks;
    if (file.bytes)
        ticks = parseProcStatCPUTicks(asView(*file.bytes));
    return m_tracker.update(ticks);
}
