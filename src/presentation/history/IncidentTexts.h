#pragma once

#include "dashboard/DashboardIncident.h"

#include <QRgb>
#include <QString>

#include <optional>

// What the event history shows of one incident, derived from its recorded
// values alone. Pure functions, so each text has one definition that the
// list, the detail panel and the tests share.

// "温度持续升高" at 85 °C or more, else "持续高负载" at 80 % CPU or more, else
// "检测到热压力".
QString incidentTitle(const DashboardIncident &incident);

// "80%" or "80% · 80°": whole numbers, halves away from zero.
QString incidentPeakSummary(const DashboardIncident &incident);
// The CPU part alone: "80%".
QString incidentPeakCPUText(const DashboardIncident &incident);

// Everything a status shows, one row each: the event history's badge
// ("进行中", "已改善", ...) and the overview's event line ("高负载开始", ...).
struct IncidentStatusLook {
    DashboardIncidentStatus key;
    const char *label;
    QRgb color;
    const char *overviewTitle;
    QRgb overviewDot;
};
const IncidentStatusLook &incidentStatusLook(DashboardIncidentStatus status);
QString incidentStatusLabel(DashboardIncidentStatus status);
QRgb incidentStatusColor(DashboardIncidentStatus status);

// How long the incident ran, in its own short form ("42 秒", "3 分钟"); not the
// process durations of LoadTextFormats.h. An open incident runs to
// `latestSampleTime`, so it moves with monitoring and stands still while
// monitoring is paused; `now` is the last resort before the first sample.
QString incidentDurationText(const DashboardIncident &incident,
                             std::optional<TimePoint> latestSampleTime, TimePoint now);

// "68.0°C → 86.5°C" from the first temperature recorded to the peak, "86.5°C"
// with a peak alone, "未读取" without a peak. One fraction digit, in the
// user's locale.
QString incidentTemperatureChange(const DashboardIncident &incident);

// The start as the list shows it (a short time of day) and as the detail
// shows it (a short date with a short time), in the user's locale and time
// zone.
QString incidentStartTimeText(const DashboardIncident &incident);
QString incidentStartDateTimeText(const DashboardIncident &incident);
