// Which incidents the history lists: the filter thresholds and the fields the
// search reads. How the two combine, the order and the selection rules are
// the page's own test.

#include "presentation/history/EventHistoryFilter.h"

#include <gtest/gtest.h>

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
    using S = DashboardIncidentStatus;
    using F = EventHistoryFilter;
    const std::optional<double> none;
    const struct {
        const char *name;
        DashboardIncident subject;
        F filter;
        bool passes;
    } cases[] = {
        {"all takes anything", incident(0.0, none), F::all, true},
        {"high load from 30 %", incident(30.0, none), F::highLoad, true},
        {"high load not below", incident(29.99, 99.0), F::highLoad, false},
        {"temperature from 75 °C", incident(0.0, 75.0), F::temperature, true},
        {"temperature not below", incident(99.0, 74.99), F::temperature, false},
        {"temperature never unread", incident(99.0, none), F::temperature, false},
        {"improved", incident(0.0, none, S::improved), F::improved, true},
        {"recovered by itself", incident(0.0, none, S::recoveredWithoutAction), F::improved, true},
        {"still observing", incident(0.0, none, S::observing), F::improved, false},
        {"no improvement", incident(0.0, none, S::noImprovement), F::improved, false},
        {"insufficient data", incident(0.0, none, S::insufficientData), F::improved, false},
        {"action failed", incident(0.0, none, S::actionFailed), F::improved, false},
    };
    for (const auto &test : cases)
        EXPECT_EQ(incidentPassesFilter(test.subject, test.filter), test.passes) << test.name;

    const std::pair<const char *, bool> queries[] = {
        {"", true},
        {"   \t\n ", true},         // blanks alone find everything
        {"visual studio", true},    // application, in another case
        {"TSSERVER", true},         // detail, in another case
        {"  tsserver.js \n", true}, // trimmed at both ends
        {"code node", false},       // not across the two fields
        {"结束", false},            // the action is not searched
        {"python", false},
    };
    for (const auto &[query, matches] : queries)
        EXPECT_EQ(incidentMatchesQuery(incident(0, none), QString::fromUtf8(query)), matches)
            << query;
}

} // namespace
