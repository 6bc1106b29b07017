#include "presentation/shell/DashboardSection.h"

#include "sampling/EnumTable.h"
#include "sampling/Text.h"

namespace {

struct SectionWords {
    DashboardSection key;
    const char *text; // the command line's and the snapshot tool's name
    const char *title;
};

constexpr SectionWords kSectionWords[] = {
    {DashboardSection::overview, "overview", "概览"},
    {DashboardSection::liveDiagnosis, "liveDiagnosis", "实时诊断"},
    {DashboardSection::hardwareMonitor, "hardwareMonitor", "硬件监控"},
    {DashboardSection::eventHistory, "eventHistory", "事件历史"},
    {DashboardSection::settings, "settings", "设置"},
};
static_assert(coversEnumeration(kSectionWords, DashboardSection::settings));

} // namespace

QString dashboardSectionText(DashboardSection section)
{
    return QLatin1StringView(enumRow(kSectionWords, section).text);
}

QString dashboardSectionTitle(DashboardSection section)
{
    return kwText(enumRow(kSectionWords, section).title);
}

std::optional<DashboardSection> dashboardSectionFromText(const QString &text)
{
    for (DashboardSection section : kAllDashboardSections) {
        if (dashboardSectionText(section) == text)
            return section;
    }
    return std::nullopt;
}
