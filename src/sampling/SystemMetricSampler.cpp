#include "sampling/SystemMetricSampler.h"

#include <cassert>

SystemMetricSampler::SystemMetricSampler(Probes probes) : m_probes(std::move(probes))
{
    assert(m_probes.cpuProbe && m_probes.thermalProbe && m_probes.sensorProbe &&
           m_probes.gpuProbe && m_probes.diskProbe && m_probes.memoryProbe &&
           m_probes.networkProbe && m_probes.processProbe);
}

SystemMetricSample SystemMetricSampler::sample(TimePoint now)
{
    std::lock_guard serial(m_serial);

    // The order is fixed: sensors first, then the rest in field order, processes last.
    AppleSensorReadings sensors = m_probes.sensorProbe->read();

    SystemMetricSample result;
    result.timestamp = now;
    result.cpuUsage = m_probes.cpuProbe->sample();
    result.thermalState = m_probes.thermalProbe->read();
    result.temperatureCelsius = std::move(sensors.temperature);
    result.fanRPM = std::move(sensors.fan);
    result.gpuUsage = m_probes.gpuProbe->sample();
    result.diskBytesPerSecond = m_probes.diskProbe->sample(now);
    result.memoryUsage = m_probes.memoryProbe->sample();
    result.networkThroughput = m_probes.networkProbe->sample(now);
    result.processMetrics = m_probes.processProbe->sample(now);
    return result;
}
