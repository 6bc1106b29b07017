#include "platform/linux/ProcStatCPUUsageProbe.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/ProcStat.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProcStatCPUUsageProbe)
};

} // namespace

ProcStatCPUUsageProbe::ProcStatCPUUsageProbe(QString procRoot)
    : m_statPath((procRoot + QStringLiteral("/stat")).toLocal8Bit()),
      m_tracker(QStringLiteral("Linux /proc/stat CPU ticks"), Words::tr("/proc/stat 读取失败"))
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
