#pragma once

#include "dashboard/DashboardModel.h"
#include "presentation/diagnosis/SourceSearch.h"
#include "sampling/SystemMetricSample.h"
#include "sampling/UnitText.h"

#include <QRgb>
#include <QString>

#include <optional>
#include <vector>

// The texts of the live diagnosis page's source list, process tree and
// workspace, one function per text, from the store's values. Pure: they
// format, they never work out load, rank or state.

// Percentages are rounded by the kit's whole-number texts (roundedWholeNumber,
// wholePercentText), as on every page.

// "高", "中", "低", and the colour of the level.
QString resourceImpactLabel(ResourceImpact impact);
QRgb resourceImpactColor(ResourceImpact impact);

// Left column.
QString sourceHeadingTitle(ProcessListScope scope);
// Relation counts are summed over the sources given (the visible ones, or
// every published one for the hint).
QString sourceCountText(ProcessListScope scope, const std::vector<const DashboardTask *> &visible);
QString sourceHintText(ProcessListScope scope, const std::vector<DashboardTask> &allTasks);
QString sourceRowSubtitle(const DashboardTask &task);
QString sourceRowAccessibleLabel(const DashboardTask &task);
QString sourceListEmptyTitle(bool hasSample, ProcessListScope scope);
QString sourceListEmptySubtitle(ProcessListScope scope);
QString selectionSummaryText(const DashboardTask *task, const DashboardProcessNode *process);

// Process tree rows.
QString processNodeBadge(const DashboardProcessNode &node, int depth); // empty: none
QString processNodeDetailLine(const DashboardProcessNode &node, const QString &roleLabel);
QString processNodeAccessibleLabel(const DashboardProcessNode &node, const QString &roleLabel);
QString processToggleAccessibleLabel(bool expanded);

// Workspace: the path summary and the evidence.
QString pathSummaryTitle(const DashboardTask *task, const DashboardProcessNode *process);
QString pathSummarySubtitle(const DashboardTask *task, const DashboardProcessNode *process);
QString pathSummaryAccessibleLabel(const DashboardTask *task, const DashboardProcessNode *process);
QString processScopeDetail(const DashboardProcessNode *process);
QString sourceScopeDetail(const DashboardTask *task);
QString systemScopeDetail(const std::optional<SystemMetricSample> &latest);
// A label of the trend's x axis at `x` seconds into the 300-second window.
QString heatTrendAxisLabel(double x);
