#include "process/ApplicationLoad.h"

#include <algorithm>

double loadScore(const ApplicationLoad &load)
{
    double cpu = 0.0;
    double disk = 0.0;
    for (const ProcessMetric &process : load.processes) {
        cpu += process.cpuPercent;
        disk += process.diskBytesPerSecond;
    }
    return cpu + std::min(50.0, disk / 1'000'000.0);
}

double loadDuration(const ApplicationLoad &load)
{
    if (load.processes.empty())
        return load.target.duration;
    double longest = load.processes.front().duration;
    for (const ProcessMetric &process : load.processes)
        longest = std::max(longest, process.duration);
    return longest;
}
