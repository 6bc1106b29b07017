// The store's side of ending a process: which nodes may be offered, the
// request and its confirmation, the wait for the exit, and the verification
// of recovery that follows. The controller does the checks and sends the
// signal; the recovery evaluator gives the verdict.

#include "dashboard/DashboardStore.h"

#include "dashboard/RecoveryStart.h"
#include "dashboard/TaskRanking.h"
#include "process/TaskAssembly.h"
#include "sampling/Text.h"

#include <algorithm>

namespace {

ProcessTerminationTarget targetOf(const ProcessMetric &process)
{
    return ProcessTerminationTarget{process.identity, process.userID, process.name};
}

// The incident names the process only when it is not the one that stands for
// the task; the task's own kind names the action otherwise.
std::optional<QString> actionProcessName(const DashboardProcessNode &process)
{
    return process.isTarget ? std::nullopt : std::optional<QString>(process.name);
}

} // namespace

std::optional<DashboardRecoveryState>
DashboardStore::applyRecoveryVerdict(const SystemMetricSample &sample)
{
    if (!m_recoveryEvaluator)
        return std::nullopt;
    write(m_recoveryState, m_recoveryEvaluator->evaluate(sample),
          &DashboardStore::recoveryStateChanged);
    if (m_recoveryState == DashboardRecoveryState::recovering)
        return std::nullopt;
    m_recoveryEvaluator.reset();
    return m_recoveryState;
}

void DashboardStore::rebuildTerminationTargets(const SystemMetricSample &sample, TickTexts &texts)
{
    // The whole sample, not the ranked loads: a node is offered by the same
    // rules that the safety check applies again to the record at the signal.
    // The rules read nothing but the record, so the tables follow the records
    // that changed: where this list and the one the tables were made from
    // both hold each pid once, in rising order (as the reader lists them), a
    // walk through both checks only the records that started, left or
    // changed. Anything else makes the tables anew.
    const QList<ProcessMetric> &processes = sample.processMetrics;
    const bool risingPIDs = std::adjacent_find(processes.begin(), processes.end(),
                                               [](const auto &left, const auto &right) {
                                                   return left.identity.pid >= right.identity.pid;
                                               }) == processes.end();
    const auto remove = [&](const ProcessMetric &process) {
        const QString key = texts.nodeKey(process.identity);
        if (!m_processTerminationTargets.remove(key))
            m_refusedTerminationTargets.remove(key);
    };
    const auto add = [&](const ProcessMetric &process) {
        ProcessTerminationTarget target = targetOf(process);
        auto &table = m_terminationController.checkRecord(target) ? m_refusedTerminationTargets
                                                                  : m_processTerminationTargets;
        table.insert(texts.nodeKey(process.identity), std::move(target));
    };
    if (!m_terminationTargetsSource || !risingPIDs) {
        m_processTerminationTargets.clear();
        m_refusedTerminationTargets.clear();
        for (const ProcessMetric &process : processes)
            add(process);
        m_terminationTargetsSource = risingPIDs ? std::optional(processes) : std::nullopt;
        return;
    }

    const QList<ProcessMetric> &before = *m_terminationTargetsSource;
    auto old = before.begin();
    auto now = processes.begin();
    while (old != before.end() || now != processes.end()) {
        if (now == processes.end() ||
            (old != before.end() && old->identity.pid < now->identity.pid)) {
            remove(*old++);
        } else if (old == before.end() || now->identity.pid < old->identity.pid) {
            add(*now++);
        } else {
            // targetOf(*old) == targetOf(*now), without making either.
            if (old->identity != now->identity || old->userID != now->userID ||
                old->name != now->name) {
                remove(*old);
                add(*now);
            }
            ++old;
            ++now;
        }
    }
    m_terminationTargetsSource = processes;
}

void DashboardStore::requestTermination(const DashboardTask &task,
                                        const DashboardProcessNode &process)
{
    const auto found = m_processTerminationTargets.constFind(process.id);
    if (found == m_processTerminationTargets.constEnd())
        return;
    NotificationBatch batch(*this);
    // Forced only through a graceful signal that this same node ignored.
    const bool ignoredGraceful =
        m_terminationStatus && m_terminationStatus->processNodeID == process.id &&
        m_terminationStatus->phase == DashboardTerminationPhase::unresponsive;
    const ProcessTerminationSignal mode =
        ignoredGraceful ? ProcessTerminationSignal::forced : ProcessTerminationSignal::graceful;
    write(m_terminationMessage, std::optional<QString>(),
          &DashboardStore::terminationMessageChanged);
    write(m_pendingTermination,
          std::optional<DashboardPendingTermination>(
              DashboardPendingTermination{task, process, mode}),
          &DashboardStore::pendingTerminationChanged);
    // A copy of what the user saw, not of what a later tick finds.
    m_pendingTerminationTarget = *found;
}

void DashboardStore::cancelTermination()
{
    NotificationBatch batch(*this);
    write(m_pendingTermination, std::optional<DashboardPendingTermination>(),
          &DashboardStore::pendingTerminationChanged);
    m_pendingTerminationTarget.reset();
}

void DashboardStore::writeTerminationStatus(const DashboardPendingTermination &pending,
                                            DashboardTerminationPhase phase)
{
    write(m_terminationStatus,
          std::optional<DashboardTerminationStatus>(DashboardTerminationStatus{
              pending.process.id, pending.process.name, pending.process.pid, pending.mode, phase}),
          &DashboardStore::terminationStatusChanged);
}

