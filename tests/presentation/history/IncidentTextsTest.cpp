// The derived texts of an incident: the title's thresholds, the rounding of
// the peaks, the duration's two forms and its end, the temperature change.

#include "presentation/history/IncidentTexts.h"
#include "presentation/PresentationTesting.h"
#include "presentation/overview/OverviewTexts.h"
#include "support/FixtureTable.h"

#include <QLocale>
#include <QSet>

#include <gtest/gtest.h>

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

// Every status has its own words on both pages.
TEST(IncidentTexts, EveryStatusHasItsWordsOnBothPages)
{
    using S = DashboardIncidentStatus;
    QSet<QString> labels;
    for (const S status : {S::observing, S::improved, S::recoveredWithoutAction, S::noImprovement,
                           S::insufficientData, S::actionFailed}) {
        labels << incidentStatusLabel(status);
        EXPECT_FALSE(overviewIncidentStatusLook(status).title.isEmpty());
    }
    EXPECT_EQ(labels.size(), 6);
}

TEST(IncidentTexts, DurationRunsToTheEndOrTheLatestSampleInSecondsThenWholeMinutes)
{
    const TimePoint start = TimePoint::fromSecondsSince1970(1000.0);
    const auto after = [&](const QByteArray &field) {
        return field == "-" ? std::nullopt : std::optional(start.addingSeconds(field.toDouble()));
    };
    for (const FixtureRow &row : fixtureTable(QStringLiteral("incident-durations"))) {
        DashboardIncident subject = incident(50.0, 80.0);
        subject.endedAt = after(row.fields[0]);
        EXPECT_EQ(incidentDurationText(subject, after(row.fields[1]), *after(row.fields[2])),
                  *row.text(3))
            << row.where;
    }
}

TEST(IncidentTexts, TemperatureChangeHasThreeForms)
{
    // The interface's locale, not the user's.
    const ScopedLocale locale(QLocale(QLocale::German));
    for (const FixtureRow &row : fixtureTable(QStringLiteral("incident-temperature-changes"))) {
        DashboardIncident subject = incident(
            50.0, row.fields[0] == "-" ? std::nullopt : std::optional(row.fields[0].toDouble()));
        for (const QByteArray &reading : row.fields[1].split(' ')) {
            if (reading.isEmpty())
                continue;
            DashboardIncidentPoint point;
            if (reading != "-")
                point.temperature = reading.toDouble();
            subject.points.push_back(point);
        }
        EXPECT_EQ(incidentTemperatureChange(subject), *row.text(2)) << row.where;
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
