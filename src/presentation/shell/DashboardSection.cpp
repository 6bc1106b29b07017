#include "presentation/shell/DashboardSection.h"

#include "sampling/EnumTable.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DashboardSection)
};

struct SectionRow {
    DashboardSection key;
    const char *text; // the command line's and the snapshot tool's name
    const char *title;
    const char *symbol;            // the sidebar's
    const char *sidebarIdentifier; // accessible identifiers, stable for tests and tools
    const char *pageIdentifier;
};

constexpr SectionRow kSectionRows[] = {
    {DashboardSection::overview, "overview", QT_TRANSLATE_NOOP("DashboardSection", "概览"),
     "gauge.with.dots.needle.50percent", "sidebar-overview", "page-overview"},
    {DashboardSection::liveDiagnosis, "liveDiagnosis",
     QT_TRANSLATE_NOOP("DashboardSection", "实时诊断"), "waveform.path.ecg",
     "sidebar-live-diagnosis", "page-live-diagnosis"},
    {DashboardSection::hardwareMonitor, "hardwareMonitor",
     QT_TRANSLATE_NOOP("DashboardSection", "硬件监控"), "cpu", "sidebar-hardware-monitor",
     "page-hardware-monitor"},
    {DashboardSection::eventHistory, "eventHistory",
     QT_TRANSLATE_NOOP("DashboardSection", "事件历史"), "clock.arrow.circlepath",
     "sidebar-event-history", "page-event-history"},
    {DashboardSection::settings, "settings", QT_TRANSLATE_NOOP("DashboardSection", "设置"),
     "gearshape", "settingsButton", "page-settings"},
};
static_assert(coversEnumeration(kSectionRows, DashboardSection::settings));

} // namespace

QString dashboardSectionText(DashboardSection section)
{
    return QLatin1StringView(enumRow(kSectionRows, section).text);
}

QString dashboardSectionTitle(DashboardSection section)
{
    return Words::tr(enumRow(kSectionRows, section).title);
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
