#include "presentation/overview/OverviewTexts.h"

#include "presentation/history/IncidentTexts.h"
#include "presentation/kit/DashboardPalette.h"
#include "sampling/Text.h"
#include "sampling/UnitText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <cmath>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(OverviewTexts)
};

QString sampling()
{
    return Words::tr("采集中");
}

} // namespace

std::array<OverviewMetricCardContent, 4>
overviewMetricCards(const std::optional<SystemMetricSample> &latest,
                    const std::vector<HeatTrendPoint> &trendPoints)
{
    namespace P = DashboardPalette;
    std::array<OverviewMetricCardContent, 4> cards = {{
        {QStringLiteral("liveMetric-temperature"),
         sampling(),
         {},
         P::success,
         P::successBackground},
        {QStringLiteral("liveMetric-cpu"), sampling(), {}, P::warning, P::warningBackground},
        {QStringLiteral("liveMetric-fan"), sampling(), Words::tr("风扇转速 · 自动调速"), P::accent,
         P::accentBackground},
        {QStringLiteral("liveMetric-disk-io"), sampling(), Words::tr("磁盘 I/O · 当前合计"),
         P::textPrimary, P::controlBackground},
    }};

    const QString thermal =
        latest ? Words::tr("状态%1").arg(systemThermalStateLabel(latest->thermalState))
               : sampling();
    cards[0].caption = Words::tr("当前温度 · %1").arg(thermal);
    cards[1].caption =
        Words::tr("CPU 负载 · 近 5 分钟平均 %1").arg(overviewRecentCPUAverageText(trendPoints));
    if (!latest)
        return cards;

    cards[0].value = readingText(latest->temperatureCelsius, DisplayUnit::celsius);
    cards[1].value = readingText(latest->cpuUsage, DisplayUnit::percent);
    cards[2].value = readingText(latest->fanRPM, DisplayUnit::lowerRpm);
    cards[3].value = rateReadingText(latest->diskBytesPerSecond);
    return cards;
}

QString overviewRecentCPUAverageText(const std::vector<HeatTrendPoint> &trendPoints)
{
    double sum = 0.0;
    int count = 0;
    for (const HeatTrendPoint &point : trendPoints) {
        if (point.elapsedSeconds < kOverviewRecentAverageFromSeconds || !point.cpu ||
            !std::isfinite(*point.cpu))
            continue;
        sum += *point.cpu;
        ++count;
    }
    if (count == 0)
        return sampling();
    return wholePercentText(sum / count);
}

OverviewImpactBadge overviewImpactBadge(double cpuPercent)
{
    namespace P = DashboardPalette;
    if (cpuPercent >= 30.0)
        return {Words::tr("高影响"), P::warning, P::warningBackground};
    if (cpuPercent >= 8.0)
        return {Words::tr("中影响"), P::accent, P::accentBackground};
    return {Words::tr("低影响"), P::success, P::successBackground};
}

OverviewIncidentStatusLook overviewIncidentStatusLook(DashboardIncidentStatus status)
{
    const IncidentStatusLook &look = incidentStatusLook(status);
    return {QCoreApplication::translate("IncidentTexts", look.overviewTitle), look.overviewDot};
}

QString overviewShortTimeText(TimePoint time)
{
    const double seconds = time.secondsSince1970;
    // Beyond what a date can hold there is no time of day to show.
    if (!std::isfinite(seconds) || std::abs(seconds) > 1e13)
        return {};
    const QDateTime dateTime =
        QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(seconds * 1000.0)));
    return interfaceLocale().toString(dateTime.time(), QLocale::ShortFormat);
}

QString overviewTrendAxisLabel(double elapsedSeconds)
{
    const double before = kOverviewTrendWindowSeconds - elapsedSeconds;
    if (!(before > 0.0))
        return Words::tr("现在");
    return Words::tr("-%1 分钟").arg(roundedWholeNumber(std::floor(before / 60.0)));
}
