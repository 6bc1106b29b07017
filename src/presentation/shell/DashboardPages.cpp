// Which widget shows which section: the one place that knows.
#include "presentation/diagnosis/LiveDiagnosisPage.h"
#include "presentation/hardware/HardwareMonitorView.h"
#include "presentation/history/EventHistoryPage.h"
#include "presentation/overview/OverviewDashboardView.h"
#include "presentation/settings/SettingsPage.h"
#include "presentation/shell/DashboardPage.h"

DashboardPage *createDashboardPage(DashboardSection section, DashboardStore &store,
                                   const DashboardPageActions &actions, QWidget *parent)
{
    switch (section) {
    case DashboardSection::overview:
        return new OverviewDashboardView(store, actions, parent);
    case DashboardSection::liveDiagnosis:
        return new LiveDiagnosisPage(store, actions, parent);
    case DashboardSection::hardwareMonitor:
        return new HardwareMonitorView(store, parent);
    case DashboardSection::eventHistory:
        return new EventHistoryPage(store, actions, parent);
    case DashboardSection::settings:
        break;
    }
    return new SettingsPage(store, parent);
}
