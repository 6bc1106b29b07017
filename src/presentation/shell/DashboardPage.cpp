#include "presentation/shell/DashboardPage.h"

#include "presentation/kit/Accessibility.h"

DashboardPage::DashboardPage(DashboardSection section, QWidget *parent)
    : QWidget(parent), m_section(section)
{
    setAccessibility(this, dashboardPageIdentifier(section), dashboardSectionTitle(section));
    setAccessibleRole(this, QAccessible::Grouping);
}

void DashboardPage::applyLayout(const DashboardLayoutMetrics &) {}

QString dashboardPageIdentifier(DashboardSection section)
{
    switch (section) {
    case DashboardSection::overview:
        return QStringLiteral("page-overview");
    case DashboardSection::liveDiagnosis:
        return QStringLiteral("page-live-diagnosis");
    case DashboardSection::hardwareMonitor:
        return QStringLiteral("page-hardware-monitor");
    case DashboardSection::eventHistory:
        return QStringLiteral("page-event-history");
    case DashboardSection::settings:
        break;
    }
    return QStringLiteral("page-settings");
}
