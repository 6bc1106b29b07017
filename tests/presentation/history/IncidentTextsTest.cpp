// The derived texts of an incident: the title's thresholds, the rounding of
// the peaks, the duration's two forms and its end, the temperature change.

#include "presentation/history/IncidentTexts.h"
#include "presentation/PresentationTesting.h"
#include "presentation/kit/DashboardPalette.h"

#include <QLocale>

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
    struct Case {
        double cpu;
        std::optional<double> temperature;
        const char *title;
    };
    const Case cases[] = {
        {10.0, 85.0, "温度持续升高"},
        {100.0, 85.0, "温度持续升高"}, // temperature wins over load
        {80.0, 84.9, "持续高负载"},
        {80.0, std::nullopt, "持续高负载"},
        {79.9, 84.9, "检测到热压力"},
        {79.9, std::nullopt, "检测到热压力"},
        {std::numeric_limits<double>::quiet_NaN(), std::nullopt, "检测到热压力"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.title);
        EXPECT_EQ(incidentTitle(incident(c.cpu, c.temperature)), QString::fromUtf8(c.title));
    }
    const ScopedLocale locale(QLocale::c());
    struct PeakCase {
        double cpu;
        std::optional<double> temperature;
        const char *summary;
    };
    const PeakCase peaks[] = {
        {79.5, 80.4, "80% · 80°"},
        {0.5, 74.5, "1% · 75°"},
        {79.49, std::nullopt, "79%"},
        {444.2, 89.0, "444% · 89°"},
        {std::numeric_limits<double>::infinity(), std::nullopt, "0%"},
    };
    for (const PeakCase &c : peaks) {
        SCOPED_TRACE(c.summary);
        const DashboardIncident subject = incident(c.cpu, c.temperature);
        EXPECT_EQ(incidentPeakSummary(subject), QString::fromUtf8(c.summary));
        EXPECT_TRUE(incidentPeakSummary(subject).startsWith(incidentPeakCPUText(subject)));
    }
}

TEST(IncidentTexts, EachStatusHasItsLabelAndColour)
{
    using namespace DashboardPalette;
    struct Case {
        DashboardIncidentStatus status;
        const char *label;
        QRgb color;
    };
    const Case cases[] = {
        {DashboardIncidentStatus::observing, "进行中", warning},
        {DashboardIncidentStatus::improved, "已改善", success},
        {DashboardIncidentStatus::recoveredWithoutAction, "已恢复", success},
        {DashboardIncidentStatus::noImprovement, "未改善", danger},
        {DashboardIncidentStatus::insufficientData, "数据不足", warning},
        {DashboardIncidentStatus::actionFailed, "操作失败", danger},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(incidentStatusLabel(c.status), QString::fromUtf8(c.label));
        EXPECT_EQ(incidentStatusColor(c.status), c.color);
    }
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
        {"rounded below a minute", 59.4, std::nullopt, 0.0, "59 秒"},
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
