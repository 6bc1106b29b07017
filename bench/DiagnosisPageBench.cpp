// The live diagnosis page's cost per tick at 1440 by 900. Four runs per
// shape: the store's ingest alone (its own share); ingest with the page in
// its window, which rebuilds from the store's one change signal and then
// lays out and repaints what changed, as the running program does; the same
// followed by a full repaint of the whole page; and ingest followed by 0.3 s
// of the window's own event loop, which runs its deferred repaint and the
// rows' motion as the program does (CPU time only: the wait costs nothing).
//
//   600 processes in 60 sources, every source listed (scope "全部来源");
//   one source of 400 processes ten levels deep, every level open.

#include "dashboard/DashboardStore.h"
#include "platform/PlatformFactory.h"
#include "presentation/diagnosis/DiagnosisWorkspace.h"
#include "presentation/diagnosis/LiveDiagnosisPage.h"
#include "presentation/diagnosis/ProcessCompositionView.h"
#include "presentation/diagnosis/ProcessTree.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/DashboardWindow.h"
#include "snapshot/DashboardSnapshot.h"

#include <QApplication>
#include <QEventLoop>
#include <QImage>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <cmath>
#include <unistd.h>

namespace {

// A process of the current user that never exists on the machine: pids far
// above any real one, so nothing here can point at a real process.
ProcessMetric madeUpProcess(pid_t pid, pid_t parent, const QString &name, double cpu)
{
    ProcessMetric process;
    process.identity.pid = pid;
    process.identity.startTime = TimePoint::fromSecondsSince1970(1000.0 + pid);
    process.identity.executablePath = QStringLiteral("/usr/bin/") + name;
    process.parentPID = parent;
    process.processGroupID = pid;
    process.userID = ::getuid();
    process.name = name;
    process.command.command = name + QStringLiteral(" --jobs 4 src/thermal.cpp");
    process.command.project = QStringLiteral("kiln-api");
    process.cpuPercent = cpu;
    process.residentBytes = 40'000'000;
    process.duration = 600.0;
    return process;
}

constexpr pid_t kFirstPID = 3'000'000;

// 60 lineages of 10: a root and nine workers.
QList<ProcessMetric> sixtySources()
{
    QList<ProcessMetric> processes;
    for (int source = 0; source < 60; ++source) {
        const pid_t root = kFirstPID + source * 10;
        processes.append(madeUpProcess(root, 1, QStringLiteral("make%1").arg(source), 0.5));
        for (int worker = 1; worker < 10; ++worker) {
            processes.append(madeUpProcess(root + worker, root, QStringLiteral("cc1plus"),
                                           1.0 + (source * 7 + worker) % 30));
        }
    }
    return processes;
}

// One lineage of 400: a chain ten levels deep, each level with 39 leaves;
// the busiest leaf hangs below the deepest level.
QList<ProcessMetric> oneDeepSource()
{
    QList<ProcessMetric> processes;
    pid_t next = kFirstPID;
    pid_t parent = 1;
    for (int level = 0; level < 10; ++level) {
        const pid_t chain = next++;
        processes.append(madeUpProcess(chain, parent, QStringLiteral("ninja"), 0.2));
        for (int leaf = 0; leaf < 39; ++leaf) {
            const double cpu = level == 9 && leaf == 0 ? 95.0 : 0.5 + leaf % 5;
            processes.append(madeUpProcess(next++, chain, QStringLiteral("clang++"), cpu));
        }
        parent = chain;
    }
    return processes;
}

// The next tick: every process's CPU moves a little, as on a real machine.
SystemMetricSample tickOf(const QList<ProcessMetric> &processes, int tick)
{
    SystemMetricSample sample;
    sample.timestamp = TimePoint::fromSecondsSince1970(1'800'000'000.0 + tick * 2.0);
    sample.cpuUsage = SensorReading<double>::available(40 + tick % 7, QStringLiteral("bench"));
    sample.temperatureCelsius =
        SensorReading<double>::available(60 + tick % 5, QStringLiteral("bench"));
    sample.thermalState = SystemThermalState::nominal;
    sample.processMetrics = processes;
    for (qsizetype i = 0; i < sample.processMetrics.size(); ++i) {
        ProcessMetric &process = sample.processMetrics[i];
        process.cpuPercent *= 1.0 + 0.05 * std::sin(tick * 0.9 + static_cast<double>(i));
    }
    return sample;
}

enum class Shape { sixtySources, oneDeepSource };
enum class Run { ingestOnly, withPage, withFullRepaint, withEventLoop };

void runTicks(benchmark::State &state, Shape shape, Run run)
{
    const bool withPage = run != Run::ingestOnly;
    const QList<ProcessMetric> processes =
        shape == Shape::sixtySources ? sixtySources() : oneDeepSource();
    // The controller is the real one, but nothing here asks it to act.
    DashboardStore store(LiveSystemMonitor(makeSystemMetricSampler(), 2.0),
                         makeProcessTerminationController());
    int tick = 0;
    store.ingest(tickOf(processes, tick++));
    store.ingest(tickOf(processes, tick++));

    std::unique_ptr<DashboardWindow> window;
    LiveDiagnosisPage *page = nullptr;
    QImage image(1440, 900, QImage::Format_ARGB32_Premultiplied);
    if (withPage) {
        window = std::make_unique<DashboardWindow>(store, DashboardSection::liveDiagnosis, [] {});
        window->resize(1440, 900);
        window->show();
        settleEvents(100);
        page = qobject_cast<LiveDiagnosisPage *>(window->shell()->currentPage());
        page->setScope(ProcessListScope::all);
        if (shape == Shape::oneDeepSource) {
            // Open every level: the whole source is on rows.
            ProcessTreeView *tree = page->workspace()->composition()->treeView();
            for (const ProcessMetric &process : processes) {
                if (process.name == QLatin1String("ninja") &&
                    !page->workspace()->composition()->expansion().isExpanded(process.identity.pid))
                    emit tree->toggleRequested(process.identity.pid);
            }
            state.counters["rows"] = tree->treeModel()->rowCount();
        }
        settleEvents(50);
        image = QImage(page->size(), QImage::Format_ARGB32_Premultiplied);
    }
    for (auto _ : state) {
        store.ingest(tickOf(processes, tick++));
        if (page) {
            // Layout requests and the window's repaint of what changed.
            QApplication::sendPostedEvents();
            if (run == Run::withFullRepaint) {
                page->render(&image);
                benchmark::DoNotOptimize(image.constBits());
            }
            if (run == Run::withEventLoop) {
                QEventLoop loop;
                QTimer::singleShot(300, &loop, &QEventLoop::quit);
                loop.exec();
            }
        }
    }
    state.SetLabel(run == Run::ingestOnly        ? "ingest only"
                   : run == Run::withPage        ? "ingest + page rebuild + repaint of what changed"
                   : run == Run::withFullRepaint ? "... + full repaint of the page"
                                                 : "ingest + 0.3 s of the event loop");
}

void BM_DiagnosisTick_SixtySources(benchmark::State &state)
{
    runTicks(state, Shape::sixtySources, static_cast<Run>(state.range(0)));
}
void BM_DiagnosisTick_OneDeepSource(benchmark::State &state)
{
    runTicks(state, Shape::oneDeepSource, static_cast<Run>(state.range(0)));
}

// CPU time is the figure to read: it does not count waiting for a busy
// machine's other work.
BENCHMARK(BM_DiagnosisTick_SixtySources)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DiagnosisTick_OneDeepSource)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
// A fixed count: each of these waits 0.3 s.
BENCHMARK(BM_DiagnosisTick_SixtySources)->Arg(3)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DiagnosisTick_OneDeepSource)->Arg(3)->Iterations(20)->Unit(benchmark::kMillisecond);

} // namespace
