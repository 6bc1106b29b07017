// What the event history costs with a long log: painting the page with a
// thousand incidents, and what one store tick costs the page (the list model
// refreshed by id over all thousand, the detail, the repaint).

#include "dashboard/DashboardStore.h"
#include "presentation/history/EventHistoryPage.h"
#include "presentation/history/IncidentListModel.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/DashboardWindow.h"
#include "snapshot/DashboardSnapshot.h"
#include "snapshot/ScriptedStore.h"

#include <QPixmap>

#include <benchmark/benchmark.h>

namespace {

constexpr int kIncidents = 1000;

// The scripted half hour, then hot and calm samples in turn until the log
// holds a thousand incidents, the last of them still open.
void fillLog(DashboardStore &store)
{
    SystemMetricSample sample = *store.latestSystemSample();
    bool hot = false;
    while (store.incidents().size() < std::size_t(kIncidents) || !hot) {
        hot = !hot;
        sample.timestamp = sample.timestamp.addingSeconds(2.0);
        sample.thermalState = hot ? SystemThermalState::fair : SystemThermalState::nominal;
        sample.temperatureCelsius =
            SensorReading<double>::available(hot ? 82.0 : 55.0, QStringLiteral("bench"));
        store.ingest(sample);
    }
}

struct HistoryWindow {
    ScriptedStore scripted;
    std::unique_ptr<DashboardWindow> window;
    EventHistoryPage *page = nullptr;

    explicit HistoryWindow(QSize size)
    {
        installDashboardApplicationFont();
        installDashboardAccessibility();
        fillLog(scripted.store());
        window = std::make_unique<DashboardWindow>(scripted.store(), DashboardSection::eventHistory,
                                                   [] {});
        window->resize(size);
        window->show();
        settleEvents();
        page = qobject_cast<EventHistoryPage *>(window->shell()->currentPage());
    }
};

void BM_EventHistoryPaint(benchmark::State &state)
{
    HistoryWindow history(QSize(int(state.range(0)), int(state.range(1))));
    if (!history.page || history.page->listModel()->rowCount() < kIncidents) {
        state.SkipWithError("the page does not list the log");
        return;
    }
    for (auto _ : state) {
        QPixmap picture = history.page->grab();
        benchmark::DoNotOptimize(picture);
    }
    state.counters["incidents"] = double(history.page->listModel()->rowCount());
}
BENCHMARK(BM_EventHistoryPaint)->Args({960, 640})->Args({1440, 900})->Unit(benchmark::kMillisecond);

// One tick as the page sees it: the incidents announced as changed (as when
// the open incident gains a point), then the repaint.
void BM_EventHistoryTick(benchmark::State &state)
{
    HistoryWindow history(QSize(1440, 900));
    DashboardStore &store = history.scripted.store();
    for (auto _ : state) {
        emit store.incidentsChanged();
        emit store.changed();
        QPixmap picture = history.page->grab();
        benchmark::DoNotOptimize(picture);
    }
}
BENCHMARK(BM_EventHistoryTick)->Unit(benchmark::kMillisecond);

} // namespace
