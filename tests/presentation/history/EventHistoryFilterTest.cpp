// Which incidents the history lists: the filter thresholds and the fields the
// search reads. How the two combine, the order and the selection rules are
// the page's own test.

#include "presentation/history/EventHistoryFilter.h"
#include "support/FixtureTable.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

DashboardIncident incident(double peakCPU, std::optional<double> peakTemperature,
                           DashboardIncidentStatus status = DashboardIncidentStatus::observing)
{
    return {.application = QStringLiteral("Visual Studio Code"),
            .detail = QStringLiteral("node --max-old-space-size=4096 tsserver.js"),
            .peakCPU = peakCPU,
            .peakTemperature = peakTemperature,
            .status = status,
            .action = QStringLiteral("结束 node 子进程")};
}

TEST(EventHistoryFilter, PassesAtItsThresholdsAndSearchReadsApplicationAndDetailOnly)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("event-history-filters"))) {
        const auto filter = std::find_if(
            kAllEventHistoryFilters.begin(), kAllEventHistoryFilters.end(), [&](auto filter) {
                return eventHistoryFilterIdentifier(filter) ==
                       QStringLiteral("eventHistoryFilter-") + *row.text(0);
            });
        ASSERT_NE(filter, kAllEventHistoryFilters.end()) << row.where;
        auto status = DashboardIncidentStatus::observing;
        while (dashboardIncidentStatusName(status) != *row.text(3) &&
               status != DashboardIncidentStatus::actionFailed)
            status = DashboardIncidentStatus(int(status) + 1);
        ASSERT_EQ(dashboardIncidentStatusName(status), *row.text(3)) << row.where;
        const DashboardIncident subject = incident(
            row.fields[1].toDouble(),
            row.fields[2] == "-" ? std::nullopt : std::optional(row.fields[2].toDouble()), status);
        EXPECT_EQ(incidentPassesFilter(subject, *filter), row.fields[4] == "1") << row.where;
    }
    for (const FixtureRow &row : fixtureTable(QStringLiteral("event-history-queries"))) {
        EXPECT_EQ(incidentMatchesQuery(incident(0, std::nullopt), *row.text(0)),
                  row.fields[1] == "1")
            << row.where;
    }
}

} // namespace
