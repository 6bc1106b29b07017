#pragma once

#include <QString>

#include <array>
#include <optional>

// The window's pages, in sidebar order.
enum class DashboardSection { overview, liveDiagnosis, hardwareMonitor, eventHistory, settings };

inline constexpr std::array kAllDashboardSections = {
    DashboardSection::overview, DashboardSection::liveDiagnosis, DashboardSection::hardwareMonitor,
    DashboardSection::eventHistory, DashboardSection::settings};
QString dashboardSectionText(DashboardSection section);  // "overview", ...
QString dashboardSectionTitle(DashboardSection section); // "概览", ...
QString dashboardSectionSymbol(DashboardSection section);
QString dashboardSidebarIdentifier(DashboardSection section); // "sidebar-overview", ...
QString dashboardPageIdentifier(DashboardSection section);    // "page-overview", ...
std::optional<DashboardSection> dashboardSectionFromText(const QString &text);
