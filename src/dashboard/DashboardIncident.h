#pragma once

#include "sampling/TimePoint.h"

#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

enum class DashboardIncidentStatus {
    observing,
    improved,
    recoveredWithoutAction,
    noImprovement,
    insufficientData,
    actionFailed,
};
QString dashboardIncidentStatusName(DashboardIncidentStatus status);

struct DashboardIncidentPoint {
    TimePoint timestamp;
    std::optional<double> cpu;
    std::optional<double> temperature;
    std::optional<double> fanRPM;

    bool operator==(const DashboardIncidentPoint &) const = default;
};

struct DashboardIncident {
    QUuid id;
    TimePoint startedAt;
    std::optional<TimePoint> endedAt;
    QString application;
    QString detail;
    double peakCPU = 0.0;
    std::optional<double> peakTemperature;
    DashboardIncidentStatus status = DashboardIncidentStatus::observing;
    std::optional<QString> action;
    std::optional<TimePoint> actionAt;
    std::vector<DashboardIncidentPoint> points;

    bool operator==(const DashboardIncident &) const = default;
};
