#include "platform/PlatformFactory.h"

#include "platform/linux/ProcMeminfoMemoryProbe.h"
#include "platform/linux/ProcStatCPUUsageProbe.h"
#include "platform/linux/ThermalZoneThermalStateProbe.h"
#include "sampling/Text.h"

namespace {

// Sources whose Linux readers have not been built yet say so in their own words.
QString notConnected()
{
    return kwText("尚未接入此数据源");
}

struct NotConnectedSensorProbe final : AppleSensorProbing {
    AppleSensorReadings read() override
    {
        return {SensorReading<double>::unsupported(notConnected()),
                SensorReading<double>::unsupported(notConnected())};
    }
};
struct NotConnectedGPUProbe final : GPUUsageProbing {
    SensorReading<double> sample() override
    {
        return SensorReading<double>::unsupported(notConnected());
    }
};
struct NotConnectedDiskProbe final : DiskIOProbing {
    SensorReading<double> sample(TimePoint) override
    {
        return SensorReading<double>::unsupported(notConnected());
    }
};
struct NotConnectedNetworkProbe final : NetworkIOProbing {
    SensorReading<NetworkThroughput> sample(TimePoint) override
    {
        return SensorReading<NetworkThroughput>::unsupported(notConnected());
    }
};
struct NotConnectedProcessProbe final : ProcessMetricsProbing {
    QList<ProcessMetric> sample(TimePoint) override { return {}; }
};

} // namespace

SystemMetricSampler::Probes makePlatformProbes(const PlatformRoots &roots)
{
    SystemMetricSampler::Probes probes;
    probes.cpuProbe = std::make_unique<ProcStatCPUUsageProbe>(roots.procRoot);
    probes.thermalProbe = std::make_unique<ThermalZoneThermalStateProbe>(roots.sysRoot);
    probes.sensorProbe = std::make_unique<NotConnectedSensorProbe>();
    probes.gpuProbe = std::make_unique<NotConnectedGPUProbe>();
    probes.diskProbe = std::make_unique<NotConnectedDiskProbe>();
    probes.memoryProbe = std::make_unique<ProcMeminfoMemoryProbe>(roots.procRoot);
    probes.networkProbe = std::make_unique<NotConnectedNetworkProbe>();
    probes.processProbe = std::make_unique<NotConnectedProcessProbe>();
    return probes;
}

std::shared_ptr<SystemMetricSampler> makeSystemMetricSampler(const PlatformRoots &roots)
{
    return std::make_shared<SystemMetricSampler>(makePlatformProbes(roots));
}
