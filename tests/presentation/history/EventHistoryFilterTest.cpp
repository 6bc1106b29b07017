// Which incidents the history lists and which one stays selected: the filter
// thresholds, the fields the search reads, and the three selection rules.

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

TEST(EventHistoryFilter, CasesInOrderWithTheirLabels)
{
    const char *labels[] = {"全部", "高负载", "温度", "已解决"};
    ASSERT_EQ(kAllEventHistoryFilters.size(), 4u);
    for (std::size_t index = 0; index < kAllEventHistoryFilters.size(); ++index)
        EXPECT_EQ(eventHistoryFilterText(kAllEventHistoryFilters[index]),
                  QString::fromUtf8(labels[index]));
    EXPECT_EQ(eventHistoryRangeText(EventHistoryRange::session), QStringLiteral("本次会话"));
}

TEST(EventHistoryFilter, PredicatesAtTheirThresholds)
{
    using Status = DashboardIncidentStatus;
    struct Case {
        const char *name;
        DashboardIncident subject;
        EventHistoryFilter filter;
        bool passes;
    };
    const Case cases[] = {
        {"all takes anything", incident(0.0, std::nullopt), EventHistoryFilter::all, true},
        {"high load from 30 %", incident(30.0, std::nullopt), EventHistoryFilter::highLoad, true},
        {"high load not below", incident(29.99, 99.0), EventHistoryFilter::highLoad, false},
        {"temperature from 75 °C", incident(0.0, 75.0), EventHistoryFilter::temperature, true},
        {"temperature not below", incident(99.0, 74.99), EventHistoryFilter::temperature, false},
        {"temperature never unread", incident(99.0, std::nullopt), EventHistoryFilter::temperature,
         false},
        {"improved", incident(0.0, std::nullopt, Status::improved), EventHistoryFilter::improved,
         true},
        {"recovered by itself", incident(0.0, std::nullopt, Status::recoveredWithoutAction),
         EventHistoryFilter::improved, true},
        {"still observing", incident(0.0, std::nullopt, Status::observing),
         EventHistoryFilter::improved, false},
        {"no improvement", incident(0.0, std::nullopt, Status::noImprovement),
         EventHistoryFilter::improved, false},
        {"insufficient data", incident(0.0, std::nullopt, Status::insufficientData),
         EventHistoryFilter::improved, false},
        {"action failed", incident(0.0, std::nullopt, Status::actionFailed),
         EventHistoryFilter::improved, false},
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

TEST(EventHistoryFilter, SelectionRules)
{
    const QUuid newest = QUuid::createUuid();
    const QUuid older = QUuid::createUuid();
    const QUuid hidden = QUuid::createUuid();
    struct Case {
        const char *name;
        std::optional<QUuid> current;
        std::vector<QUuid> listed;
        std::optional<QUuid> kept;
    };
    const Case cases[] = {
        {"nothing listed clears", older, {}, std::nullopt},
        {"nothing listed, nothing selected", std::nullopt, {}, std::nullopt},
        {"a first incident is selected", std::nullopt, {newest}, newest},
        {"a newer incident leaves the selection", older, {newest, older}, older},
        {"a hidden selection moves to the newest listed", hidden, {newest, older}, newest},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(keptIncidentSelection(c.current, c.listed), c.kept);
    }
}

} // namespace
