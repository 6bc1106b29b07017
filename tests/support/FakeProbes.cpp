#include "support/FakeProbes.h"

#include <utility>

void ProbeCallLog::record(std::string probe, std::optional<TimePoint> time)
{
    std::function<void()> hook;
    {
        std::lock_guard lock(mutex);
        calls.push_back({std::move(probe), time});
        hook = onEveryCall;
    }
    if (hook)
        hook();
}

std::vector<ProbeCallLog::Call> ProbeCallLog::snapshot()
{
    std::lock_guard lock(mutex);
    return calls;
}

std::size_t ProbeCallLog::count(const std::string &probe)
{
    std::lock_guard lock(mutex);
    std::size_t n = 0;
    for (const auto &call : calls)
        n += call.probe == probe ? 1 : 0;
    return n;
}

namespace {

struct FakeCPU final : CPUUsageProbing {
    std::shared_ptr<ProbeCallLog> log;
    bool warmed = false;
    SensorReading<double> sample() override
    {
        log->record("cpu");
        if (!warmed) {
            warmed = true;
            return SensorReading<double>::warmingUp();
        }
        return SensorReading<double>::available(25.0, QStringLiteral("fake cpu"));
    }
};
struct FakeThermal final : ThermalStateProbing {
    std::shared_ptr<ProbeCallLog> log;
    SystemThermalState read() override
    {
        log->record("thermal");
        return SystemThermalState::nominal;
    }
};
struct FakeSensors final : AppleSensorProbing {
    std::shared_ptr<ProbeCallLog> log;
    AppleSensorReadings read() override
    {
        log->record("sensor");
        return {SensorReading<double>::unsupported(QStringLiteral("no sensor")),
                SensorReading<double>::unsupported(QStringLiteral("no fan"))};
    }
};
struct FakeGPU final : GPUUsageProbing {
    std::shared_ptr<ProbeCallLog> log;
    SensorReading<double> sample() override
    {
        log->record("gpu");
        return SensorReading<double>::unsupported(QStringLiteral("no gpu"));
    }
};
struct FakeDisk final : DiskIOProbing {
    std::shared_ptr<ProbeCallLog> log;
    bool warmed = false;
    SensorReading<double> sample(TimePoint now) override
    {
        log->record("disk", now);
        if (!std::exchange(warmed, true))
            return SensorReading<double>::warmingUp();
        return SensorReading<double>::available(2e6, QStringLiteral("fake disk"));
    }
};
struct FakeMemory final : MemoryUsageProbing {
    std::shared_ptr<ProbeCallLog> log;
    SensorReading<SystemMemoryUsage> sample() override
    {
        log->record("memory");
        return SensorReading<SystemMemoryUsage>::available({100, 400}, QStringLiteral("fake"));
    }
};
struct FakeNetwork final : NetworkIOProbing {
    std::shared_ptr<ProbeCallLog> log;
    bool warmed = false;
    SensorReading<NetworkThroughput> sample(TimePoint now) override
    {
        log->record("network", now);
        if (!std::exchange(warmed, true))
            return SensorReading<NetworkThroughput>::warmingUp();
        return SensorReading<NetworkThroughput>::available({1e3, 2e3}, QStringLiteral("fake net"));
    }
};
struct FakeProcesses final : ProcessMetricsProbing {
    std::shared_ptr<ProbeCallLog> log;
    QList<ProcessMetric> processes;
    QList<ProcessMetric> sample(TimePoint now) override
    {
        log->record("process", now);
        return processes;
    }
};

template <typename Fake> std::unique_ptr<Fake> make(const std::shared_ptr<ProbeCallLog> &log)
{
    auto fake = std::make_unique<Fake>();
    fake->log = log;
    return fake;
}

} // namespace

std::shared_ptr<SystemMetricSampler> makeFakeSampler(std::shared_ptr<ProbeCallLog> log,
                                                     QList<ProcessMetric> processes)
{
    SystemMetricSampler::Probes probes;
    probes.cpuProbe = make<FakeCPU>(log);
    probes.thermalProbe = make<FakeThermal>(log);
    probes.sensorProbe = make<FakeSensors>(log);
    probes.gpuProbe = make<FakeGPU>(log);
    probes.diskProbe = make<FakeDisk>(log);
    probes.memoryProbe = make<FakeMemory>(log);
    probes.networkProbe = make<FakeNetwork>(log);
    auto processProbe = make<FakeProcesses>(log);
    processProbe->processes = std::move(processes);
    probes.processProbe = std::move(processProbe);
    return std::make_shared<SystemMetricSampler>(std::move(probes));
}
