#include "presentation/shell/DashboardPage.h"

#include "presentation/kit/Accessibility.h"

DashboardPage::DashboardPage(DashboardSection section, QWidget *parent)
    : QWidget(parent), m_section(section)
{
    setAccessibility(this, dashboardPageIdentifier(section), dashboardSectionTitle(section));
    setAccessibleRole(this, QAccessible::Grouping);
}

void DashboardPage::applyLayout(const DashboardLayoutMetrics &) {}
