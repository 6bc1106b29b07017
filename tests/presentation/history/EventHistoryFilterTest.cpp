// Which incidents the history lists: the filter thresholds and the fields the
// search reads. The selection rules are held by the page's own test.

#include "presentation/history/EventHistoryFilter.h"

#include <gtest/gtest.h>

namespace {

DashboardIncident incident(double peakCPU, std::optional<double> peakTemperature,
                           DashboardIncidentStatus status = DashboardIncidentStatus::observing,
                           const QString &application = QStringLiteral("cargo"),
                           const QString &detail = QStringLiteral("rustc --edition 2021"))
{
    DashboardIncident result;
    result.id = QUuid::createUuid();
    result.application = application;
    result.detail = detail;
    result.peakCPU = peakCPU;
    result.peakTemperature = peakTemperature;
    result.status = status;
    return result;
}

TEST(EventHistoryFilter, CasesLabelsAndPredicatesAtTheirThresholds)
{
    const char *labels[] = {"全部", "高负载", "温度", "已解决"};
    ASSERT_EQ(kAllEventHistoryFilters.size(), 4u);
    for (std::size_t index = 0; index < kAllEventHistoryFilters.size(); ++index)
        EXPECT_EQ(eventHistoryFilterText(kAllEventHistoryFilters[index]),
                  QString::fromUtf8(labels[index]));
    EXPECT_EQ(eventHistoryRangeText(EventHistoryRange::session), QStringLiteral("本次会话"));
    using S = DashboardIncidentStatus;
    using F = EventHistoryFilter;
    const std::optional<double> none;
    struct Case {
        const char *name;
        DashboardIncident subject;
        F filter;
        bool passes;
    };
    const Case cases[] = {
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
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(incidentPassesFilter(c.subject, c.filter), c.passes);
    }
}

TEST(EventHistoryFilter, SearchReadsApplicationAndDetailOnly)
{
    DashboardIncident subject = incident(
        95.0, 88.0, DashboardIncidentStatus::observing, QStringLiteral("Visual Studio Code"),
        QStringLiteral("node --max-old-space-size=4096 tsserver.js"));
    subject.action = QStringLiteral("结束 node 子进程");
    struct Case {
        const char *query;
        bool matches;
    };
    const Case cases[] = {
        {"", true},
        {"   \t\n ", true},         // blanks alone find everything
        {"visual studio", true},    // application, in another case
        {"TSSERVER", true},         // detail, in another case
        {"  tsserver.js \n", true}, // trimmed at both ends
        {"code node", false},       // not across the two fields
        {"温度持续升高", false},    // the title is not searched
        {"结束", false},            // nor the action
        {"python", false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.query);
        EXPECT_EQ(incidentMatchesQuery(subject, QString::fromUtf8(c.query)), c.matches);
    }
}

TEST(EventHistoryFilter, FilteredIncidentsKeepTheStoreOrderAndApplyBoth)
{
    const std::vector<DashboardIncident> incidents = {
        incident(95.0, 88.0, DashboardIncidentStatus::observing, QStringLiteral("cargo")),
        incident(20.0, 80.0, DashboardIncidentStatus::recoveredWithoutAction,
                 QStringLiteral("node"), QStringLiteral("node server.js")),
        incident(60.0, std::nullopt, DashboardIncidentStatus::improved, QStringLiteral("cargo")),
        incident(40.0, 76.0, DashboardIncidentStatus::noImprovement, QStringLiteral("python3"),
                 QStringLiteral("python3 -m pytest")),
    };
    const auto indicesOf = [&](EventHistoryFilter filter, const QString &query) {
        std::vector<std::size_t> result;
        for (const DashboardIncident *listed : filteredIncidents(incidents, filter, query))
            result.push_back(std::size_t(listed - incidents.data()));
        return result;
    };
    using Indices = std::vector<std::size_t>;
    EXPECT_EQ(indicesOf(EventHistoryFilter::all, {}), (Indices{0, 1, 2, 3}));
    EXPECT_EQ(indicesOf(EventHistoryFilter::highLoad, {}), (Indices{0, 2, 3}));
    EXPECT_EQ(indicesOf(EventHistoryFilter::temperature, {}), (Indices{0, 1, 3}));
    EXPECT_EQ(indicesOf(EventHistoryFilter::improved, {}), (Indices{1, 2}));
    EXPECT_EQ(indicesOf(EventHistoryFilter::highLoad, QStringLiteral("CARGO")), (Indices{0, 2}));
    EXPECT_EQ(indicesOf(EventHistoryFilter::improved, QStringLiteral("python")), (Indices{}));
    EXPECT_TRUE(filteredIncidents({}, EventHistoryFilter::all, QStringLiteral(" ")).empty());
}

} // namespace
