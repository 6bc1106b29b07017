#include "process/ApplicationLoad.h"

#include <algorithm>

LoadTotals loadTotals(const ApplicationLoad &load)
{
    LoadTotals totals;
    for (const ProcessMetric &process : load.processes) {
        totals.cpuPercent += process.cpuPercent;
        totals.diskBytesPerSecond += process.diskBytesPerSecond;
        totals.residentBytes += process.residentBytes;
    }
    return totals;
}

double loadScore(const ApplicationLoad &load)
{
    const LoadTotals totals = loadTotals(load);
    return totals.cpuPercent + std::min(50.0, totals.diskBytesPerSecond / 1'000'000.0);
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
