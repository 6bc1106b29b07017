#include "presentation/history/IncidentTexts.h"

#include "presentation/kit/DashboardPalette.h"
#include "sampling/Text.h"

#include <QDateTime>
#include <QLocale>

#include <cmath>

namespace {

// A reading rounded for display; absurd values (not finite) read as 0
// rather than as an undefined conversion.
long long wholeNumber(double value)
{
    return std::isfinite(value) ? std::llround(value) : 0;
}

QDateTime localDateTime(TimePoint point)
{
    const double seconds = std::isfinite(point.secondsSince1970) ? point.secondsSince1970 : 0.0;
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(seconds * 1000.0)));
}

QString celsius(double value)
{
    return kwText("%1°C").arg(formatLocaleNumber(value, 1));
}

} // namespace

QString incidentTitle(const DashboardIncident &incident)
{
    if (incident.peakTemperature && *incident.peakTemperature >= 85.0)
        return kwText("温度持续升高");
    if (incident.peakCPU >= 80.0)
        return kwText("持续高负载");
    return kwText("检测到热压力");
}

QString incidentPeakCPUText(const DashboardIncident &incident)
{
    return kwText("%1%").arg(wholeNumber(incident.peakCPU));
}

QString incidentPeakSummary(const DashboardIncident &incident)
{
    const QString cpu = incidentPeakCPUText(incident);
    if (!incident.peakTemperature)
        return cpu;
    return kwText("%1 · %2°").arg(cpu, QString::number(wholeNumber(*incident.peakTemperature)));
}

QString incidentStatusLabel(DashboardIncidentStatus status)
{
    switch (status) {
    case DashboardIncidentStatus::observing:
        return kwText("进行中");
    case DashboardIncidentStatus::improved:
        return kwText("已改善");
    case DashboardIncidentStatus::recoveredWithoutAction:
        return kwText("已恢复");
    case DashboardIncidentStatus::noImprovement:
        return kwText("未改善");
    case DashboardIncidentStatus::insufficientData:
        return kwText("数据不足");
    case DashboardIncidentStatus::actionFailed:
        break;
    }
    return kwText("操作失败");
}

QRgb incidentStatusColor(DashboardIncidentStatus status)
{
    switch (status) {
    case DashboardIncidentStatus::improved:
    case DashboardIncidentStatus::recoveredWithoutAction:
        return DashboardPalette::success;
    case DashboardIncidentStatus::noImprovement:
    case DashboardIncidentStatus::actionFailed:
        return DashboardPalette::danger;
    case DashboardIncidentStatus::observing:
    case DashboardIncidentStatus::insufficientData:
        break;
    }
    return DashboardPalette::warning;
}

QString incidentDurationText(const DashboardIncident &incident,
                             std::optional<TimePoint> latestSampleTime, TimePoint now)
{
    const TimePoint end = incident.endedAt.value_or(latestSampleTime.value_or(now));
    double seconds = end.secondsSince(incident.startedAt);
    if (!std::isfinite(seconds) || seconds < 0.0)
        seconds = 0.0;
    if (seconds < 60.0)
        return kwText("%1 秒").arg(std::llround(seconds));
    return kwText("%1 分钟").arg(static_cast<long long>(std::floor(seconds / 60.0)));
}

QString incidentTemperatureChange(const DashboardIncident &incident)
{
    if (!incident.peakTemperature)
        return kwText("未读取");
    for (const DashboardIncidentPoint &point : incident.points) {
        if (point.temperature)
            return kwText("%1 → %2").arg(celsius(*point.temperature),
                                         celsius(*incident.peakTemperature));
    }
    return celsius(*incident.peakTemperature);
}

QString incidentStartTimeText(const DashboardIncident &incident)
{
    return interfaceLocale().toString(localDateTime(incident.startedAt).time(),
                                      QLocale::ShortFormat);
}

QString incidentStartDateTimeText(const DashboardIncident &incident)
{
    const QDateTime start = localDateTime(incident.startedAt);
    const QLocale locale = interfaceLocale();
    return locale.toString(start.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
           locale.toString(start.time(), QLocale::ShortFormat);
}
