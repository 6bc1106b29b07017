#include "support/FakeProbes.h"

#include <algorithm>
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
    return std::size_t(std::count_if(calls.begin(), calls.end(),
                                     [&](const Call &call) { return call.probe == probe; }));
}

namespace {

// What a fake probe answers: logged under `name`, `first` on the first call
// when there is one (a rate probe warming up), `value` on every other.
template <typename Value> struct Answer {
    std::shared_ptr<ProbeCallLog> log;
    std::string name;
    Value value;
    std::optional<Value> first;

    Value operator()(std::optional<TimePoint> now = std::nullopt)
    {
        log->record(name, now);
        if (first)
            return *std::exchange(first, std::nullopt);
        return value;
    }
};

using Reading = SensorReading<double>;

struct FakeCPU final : CPUUsageProbing {
    Answer<Reading> answer;
    Reading sample() override { return answer(); }
};
struct FakeThermal final : ThermalStateProbing {
    Answer<SystemThermalState> answer;
    SystemThermalState read() override { return answer(); }
};
struct FakeSensors final : AppleSensorProbing {
    Answer<AppleSensorReadings> answer;
    AppleSensorReadings read() override { return answer(); }
};
struct FakeGPU final : GPUUsageProbing {
    Answer<Reading> answer;
    Reading sample() override { return answer(); }
};
struct FakeDisk final : DiskIOProbing {
    Answer<Reading> answer;
    Reading sample(TimePoint now) override { return answer(now); }
};
struct FakeMemory final : MemoryUsageProbing {
    Answer<SensorReading<SystemMemoryUsage>> answer;
    SensorReading<SystemMemoryUsage> sample() override { return answer(); }
};
struct FakeNetwork final : NetworkIOProbing {
    Answer<SensorReading<NetworkThroughput>> answer;
    SensorReading<NetworkThroughput> sample(TimePoint now) override { return answer(now); }
};
struct FakeProcesses final : ProcessMetricsProbing {
    Answer<QList<ProcessMetric>> answer;
    QList<ProcessMetric> sample(TimePoint now) override { return answer(now); }
};

template <typename Fake, typename Value> std::unique_ptr<Fake> make(Answer<Value> answer)
{
    auto fake = std::make_unique<Fake>();
    fake->answer = std::move(answer);
    return fake;
}

} // namespace

std::shared_ptr<SystemMetricSampler> makeFakeSampler(std::shared_ptr<ProbeCallLog> log,
                                                     QList<ProcessMetric> processes)
{
    const Reading warmingUp = Reading::warmingUp();
    const auto networkWarmingUp = SensorReading<NetworkThroughput>::warmingUp();
    SystemMetricSampler::Probes probes;
    probes.cpuProbe =
        make<FakeCPU, Reading>({log, "cpu", Reading::available(25.0, "fake cpu"), warmingUp});
    probes.thermalProbe =
        make<FakeThermal, SystemThermalState>({log, "thermal", SystemThermalState::nominal, {}});
    probes.sensorProbe = make<FakeSensors, AppleSensorReadings>(
        {log, "sensor", {Reading::unsupported("no sensor"), Reading::unsupported("no fan")}, {}});
    probes.gpuProbe = make<FakeGPU, Reading>({log, "gpu", Reading::unsupported("no gpu"), {}});
    probes.diskProbe =
        make<FakeDisk, Reading>({log, "disk", Reading::available(2e6, "fake disk"), warmingUp});
    probes.memoryProbe = make<FakeMemory, SensorReading<SystemMemoryUsage>>(
        {log, "memory", SensorReading<SystemMemoryUsage>::available({100, 400}, "fake"), {}});
    probes.networkProbe = make<FakeNetwork, SensorReading<NetworkThroughput>>(
        {log, "network", SensorReading<NetworkThroughput>::available({1e3, 2e3}, "fake net"),
         networkWarmingUp});
    probes.processProbe =
        make<FakeProcesses, QList<ProcessMetric>>({log, "process", std::move(processes), {}});
    return std::make_shared<SystemMetricSampler>(std::move(probes));
}