void DashboardStore::confirmTermination()
{
    if (!m_pendingTermination || !m_pendingTerminationTarget)
        return;
    NotificationBatch batch(*this);
    const DashboardPendingTermination pending = *m_pendingTermination;
    const ProcessTerminationTarget target = *m_pendingTerminationTarget;
    write(m_pendingTermination, std::optional<DashboardPendingTermination>(),
          &DashboardStore::pendingTerminationChanged);
    m_pendingTerminationTarget.reset();

    // Taken before the signal, so that the verification compares with the
    // machine under load.
    const std::optional<SystemMetricSample> baseline = m_latestSystemSample;
    ProcessTerminationAttempt attempt = m_terminationController.attempt(target, pending.mode);
    const ProcessTerminationResult &result = attempt.result;
    const QString &name = pending.process.name;

    if (!result.isSignalSent()) {
        writeTerminationStatus(pending, DashboardTerminationPhase::failed);
        write(m_terminationMessage, std::optional<QString>(tr("%1：%2").arg(name, result.text())),
              &DashboardStore::terminationMessageChanged);
        recordTerminationFailure(pending);
        return;
    }

    writeTerminationStatus(pending, DashboardTerminationPhase::verifying);
    // An earlier verification still open is given up; its state stays shown
    // until this termination has an outcome.
    m_recoveryEvaluator.reset();
    const QString verifying = pending.mode == ProcessTerminationSignal::forced
                                  ? tr("%1：正在确认强制结束结果…")
                                  : tr("%1：已发送退出请求，正在确认…");
    write(m_terminationMessage, std::optional<QString>(verifying.arg(name)),
          &DashboardStore::terminationMessageChanged);

    m_exitWaiter.start(m_terminationController, target, std::move(attempt.pin),
                       [this, pending, baseline](bool stillRunning) {
                           finishTerminationWait(pending, baseline, stillRunning);
                       });
}

void DashboardStore::finishTerminationWait(const DashboardPendingTermination &pending,
                                           const std::optional<SystemMetricSample> &baseline,
                                           bool stillRunning)
{
    NotificationBatch batch(*this);
    const QString &name = pending.process.name;
    const bool forced = pending.mode == ProcessTerminationSignal::forced;

    if (stillRunning) {
        writeTerminationStatus(pending, forced ? DashboardTerminationPhase::failed
                                               : DashboardTerminationPhase::unresponsive);
        const QString message =
            forced ? tr("%1：强制结束后进程仍在运行。") : tr("%1：进程仍在运行，可尝试强制结束。");
        write(m_terminationMessage, std::optional<QString>(message.arg(name)),
              &DashboardStore::terminationMessageChanged);
        recordTerminationFailure(pending);
        return;
    }

    writeTerminationStatus(pending, DashboardTerminationPhase::exited);
    const QString message = forced ? tr("%1：进程已强制结束。") : tr("%1：进程已结束。");
    write(m_terminationMessage, std::optional<QString>(message.arg(name)),
          &DashboardStore::terminationMessageChanged);

    RecoveryStart start = RecoveryStart::afterExit(pending, baseline);
    if (!start.context) {
        // Nothing to compare with, and no incident action without a sample.
        write(m_recoveryState, start.state, &DashboardStore::recoveryStateChanged);
        return;
    }
    write(m_recoveryContext, std::move(start.context), &DashboardStore::recoveryContextChanged);
    // Ending a process always leaves a trace in the log, hot machine or not.
    m_incidentTracker.recordAction(pending.task, actionProcessName(pending.process),
                                   baseline->timestamp, &*baseline);
    publishIncidents();
    m_recoveryEvaluator = std::move(start.evaluator);
    write(m_recoveryState, start.state, &DashboardStore::recoveryStateChanged);
}

void DashboardStore::recordTerminationFailure(const DashboardPendingTermination &pending)
{
    m_recoveryEvaluator.reset();
    write(m_recoveryState, DashboardRecoveryState::terminationFailed,
          &DashboardStore::recoveryStateChanged);
    // The latest sample, not the baseline: a later tick may have come in
    // while the exit was awaited.
    const SystemMetricSample *latest = m_latestSystemSample ? &*m_latestSystemSample : nullptr;
    const TimePoint time = latest ? latest->timestamp : TimePoint::now();
    m_incidentTracker.recordAction(pending.task, actionProcessName(pending.process), time, latest);
    m_incidentTracker.finishActiveIncident(DashboardRecoveryState::terminationFailed, time);
    publishIncidents();
}

bool DashboardStore::canTerminateSelectedProcess() const
{
    const DashboardTask *task = findTask(m_allTasks, m_selectedTaskID);
    const std::optional<DashboardProcessNode> process = selectedProcess();
    if (!task || !process || !m_processTerminationTargets.contains(process->id))
        return false;
    if (m_terminationStatus) {
        // One termination at a time, whichever process it is for.
        if (m_terminationStatus->phase == DashboardTerminationPhase::verifying)
            return false;
        if (m_terminationStatus->processNodeID == process->id) {
            if (m_terminationStatus->phase == DashboardTerminationPhase::exited)
                return false;
            // Forced and still there: nothing further to try.
            if (m_terminationStatus->phase == DashboardTerminationPhase::failed &&
                m_terminationStatus->mode == ProcessTerminationSignal::forced)
                return false;
        }
    }
    // The classification speaks for the target only; another process of the
    // tree may be ended whatever the task's kind.
    return process->isTarget ? task->canTerminate : true;
}

std::optional<DashboardTerminationStatus> DashboardStore::selectedTerminationStatus() const
{
    const std::optional<DashboardProcessNode> process = selectedProcess();
    if (m_terminationStatus && process && process->id == m_terminationStatus->processNodeID)
        return m_terminationStatus;
    return std::nullopt;
}
