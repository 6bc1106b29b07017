#include "presentation/shell/DashboardSection.h"

#include "sampling/Text.h"

QString dashboardSectionText(DashboardSection section)
{
    switch (section) {
    case DashboardSection::overview:
        return QStringLiteral("overview");
    case DashboardSection::liveDiagnosis:
        return QStringLiteral("liveDiagnosis");
    case DashboardSection::hardwareMonitor:
        return QStringLiteral("hardwareMonitor");
    case DashboardSection::eventHistory:
        return QStringLiteral("eventHistory");
    case DashboardSection::settings:
        return QStringLiteral("settings");
    }
    return QStringLiteral("overview");
}

QString dashboardSectionTitle(DashboardSection section)
{
    switch (section) {
    case DashboardSection::overview:
        return kwText("概览");
    case DashboardSection::liveDiagnosis:
        return kwText("实时诊断");
    case DashboardSection::hardwareMonitor:
        return kwText("硬件监控");
    case DashboardSection::eventHistory:
        return kwText("事件历史");
    case DashboardSection::settings:
        return kwText("设置");
    }
    return kwText("概览");
}

std::optional<DashboardSection> dashboardSectionFromText(const QString &text)
{
    for (DashboardSection section : kAllDashboardSections) {
        if (dashboardSectionText(section) == text)
            return section;
    }
    return std::nullopt;
}
