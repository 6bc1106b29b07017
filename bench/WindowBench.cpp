// The window's cost per tick: views update from the store's signals, then the
// whole window is painted once, on each page, at 1440 by 900.

#include "dashboard/DashboardStore.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/DashboardWindow.h"
#include "snapshot/DashboardSnapshot.h"
#include "snapshot/ScriptedStore.h"

#include <QApplication>
#include <QImage>

#include <benchmark/benchmark.h>

namespace {

void BM_WindowTickAndFullRepaint(benchmark::State &state)
{
    const auto section = static_cast<DashboardSection>(state.range(0));
    ScriptedStore scripted;
    DashboardStore &store = scripted.store();
    DashboardWindow window(store, section, [] {});
    window.resize(1440, 900);
    window.show();
    settleEvents(100);
    SystemMetricSample next = *store.latestSystemSample();
    QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        next.timestamp = next.timestamp.addingSeconds(2.0);
        // The tick as the window sees it: ingest emits the store's signals,
        // the views update, and the window is painted whole.
        store.ingest(next);
        QApplication::sendPostedEvents();
        window.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetLabel(dashboardSectionText(section).toStdString());
}

BENCHMARK(BM_WindowTickAndFullRepaint)
    ->DenseRange(0, 4)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2.0);

} // namespace
