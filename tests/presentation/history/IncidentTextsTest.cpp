// The derived texts of an incident: the title's thresholds, the rounding of
// the peaks, the duration's two forms and its end, the temperature change.

#include "presentation/history/IncidentTexts.h"
#include "presentation/PresentationTesting.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/overview/OverviewTexts.h"
#include "support/FixtureTable.h"

#include <QLocale>
#include <QSet>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

DashboardIncident incident(double peakCPU, std::optional<double> peakTemperature)
{
    DashboardIncident result;
    result.id = QUuid::createUuid();
    result.startedAt = TimePoint::fromSecondsSince1970(1000.0);
    result.application = QStringLiteral("cargo");
    result.detail = QStringLiteral("rustc --edition 2021");
    result.peakCPU = peakCPU;
    result.peakTemperature = peakTemperature;
    return result;
}

TEST(IncidentTexts, TitleTakesTheFirstThresholdAndPeaksRoundHalvesAway)
{
    const ScopedLocale locale(QLocale::c());
    for (const FixtureRow &row : fixtureTable(QStringLiteral("incident-titles"))) {
        const std::optional<double> temperature =
            row.fields[1] == "-" ? std::nullopt : std::optional(row.fields[1].toDouble());
        const DashboardIncident subject = incident(row.fields[0].toDouble(), temperature);
        EXPECT_EQ(incidentTitle(subject), *row.text(2)) << row.where;
        EXPECT_EQ(incidentPeakSummary(subject), *row.text(3)) << row.where;
        EXPECT_TRUE(incidentPeakSummary(subject).startsWith(incidentPeakCPUText(subject)));
    }
}

// Every status has its words on both pages, and only the two that ended well
// share the overview's green with the history's.
TEST(IncidentTexts, EveryStatusHasItsWordsOnBothPages)
{
    using S = DashboardIncidentStatus;
    QSet<QString> labels;
    for (const S status : {S::observing, S::improved, S::recoveredWithoutAction, S::noImprovement,
                           S::insufficientData, S::actionFailed}) {
        labels << incidentStatusLabel(status);
        EXPECT_FALSE(overviewIncidentStatusLook(status).title.isEmpty());
        const bool endedWell = status == S::improved || status == S::recoveredWithoutAction;
        EXPECT_EQ(incidentStatusColor(status) == DashboardPalette::success, endedWell);
        EXPECT_EQ(overviewIncidentStatusLook(status).dot == DashboardPalette::success, endedWell);
    }
    EXPECT_EQ(labels.size(), 6);
}

TEST(IncidentTexts, DurationRunsToTheEndOrTheLatestSampleInSecondsThenWholeMinutes)
{
    const TimePoint start = TimePoint::fromSecondsSince1970(1000.0);
    const TimePoint farLater = start.addingSeconds(86'400.0);
    struct Case {
        const char *name;
        std::optional<double> endedAfter;
        std::optional<double> latestSampleAfter;
        double nowAfter;
        const char *text;
    };
    const Case cases[] = {
        {"closed: its end counts, not the sample", 42.4, 500.0, 86'400.0, "42 秒"},
        {"half a second rounds up", 0.5, std::nullopt, 0.0, "1 秒"},
        {"a minute", 60.0, std::nullopt, 0.0, "1 分钟"},
        {"minutes are cut, not rounded", 119.9, std::nullopt, 0.0, "1 分钟"},
        {"an hour stays in minutes", 3600.0, std::nullopt, 0.0, "60 分钟"},
        {"an end before the start is 0", -30.0, std::nullopt, 0.0, "0 秒"},
        // Open: the latest sample is the end, so a pause of monitoring (no
        // new sample while the clock goes on) holds the text still.
        {"open, with a sample", std::nullopt, 30.0, 86'400.0, "30 秒"},
        {"open, sample before the start", std::nullopt, -5.0, 86'400.0, "0 秒"},
        {"open, before any sample", std::nullopt, std::nullopt, 150.0, "2 分钟"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        DashboardIncident subject = incident(50.0, 80.0);
        if (c.endedAfter)
            subject.endedAt = start.addingSeconds(*c.endedAfter);
        std::optional<TimePoint> latest;
        if (c.latestSampleAfter)
            latest = start.addingSeconds(*c.latestSampleAfter);
        EXPECT_EQ(incidentDurationText(subject, latest, start.addingSeconds(c.nowAfter)),
                  QString::fromUtf8(c.text));
    }
    DashboardIncident absurd = incident(50.0, 80.0);
    absurd.endedAt = TimePoint::fromSecondsSince1970(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(incidentDurationText(absurd, std::nullopt, farLater), QStringLiteral("0 秒"));
}

TEST(IncidentTexts, TemperatureChangeHasThreeForms)
{
    const auto point = [](std::optional<double> temperature) {
        DashboardIncidentPoint result;
        result.temperature = temperature;
        return result;
    };
    struct Case {
        const char *name;
        std::optional<double> peak;
        std::vector<DashboardIncidentPoint> points;
        QLocale locale;
        const char *text;
    };
    const QLocale c = QLocale::c();
    const std::optional<double> none;
    const Case cases[] = {
        {"first reading to the peak", 86.54, {point(68.0), point(86.54)}, c, "68.0°C → 86.5°C"},
        {"first present", 86.5, {point(none), point(71.25), point(86.5)}, c, "71.3°C → 86.5°C"},
        {"the interface's, not the user's locale",
         86.5,
         {point(68.0)},
         QLocale(QLocale::German),
         "68.0°C → 86.5°C"},
        {"a peak and no reading in the points", 80.0, {point(none)}, c, "80.0°C"},
        {"no points at all", 80.0, {}, c, "80.0°C"},
        {"no temperature read", none, {point(none)}, c, "未读取"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const ScopedLocale locale(c.locale);
        DashboardIncident subject = incident(50.0, c.peak);
        subject.points = c.points;
        EXPECT_EQ(incidentTemperatureChange(subject), QString::fromUtf8(c.text));
    }
}

TEST(IncidentTexts, TimesFollowTheInterfaceLanguageWhateverLangSays)
{
    const ScopedTimeZone utc("UTC");
    DashboardIncident subject = incident(50.0, 70.0);
    subject.startedAt = TimePoint::fromSecondsSince1970(1'795'444'200.0); // 23 Nov 2026 14:30 UTC
    for (const QLocale &lang : {QLocale::c(), QLocale(QLocale::English, QLocale::UnitedKingdom)}) {
        SCOPED_TRACE(lang.name().toStdString());
        const ScopedLocale locale(lang);
        EXPECT_EQ(incidentStartTimeText(subject), QStringLiteral("14:30"));
        EXPECT_EQ(incidentStartDateTimeText(subject), QStringLiteral("2026/11/23 14:30"));
    }
}

} // namespace
