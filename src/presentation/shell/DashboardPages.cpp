// Which widget shows which section. Each page's own folder adds its case here.
#include "presentation/history/EventHistoryPage.h"
#include "presentation/settings/SettingsPage.h"
#include "presentation/shell/DashboardPage.h"

#include "presentation/hardware/HardwareMonitorView.h"
#include "presentation/overview/OverviewDashboardView.h"

DashboardPage *createDashboardPage(DashboardSection section, DashboardStore &store,
                                   const DashboardPageActions &actions, QWidget *parent)
{
    switch (section) {
    case DashboardSection::overview:
        return new OverviewDashboardView(store, actions, parent);
    case DashboardSection::liveDiagnosis:
        break;
    case DashboardSection::hardwareMonitor:
        return new HardwareMonitorView(store, parent);
    case DashboardSection::eventHistory:
        return new EventHistoryPage(store, actions, parent);
    case DashboardSection::settings:
        return new SettingsPage(store, parent);
    }
    // Until a section has its page, its place holds the page container alone,
    // with the section's identifier and title: no made-up content.
    return new DashboardPage(section, parent);
}
