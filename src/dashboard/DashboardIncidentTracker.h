#pragma once

#include "dashboard/DashboardIncident.h"
#include "dashboard/DashboardModel.h"
#include "sampling/SystemMetricSample.h"
#include "sampling/TimePoint.h"

#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

// The run's log of heat episodes. An incident opens when the machine runs hot
// (isSampleHot) with a task to blame, takes one point per observed sample,
// and closes on the first sample that isn't hot or when a recovery
// verification ends. It also keeps what the user did about it.
//
// A plain value: the store owns one and copies `incidents` to its observed
// field after every change. Nothing caps the list or the points of an
// incident; the log lives until it is cleared (by replacing the tracker with
// an empty one) or the program ends.
class DashboardIncidentTracker {
public:
    // Newest first.
    const std::vector<DashboardIncident> &incidents() const { return m_incidents; }
    // The open incident, at most one. An id that isn't in `incidents` counts
    // as no active incident.
    const std::optional<QUuid> &activeIncidentID() const { return m_activeIncidentID; }
    const DashboardIncident *activeIncident() const;

    // Once per ingested sample, with the first of the live tasks (null when
    // there is none). Appends a point to the active incident and closes it as
    // `recoveredWithoutAction` if the sample isn't hot; with none active,
    // opens one if the sample is hot and there is a task.
    void observe(const SystemMetricSample &sample, const DashboardTask *task);

    // The user ended a process of `task`. With no active incident and a
    // `sample`, opens one from them first, so that every ending leaves a trace
    // even on a quiet machine. `processName` is given only when the ended
    // process isn't the task's target. Overwrites an earlier action; the
    // status stays.
    void recordAction(const DashboardTask &task, const std::optional<QString> &processName,
                      TimePoint time, const SystemMetricSample *sample);

    // A verification ended with `state`: closes the active incident with the
    // matching status. `idle` and `recovering` leave it open.
    void finishActiveIncident(DashboardRecoveryState state, TimePoint time);

    bool operator==(const DashboardIncidentTracker &) const = default;

private:
    DashboardIncident *findActive();
    void open(const SystemMetricSample &sample, const DashboardTask &task);

    std::vector<DashboardIncident> m_incidents;
    std::optional<QUuid> m_activeIncidentID;
};

// The action line of an incident: names the process when one is given, else
// the build or the task.
QString incidentActionText(const DashboardTask &task, const std::optional<QString> &processName);
