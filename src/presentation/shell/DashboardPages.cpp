// Which widget shows which section. Each page's own folder adds its case here.
#include "presentation/shell/DashboardPage.h"

#include "presentation/diagnosis/LiveDiagnosisPage.h"

DashboardPage *createDashboardPage(DashboardSection section, DashboardStore &store,
                                   const DashboardPageActions &actions, QWidget *parent)
{
    Q_UNUSED(store);
    Q_UNUSED(actions);
    switch (section) {
    case DashboardSection::liveDiagnosis:
        return new LiveDiagnosisPage(store, actions, parent);
    case DashboardSection::overview:
    case DashboardSection::hardwareMonitor:
    case DashboardSection::eventHistory:
    case DashboardSection::settings:
        break;
    }
    // Until a section has its page, its place holds the page container alone,
    // with the section's identifier and title: no made-up content.
    return new DashboardPage(section, parent);
}
