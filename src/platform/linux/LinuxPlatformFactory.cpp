#include "platform/PlatformFactory.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/GetifaddrsNetworkProbe.h"
#include "platform/linux/HwmonSensorProbe.h"
#include "platform/linux/LinuxGPUUsageProbe.h"
#include "platform/linux/PidfdSignalSender.h"
#include "platform/linux/ProcDiskstatsDiskProbe.h"
#include "platform/linux/ProcMeminfoMemoryProbe.h"
#include "platform/linux/ProcStatCPUUsageProbe.h"
#include "platform/linux/ProcfsProcessIdentityReader.h"
#include "platform/linux/ProcfsProcessMetricReader.h"
#include "platform/linux/ThermalZoneThermalStateProbe.h"
#include "process/ProcessMetricsProbe.h"

#include <unistd.h>

SystemMetricSampler::Probes makePlatformProbes(const PlatformRoots &roots)
{
    SystemMetricSampler::Probes probes;
    probes.cpuProbe = std::make_unique<ProcStatCPUUsageProbe>(roots.procRoot);
    probes.thermalProbe = std::make_unique<ThermalZoneThermalStateProbe>(roots.sysRoot);
    probes.sensorProbe = std::make_unique<HwmonSensorProbe>(roots.sysRoot);
    probes.gpuProbe = std::make_unique<LinuxGPUUsageProbe>(roots.sysRoot);
    probes.diskProbe = std::make_unique<ProcDiskstatsDiskProbe>(roots.procRoot, roots.sysRoot);
    probes.memoryProbe = std::make_unique<ProcMeminfoMemoryProbe>(roots.procRoot);
    probes.networkProbe = std::make_unique<GetifaddrsNetworkProbe>(roots.sysRoot);
    probes.processProbe =
        std::make_unique<ProcessMetricsProbe>(std::make_unique<ProcfsProcessMetricReader>(
            roots.procRoot, xdgDataDirectoriesFromEnvironment(), currentUserHomeDirectory()));
    return probes;
}

std::shared_ptr<SystemMetricSampler> makeSystemMetricSampler(const PlatformRoots &roots)
{
    return std::make_shared<SystemMetricSampler>(makePlatformProbes(roots));
}

ProcessTerminationController makeProcessTerminationController(const PlatformRoots &roots)
{
    return ProcessTerminationController(
        std::make_shared<ProcfsProcessIdentityReader>(roots.procRoot),
        std::make_shared<PidfdSignalSender>(), ::getuid(), ::getpid());
}
