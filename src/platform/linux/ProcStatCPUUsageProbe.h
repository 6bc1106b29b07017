#pragma once

#include "probes/CPUUsageTracker.h"
#include "sampling/Probing.h"

#include <QString>

// Machine-wide CPU usage from the first "cpu" line of <procRoot>/stat.
class ProcStatCPUUsageProbe final : public CPUUsageProbing {
public:
    explicit ProcStatCPUUsageProbe(QString procRoot = QStringLiteral("/proc"));
    SensorReading<double> sample() override;

private:
    QByteArray m_statPath;
    CPUUsageTracker m_tracker;
};
