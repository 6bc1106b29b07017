#include "presentation/history/IncidentTexts.h"

#include "presentation/kit/DashboardPalette.h"
#include "sampling/EnumTable.h"
#include "sampling/Text.h"
#include "sampling/UnitText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <cmath>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(IncidentTexts)
};

QDateTime localDateTime(TimePoint point)
{
    const double seconds = std::isfinite(point.secondsSince1970) ? point.secondsSince1970 : 0.0;
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(seconds * 1000.0)));
}

QString celsius(double value)
{
    return unitText(value, DisplayUnit::celsius);
}

using S = DashboardIncidentStatus;
namespace P = DashboardPalette;
constexpr IncidentStatusLook kStatusRows[] = {
    {S::observing, QT_TRANSLATE_NOOP("IncidentTexts", "进行中"), P::warning,
     QT_TRANSLATE_NOOP("IncidentTexts", "高负载开始"), P::warning},
    {S::improved, QT_TRANSLATE_NOOP("IncidentTexts", "已改善"), P::success,
     QT_TRANSLATE_NOOP("IncidentTexts", "负载恢复"), P::success},
    {S::recoveredWithoutAction, QT_TRANSLATE_NOOP("IncidentTexts", "已恢复"), P::success,
     QT_TRANSLATE_NOOP("IncidentTexts", "负载恢复"), P::success},
    {S::noImprovement, QT_TRANSLATE_NOOP("IncidentTexts", "未改善"), P::danger,
     QT_TRANSLATE_NOOP("IncidentTexts", "仍需关注"), P::textTertiary},
    {S::insufficientData, QT_TRANSLATE_NOOP("IncidentTexts", "数据不足"), P::warning,
     QT_TRANSLATE_NOOP("IncidentTexts", "仍需关注"), P::textTertiary},
    {S::actionFailed, QT_TRANSLATE_NOOP("IncidentTexts", "操作失败"), P::danger,
     QT_TRANSLATE_NOOP("IncidentTexts", "操作失败"), P::danger},
};
static_assert(coversEnumeration(kStatusRows, S::actionFailed));

} // namespace

QString incidentTitle(const DashboardIncident &incident)
{
    if (incident.peakTemperature && *incident.peakTemperature >= 85.0)
        return Words::tr("温度持续升高");
    if (incident.peakCPU >= 80.0)
        return Words::tr("持续高负载");
    return Words::tr("检测到热压力");
}

QString incidentPeakCPUText(const DashboardIncident &incident)
{
    return wholePercentText(incident.peakCPU);
}

QString incidentPeakSummary(const DashboardIncident &incident)
{
    const QString cpu = incidentPeakCPUText(incident);
    if (!incident.peakTemperature)
        return cpu;
    return Words::tr("%1 · %2°").arg(cpu, wholeNumberText(*incident.peakTemperature));
}

const IncidentStatusLook &incidentStatusLook(DashboardIncidentStatus status)
{
    return enumRow(kStatusRows, status);
}

QString incidentStatusLabel(DashboardIncidentStatus status)
{
    return Words::tr(incidentStatusLook(status).label);
}

QRgb incidentStatusColor(DashboardIncidentStatus status)
{
    return incidentStatusLook(status).color;
}

QString incidentDurationText(const DashboardIncident &incident,
                             std::optional<TimePoint> latestSampleTime, TimePoint now)
{
    const TimePoint end = incident.endedAt.value_or(latestSampleTime.value_or(now));
    double seconds = end.secondsSince(incident.startedAt);
    if (!std::isfinite(seconds) || seconds < 0.0)
        seconds = 0.0;
    if (seconds < 60.0)
        return Words::tr("%1 秒").arg(std::llround(seconds));
    return Words::tr("%1 分钟").arg(static_cast<long long>(std::floor(seconds / 60.0)));
}

QString incidentTemperatureChange(const DashboardIncident &incident)
{
    if (!incident.peakTemperature)
        return Words::tr("未读取");
    for (const DashboardIncidentPoint &point : incident.points) {
        if (point.temperature)
            return Words::tr("%1 → %2").arg(celsius(*point.temperature),
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
