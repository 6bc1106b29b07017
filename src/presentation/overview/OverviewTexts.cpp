#include "presentation/overview/OverviewTexts.h"

#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/WholeNumberText.h"
#include "process/ByteTexts.h"
#include "sampling/Text.h"

#include <QDateTime>
#include <QLocale>

#include <cmath>

namespace {

QString sampling()
{
    return kwText("采集中");
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
        {QStringLiteral("liveMetric-fan"), sampling(), kwText("风扇转速 · 自动调速"), P::accent,
         P::accentBackground},
        {QStringLiteral("liveMetric-disk-io"), sampling(), kwText("磁盘 I/O · 当前合计"),
         P::textPrimary, P::controlBackground},
    }};

    const QString thermal =
        latest ? kwText("状态") + systemThermalStateLabel(latest->thermalState) : sampling();
    cards[0].caption = kwText("当前温度 · %1").arg(thermal);
    cards[1].caption =
        kwText("CPU 负载 · 近 5 分钟平均 %1").arg(overviewRecentCPUAverageText(trendPoints));
    if (!latest)
        return cards;

    cards[0].value = latest->temperatureCelsius.displayText(QStringLiteral("°C"), 1);
    cards[1].value = latest->cpuUsage.displayText(QStringLiteral("%"), 0);
    cards[2].value = latest->fanRPM.displayText(QStringLiteral(" rpm"), 0);
    const SensorReading<double> &disk = latest->diskBytesPerSecond;
    cards[3].value = disk.isAvailable() ? rateText(*disk.value()) : disk.displayText({}, 0);
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
        return {kwText("高影响"), P::warning, P::warningBackground};
    if (cpuPercent >= 8.0)
        return {kwText("中影响"), P::accent, P::accentBackground};
    return {kwText("低影响"), P::success, P::successBackground};
}

OverviewIncidentStatusLook overviewIncidentStatusLook(DashboardIncidentStatus status)
{
    namespace P = DashboardPalette;
    switch (status) {
    case DashboardIncidentStatus::observing:
        return {kwText("高负载开始"), P::warning};
    case DashboardIncidentStatus::improved:
    case DashboardIncidentStatus::recoveredWithoutAction:
        return {kwText("负载恢复"), P::success};
    case DashboardIncidentStatus::noImprovement:
    case DashboardIncidentStatus::insufficientData:
        return {kwText("仍需关注"), P::textTertiary};
    case DashboardIncidentStatus::actionFailed:
        break;
    }
    return {kwText("操作失败"), P::danger};
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
        return kwText("现在");
    return kwText("-%1 分钟").arg(roundedWholeNumber(std::floor(before / 60.0)));
}
