#pragma once

#include "dashboard/DashboardIncident.h"

#include <QString>
#include <QUuid>

#include <array>
#include <optional>
#include <vector>

// Which incidents the event history lists, and which one it details. Pure
// functions over the store's incidents, so the page only keeps the user's
// choices (filter, query, selection) and asks these what follows from them.

// The range of the list. This version keeps the incidents of the running
// session only, so there is one range and it plays no part in the filtering.
enum class EventHistoryRange { session };
QString eventHistoryRangeText(EventHistoryRange range); // "本次会话"

enum class EventHistoryFilter { all, highLoad, temperature, improved };
inline constexpr std::array kAllEventHistoryFilters = {
    EventHistoryFilter::all, EventHistoryFilter::highLoad, EventHistoryFilter::temperature,
    EventHistoryFilter::improved};
QString eventHistoryFilterText(EventHistoryFilter filter); // also the chip's label
QString eventHistoryFilterIdentifier(EventHistoryFilter filter);

// Whether `incident` belongs under `filter`: "高负载" from 30 % CPU, "温度"
// from a recorded 75 °C, "已解决" for the two outcomes that ended well.
bool incidentPassesFilter(const DashboardIncident &incident, EventHistoryFilter filter);

// Whether the query finds `incident`: the query is trimmed, a blank one finds
// everything, otherwise the application or the process detail must hold it,
// case-insensitively in the user's locale. Titles and actions are not searched.
bool incidentMatchesQuery(const DashboardIncident &incident, const QString &query);

// The incidents that pass both, in the store's order (newest first), as
// pointers into `incidents` (valid while that list is unchanged).
std::vector<const DashboardIncident *>
filteredIncidents(const std::vector<DashboardIncident> &incidents, EventHistoryFilter filter,
                  const QString &query);

// The selection that stays valid for the listed ids: none when nothing is
// listed, the current one while it is listed, else the first (newest).
std::optional<QUuid> keptIncidentSelection(const std::optional<QUuid> &current,
                                           const std::vector<QUuid> &listedIDs);
