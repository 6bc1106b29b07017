#include "dashboard/DashboardIncidentTracker.h"

#include "dashboard/HeatTest.h"
#include "sampling/Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DashboardIncidentTracker)
};

DashboardIncidentPoint pointFromSample(const SystemMetricSample &sample)
{
    return DashboardIncidentPoint{
        .timestamp = sample.timestamp,
        .cpu = sample.cpuUsage.value(),
        .temperature = sample.temperatureCelsius.value(),
        .fanRPM = sample.fanRPM.value(),
    };
}

std::optional<DashboardIncidentStatus> closingStatus(DashboardRecoveryState state)
{
    switch (state) {
    case DashboardRecoveryState::idle:
    case DashboardRecoveryState::recovering:
        return std::nullopt;
    case DashboardRecoveryState::recovered:
        return DashboardIncidentStatus::improved;
    case DashboardRecoveryState::noImprovement:
        return DashboardIncidentStatus::noImprovement;
    case DashboardRecoveryState::insufficientData:
        return DashboardIncidentStatus::insufficientData;
    case DashboardRecoveryState::terminationFailed:
        return DashboardIncidentStatus::actionFailed;
    }
    return std::nullopt;
}

} // namespace

const DashboardIncident *DashboardIncidentTracker::activeIncident() const
{
    if (!m_activeIncidentID)
        return nullptr;
    const auto found =
        std::find_if(m_incidents.begin(), m_incidents.end(),
                     [&](const auto &incident) { return incident.id == *m_activeIncidentID; });
    return found == m_incidents.end() ? nullptr : &*found;
}

DashboardIncident *DashboardIncidentTracker::findActive()
{
    return const_cast<DashboardIncident *>(std::as_const(*this).activeIncident());
}

void DashboardIncidentTracker::observe(const SystemMetricSample &sample, const DashboardTask *task)
{
    const bool hot = isSampleHot(sample, task ? std::optional<double>(task->cpu) : std::nullopt);

    if (DashboardIncident *active = findActive()) {
        active->points.push_back(pointFromSample(sample));
        // Only the machine's own figure raises the peak once the incident
        // runs; the task's sum stood in for it only at the opening.
        active->peakCPU = std::max(active->peakCPU, sample.cpuUsage.value().value_or(0.0));
        if (const auto &temperature = sample.temperatureCelsius.value()) {
            active->peakTemperature =
                std::max(active->peakTemperature.value_or(*temperature), *temperature);
        }
        if (hot)
            return;
        // No debounce: one calm sample ends the episode.
        active->status = DashboardIncidentStatus::recoveredWithoutAction;
        active->endedAt = sample.timestamp;
        m_activeIncidentID.reset();
        return;
    }

    // A hot machine with no task of the user's to blame opens nothing.
    if (!hot || !task)
        return;
    open(sample, *task);
}

void DashboardIncidentTracker::open(const SystemMetricSample &sample, const DashboardTask &task)
{
    DashboardIncident incident{
        .id = QUuid::createUuid(),
        .startedAt = sample.timestamp,
        .endedAt = std::nullopt,
        .application = task.application,
        .detail = task.detail,
        .peakCPU = std::max(task.cpu, sample.cpuUsage.value().value_or(0.0)),
        .peakTemperature = sample.temperatureCelsius.value(),
        .status = DashboardIncidentStatus::observing,
        .action = std::nullopt,
        .actionAt = std::nullopt,
        .points = {pointFromSample(sample)},
    };
    m_activeIncidentID = incident.id;
    m_incidents.insert(m_incidents.begin(), std::move(incident));
}

void DashboardIncidentTracker::recordAction(const DashboardTask &task,
                                            const std::optional<QString> &processName,
                                            TimePoint time, const SystemMetricSample *sample)
{
    if (!findActive() && sample)
        open(*sample, task);
    DashboardIncident *active = findActive();
    if (!active)
        return;
    active->action = incidentActionText(task, processName);
    active->actionAt = time;
}

void DashboardIncidentTracker::finishActiveIncident(DashboardRecoveryState state, TimePoint time)
{
    DashboardIncident *active = findActive();
    if (!active)
        return;
    const std::optional<DashboardIncidentStatus> status = closingStatus(state);
    if (!status)
        return;
    active->status = *status;
    active->endedAt = time;
    m_activeIncidentID.reset();
}

QString incidentActionText(const DashboardTask &task, const std::optional<QString> &processName)
{
    if (processName)
        return Words::tr("结束 %1 子进程").arg(*processName);
    if (task.kind == TaskKind::build)
        return Words::tr("结束 %1 构建").arg(task.application);
    return Words::tr("结束 %1 任务").arg(task.application);
}
