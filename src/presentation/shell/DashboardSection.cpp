#include "presentation/shell/DashboardSection.h"

#include "sampling/EnumTable.h"
#include "sampling/Text.h"

namespace {

struct SectionRow {
    DashboardSection key;
    const char *text; // the command line's and the snapshot tool's name
    const char *title;
    const char *symbol;            // the sidebar's
    const char *sidebarIdentifier; // accessible identifiers, stable for tests and tools
    const char *pageIdentifier;
};

constexpr SectionRow kSectionRows[] = {
    {DashboardSection::overview, "overview", "概览", "gauge.with.dots.needle.50percent",
     "sidebar-overview", "page-overview"},
    {DashboardSection::liveDiagnosis, "liveDiagnosis", "实时诊断", "waveform.path.ecg",
     "sidebar-live-diagnosis", "page-live-diagnosis"},
    {DashboardSection::hardwareMonitor, "hardwareMonitor", "硬件监控", "cpu",
     "sidebar-hardware-monitor", "page-hardware-monitor"},
    {DashboardSection::eventHistory, "eventHistory", "事件历史", "clock.arrow.circlepath",
     "sidebar-event-history", "page-event-history"},
    {DashboardSection::settings, "settings", "设置", "gearshape", "settingsButton",
     "page-settings"},
};
static_assert(coversEnumeration(kSectionRows, DashboardSection::settings));

} // namespace

QString dashboardSectionText(DashboardSection section)
{
    return QLatin1StringView(enumRow(kSectionRows, section).text);
}

QString dashboardSectionTitle(DashboardSection section)
{
    return kwText(enumRow(kSectionRows, section).title);
}

QString dashboardSectionSymbol(DashboardSection section)
{
    return QLatin1StringView(enumRow(kSectionRows, section).symbol);
}

QString dashboardSidebarIdentifier(DashboardSection section)
{
    return QLatin1StringView(enumRow(kSectionRows, section).sidebarIdentifier);
}

QString dashboardPageIdentifier(DashboardSection section)
{
    return QLatin1StringView(enumRow(kSectionRows, section).pageIdentifier);
}

std::optional<DashboardSection> dashboardSectionFromText(const QString &text)
{
    for (DashboardSection section : kAllDashboardSections) {
        if (dashboardSectionText(section) == text)
            return section;
    }
    return std::nullopt;
}
