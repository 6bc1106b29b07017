// What the store's ingest costs per sample on a busy desktop, and what one
// hour of history holds in memory.

#include "dashboard/DashboardStore.h"
#include "platform/PlatformFactory.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <unistd.h>

#include <memory>

namespace {

constexpr int kSources = 60;
constexpr int kProcessesPerSource = 10;
constexpr int kSamplesPerHour = 1800;

// The strings of one made-up process, made once: a probe that reuses the
// previous tick's strings for an unchanged process hands these out again.
struct ProcessStrings {
    QString executablePath;
    QString name;
    QString command;
    std::optional<QString> project;
};

std::vector<ProcessStrings> makeStrings()
{
    std::vector<ProcessStrings> strings;
    for (int source = 0; source < kSources; ++source) {
        for (int member = 0; member < kProcessesPerSource; ++member) {
            const QString name = member == 0
                                     ? QStringLiteral("zsh")
                                     : QStringLiteral("worker-%1-%2").arg(source).arg(member);
            strings.push_back({QStringLiteral("/usr/lib/toolchain/bin/") + name, name,
                               name + QStringLiteral(" run"),
                               QStringLiteral("project-%1").arg(source)});
        }
    }
    return strings;
}

// 600 processes in 60 lineages: a shell and nine workers each. `fresh`
// builds new strings per tick, as a reader that decodes every name anew;
// otherwise they are shared across ticks, as the process probe shares them.
// The first `busySources` sources run, with rates that move every tick; the
// others sleep (no CPU, no disk), as most of a desktop does.
QList<ProcessMetric> desktopTick(const std::vector<ProcessStrings> &strings, int tick, bool fresh,
                                 int busySources = kSources)
{
    QList<ProcessMetric> processes;
    processes.reserve(kSources * kProcessesPerSource);
    for (int source = 0; source < kSources; ++source) {
        const pid_t shell = 10'000 + source * 100;
        for (int member = 0; member < kProcessesPerSource; ++member) {
            const ProcessStrings &text =
                strings[std::size_t(source * kProcessesPerSource + member)];
            ProcessMetric process;
            process.identity.pid = shell + member;
            process.identity.startTime = TimePoint::fromSecondsSince1970(1.7e9 + source);
            process.parentPID = member == 0 ? 1 : shell;
            process.processGroupID = shell;
            // The current user's, so that ingest builds their termination targets.
            process.userID = ::getuid();
            if (fresh) {
                process.identity.executablePath = QString::fromUtf8(text.executablePath.toUtf8());
                process.name = QString::fromUtf8(text.name.toUtf8());
                process.command.command = QString::fromUtf8(text.command.toUtf8());
                process.command.project = QString::fromUtf8(text.project->toUtf8());
            } else {
                process.identity.executablePath = text.executablePath;
                process.name = text.name;
                process.command.command = text.command;
                process.command.project = text.project;
            }
            if (source < busySources) {
                process.cpuPercent = double((source * 7 + member * 3 + tick) % 40) * 0.5;
                process.diskBytesPerSecond = double((source + tick) % 5) * 100'000.0;
            }
            process.residentBytes = 50'000'000 + std::uint64_t(member) * 1'000'000;
            process.duration = 3600.0 + 2.0 * tick;
            processes.push_back(std::move(process));
        }
    }
    return processes;
}

std::unique_ptr<DashboardStore> makeStore()
{
    // Ingest never signals; the controller only decides which nodes could be offered.
    return std::make_unique<DashboardStore>(LiveSystemMonitor(makeSystemMetricSampler(), 2.0),
                                            makeProcessTerminationController());
}

SystemMetricSample sampleAt(int tick, QList<ProcessMetric> processes)
{
    SystemMetricSample sample;
    sample.timestamp = TimePoint::fromSecondsSince1970(1.7e9 + 2.0 * tick);
    sample.cpuUsage = SensorReading<double>::available(37.5, QStringLiteral("bench"));
    sample.processMetrics = std::move(processes);
    return sample;
}

// Wall time of one ingest: grouping, ranking, classification, assembly of
// 60 tasks with their trees, selection, history append. The samples are
// prepared beforehand, as the producer thread prepares them. The argument is
// the number of sources that run: all of them, the few of a quiet desktop,
// where the others keep their tasks, or none.
void BM_IngestDesktopSample(benchmark::State &state)
{
    const std::vector<ProcessStrings> strings = makeStrings();
    std::vector<SystemMetricSample> samples;
    for (int tick = 0; tick < 16; ++tick)
        samples.push_back(sampleAt(tick, desktopTick(strings, tick, false, int(state.range(0)))));
    auto store = makeStore();
    int tick = 0;
    for (auto _ : state) {
        SystemMetricSample sample = samples[std::size_t(tick % 16)];
        sample.timestamp = TimePoint::fromSecondsSince1970(1.7e9 + 2.0 * tick);
        store->ingest(sample);
        ++tick;
    }
    state.counters["tasks"] = double(store->allTasks().size());
    state.counters["processes"] = double(kSources * kProcessesPerSource);
}
BENCHMARK(BM_IngestDesktopSample)->Arg(kSources)->Arg(3)->Arg(0)->Unit(benchmark::kMillisecond);

std::size_t heapInUse()
{
    return mallinfo2().uordblks;
}

// Heap held by one hour of history: 1800 samples of 600 processes ingested
// through the store, measured as the growth of the heap in use between the
// first sample and the last (the store's tasks, latest sample and working
// state are there in both, so the difference is the history). The history
// keeps readings, not process lists: the one list alive is the latest
// sample's, whatever the strings cost.
void BM_HistoryMemoryForOneHour(benchmark::State &state)
{
    const std::vector<ProcessStrings> strings = makeStrings();
    double heldBytes = 0;
    for (auto _ : state) {
        auto store = makeStore();
        store->ingest(sampleAt(0, desktopTick(strings, 0, true)));
        const std::size_t before = heapInUse();
        for (int tick = 1; tick < kSamplesPerHour; ++tick)
            store->ingest(sampleAt(tick, desktopTick(strings, tick, true)));
        const std::size_t after = heapInUse();
        heldBytes = double(after) - double(before);
        if (store->sampleHistory().samples().size() != std::size_t(kSamplesPerHour))
            state.SkipWithError("the history did not keep the whole hour");
    }
    state.counters["heldMB"] = heldBytes / 1e6;
    state.counters["bytesPerSample"] = heldBytes / double(kSamplesPerHour - 1);
    state.counters["sizeofSample"] = double(sizeof(SystemMetricSample));
}
BENCHMARK(BM_HistoryMemoryForOneHour)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
