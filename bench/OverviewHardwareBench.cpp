// The overview's and the hardware page's repaint after one tick, with a full
// hour of history behind the store (1800 samples at 2 s): the page reads the
// store afresh (trend points, cards, lists, table) and is painted whole.

#include "dashboard/DashboardStore.h"
#include "platform/PlatformFactory.h"
#include "presentation/hardware/HardwareMonitorView.h"
#include "presentation/overview/OverviewDashboardView.h"
#include "presentation/shell/DashboardShell.h"
#include "snapshot/DashboardSnapshot.h"

#include <QApplication>
#include <QImage>
#include <QSignalBlocker>

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

namespace {

constexpr int kSamplesPerHour = 1800;
constexpr double kStart = 1.8e9;

// A made-up machine at tick `tick`: every reading available and moving, four
// lineages of three processes, and a hot spell every ten minutes so that the
// incident log and the attention list have rows.
SystemMetricSample madeUpSample(int tick)
{
    const double phase = tick * 0.1;
    const bool hot = tick % 300 < 40;
    SystemMetricSample sample;
    sample.timestamp = TimePoint::fromSecondsSince1970(kStart + 2.0 * tick);
    sample.thermalState = hot ? SystemThermalState::fair : SystemThermalState::nominal;
    const QString source = QStringLiteral("bench");
    sample.cpuUsage =
        SensorReading<double>::available((hot ? 70 : 20) + 5 * std::sin(phase), source);
    sample.temperatureCelsius =
        SensorReading<double>::available((hot ? 82 : 55) + 2 * std::sin(phase / 3), source);
    sample.fanRPM =
        SensorReading<double>::available((hot ? 4200 : 1900) + 100 * std::sin(phase), source);
    sample.gpuUsage = SensorReading<double>::available(15 + 5 * std::sin(phase / 2), source);
    sample.diskBytesPerSecond =
        SensorReading<double>::available(3e6 + 2e6 * std::sin(phase / 5), source);
    sample.memoryUsage = SensorReading<SystemMemoryUsage>::available(
        {static_cast<std::uint64_t>(9e9 + 1e8 * std::sin(phase / 7)), 16'000'000'000ULL}, source);
    sample.networkThroughput = SensorReading<NetworkThroughput>::available({1.2e6, 2.4e5}, source);
    for (int lineage = 0; lineage < 4; ++lineage) {
        const pid_t root = 1000 + lineage * 10;
        for (int member = 0; member < 3; ++member) {
            ProcessMetric process;
            process.identity.pid = root + member;
            process.identity.startTime = TimePoint::fromSecondsSince1970(kStart - 600 + root);
            process.identity.executablePath = QStringLiteral("/usr/bin/worker%1").arg(lineage);
            process.parentPID = member == 0 ? 1 : root;
            process.processGroupID = root;
            process.userID = 1000;
            process.name = QStringLiteral("worker%1").arg(lineage);
            process.command.command = process.name;
            process.cpuPercent = (hot && lineage == 0 ? 60.0 : 4.0 + lineage * 3) + member;
            process.residentBytes = 80'000'000;
            process.diskBytesPerSecond = lineage * 1e5;
            process.duration = 600.0 + 2.0 * tick;
            sample.processMetrics.append(process);
        }
    }
    return sample;
}

std::unique_ptr<DashboardStore> storeWithAnHour()
{
    // Never started: the store sees only what the benchmark ingests.
    auto store = std::make_unique<DashboardStore>(LiveSystemMonitor(makeSystemMetricSampler(), 2.0),
                                                  makeProcessTerminationController());
    for (int tick = 0; tick < kSamplesPerHour; ++tick)
        store->ingest(madeUpSample(tick));
    return store;
}

enum class Paint {
    // What a tick costs the page in the running window: it reads the store,
    // the layout settles, and the window repaints what changed.
    changed,
    // The same, then the whole page painted again: the cost of an expose.
    whole,
};

// One tick is ingested with the store's signals held, so the ingest (the
// store's own cost) is not timed and the page has not seen it yet; then the
// page reads the store and is painted.
template <typename Page>
void repaintAfterOneTick(benchmark::State &state, DashboardSection section, Paint paint)
{
    auto store = storeWithAnHour();
    DashboardShell shell(*store, section, [] {});
    shell.resize(1440, 900);
    shell.show();
    settleEvents(100);
    auto *page = qobject_cast<Page *>(shell.currentPage());
    if (!page) {
        state.SkipWithError("the shell shows another page");
        return;
    }
    QImage image(page->size(), QImage::Format_ARGB32_Premultiplied);
    int tick = kSamplesPerHour;
    for (auto _ : state) {
        state.PauseTiming();
        {
            const QSignalBlocker blocker(store.get());
            store->ingest(madeUpSample(tick++));
        }
        state.ResumeTiming();
        page->refresh();
        // Layout requests and the window's update request: the repaint.
        QApplication::sendPostedEvents();
        if (paint == Paint::whole) {
            page->render(&image);
            benchmark::DoNotOptimize(image.constBits());
        }
    }
    state.counters["historySamples"] = double(store->sampleHistory().samples().size());
}

void BM_OverviewRepaintAfterOneTick(benchmark::State &state)
{
    repaintAfterOneTick<OverviewDashboardView>(state, DashboardSection::overview,
                                               static_cast<Paint>(state.range(0)));
    state.SetLabel(state.range(0) == 0 ? "changed" : "changed+whole page");
}
BENCHMARK(BM_OverviewRepaintAfterOneTick)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2.0);

void BM_HardwareRepaintAfterOneTick(benchmark::State &state)
{
    repaintAfterOneTick<HardwareMonitorView>(state, DashboardSection::hardwareMonitor,
                                             static_cast<Paint>(state.range(0)));
    state.SetLabel(state.range(0) == 0 ? "changed" : "changed+whole page");
}
BENCHMARK(BM_HardwareRepaintAfterOneTick)
    ->DenseRange(0, 1)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2.0);

} // namespace
