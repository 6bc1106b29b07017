// The sampling spine's own costs: one tick of the sampler on this machine
// without the process probe, and the chart query over a full hour.

#include "platform/PlatformFactory.h"
#include "sampling/MetricSampleHistory.h"

#include <benchmark/benchmark.h>

namespace {

struct NoProcesses final : ProcessMetricsProbing {
    QList<ProcessMetric> sample(TimePoint) override { return {}; }
};

// CPU time of the calling thread per tick of every machine-wide probe (CPU,
// thermal state, sensors, GPU, disk, memory, network) through the sampler,
// which runs them on the thread that asks for the sample. The process probe,
// whose cost grows with the process count, has a benchmark of its own.
void BM_SamplerTickWithoutProcesses(benchmark::State &state)
{
    SystemMetricSampler::Probes probes = makePlatformProbes();
    probes.processProbe = std::make_unique<NoProcesses>();
    SystemMetricSampler sampler(std::move(probes));
    double seconds = 1.7e9;
    for (auto _ : state) {
        seconds += 2.0;
        benchmark::DoNotOptimize(sampler.sample(TimePoint::fromSecondsSince1970(seconds)));
    }
}
BENCHMARK(BM_SamplerTickWithoutProcesses)->Unit(benchmark::kMicrosecond);

QList<ProcessMetric> processes(int count, int tick)
{
    QList<ProcessMetric> list;
    list.reserve(count);
    for (int i = 0; i < count; ++i) {
        ProcessMetric process;
        process.identity.pid = 1000 + i;
        process.identity.executablePath = QStringLiteral("/usr/bin/worker");
        process.name = QStringLiteral("worker");
        process.command.command = QStringLiteral("worker run");
        process.cpuPercent = (i + tick) % 7;
        list.push_back(std::move(process));
    }
    return list;
}

// An hour of samples (1800 at 2-second spacing), each with its own list of
// processes, queried over the whole hour: 361 samples come back.
void BM_RecentSamplesOverAFullHour(benchmark::State &state)
{
    const int processCount = static_cast<int>(state.range(0));
    MetricSampleHistory history(3600.0);
    for (int tick = 0; tick < 1800; ++tick) {
        SystemMetricSample sample;
        sample.timestamp = TimePoint::fromSecondsSince1970(1.7e9 + 2.0 * tick);
        sample.cpuUsage = SensorReading<double>::available(tick % 100, QStringLiteral("bench"));
        sample.processMetrics = processes(processCount, tick);
        history.append(std::move(sample));
    }
    for (auto _ : state) {
        auto recent = history.recentSamples(3600.0);
        benchmark::DoNotOptimize(recent.data());
        state.counters["returned"] = double(recent.size());
    }
}
BENCHMARK(BM_RecentSamplesOverAFullHour)->Arg(0)->Arg(600)->Unit(benchmark::kMicrosecond);

} // namespace
