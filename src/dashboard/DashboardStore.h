#pragma once

#include "dashboard/DashboardIncident.h"
#include "dashboard/DashboardIncidentTracker.h"
#include "dashboard/DashboardModel.h"
#include "dashboard/DashboardTrends.h"
#include "dashboard/MenuBarPresentation.h"
#include "dashboard/ProcessExitWaiter.h"
#include "dashboard/TaskRanking.h"
#include "process/ApplicationLoad.h"
#include "process/ProcessNameOrder.h"
#include "process/TaskMemo.h"
#include "sampling/LiveSystemMonitor.h"
#include "sampling/MetricSampleHistory.h"
#include "termination/ProcessTerminationController.h"
#include "termination/RecoveryEvaluator.h"

#include <QHash>
#include <QLocale>
#include <QObject>
#include <QString>

#include <bitset>
#include <map>
#include <memory>
#include <optional>
#include <vector>

// The centre of the program: owns the live monitor, consumes its samples on
// the thread the store lives on (the main thread), and derives on each sample
// everything the views show.
//
// Threads: every operation and every field read happens on the store's
// thread. The sampler runs on the monitor's producer thread; only whole
// sample values cross over, through the stream's queue and a queued call.
//
// Notification: each observed field has a `<field>Changed` signal. A write
// of a value equal to the current one stores nothing and signals nothing.
// Signals are held back until the whole operation has run (a whole ingest, a
// whole user action), then emitted in the order the signals are declared,
// followed by `changed`: a view that reacts never sees half a tick.
//
// The work is split by what it does: construction, notification and the
// monitoring loop (DashboardStore.cpp); one tick (DashboardStoreIngest.cpp);
// the selection (DashboardStoreSelection.cpp); ending a process
// (DashboardStoreTermination.cpp); what is computed on each call
// (DashboardStoreDerivedViews.cpp).
class TickTexts;

class DashboardStore final : public QObject {
    Q_OBJECT

public:
    DashboardStore(LiveSystemMonitor monitor, ProcessTerminationController terminationController,
                   QObject *parent = nullptr);
    ~DashboardStore() override;

    // Observed fields.
    bool isMonitoring() const { return m_isMonitoring; }
    const QString &selectedTaskID() const { return m_selectedTaskID; }
    const std::optional<QString> &selectedProcessID() const { return m_selectedProcessID; }
    const std::vector<DashboardTask> &liveTasks() const { return m_liveTasks; }
    const std::vector<DashboardTask> &allTasks() const { return m_allTasks; }
    const std::optional<DashboardPendingTermination> &pendingTermination() const
    {
        return m_pendingTermination;
    }
    const std::optional<DashboardTerminationStatus> &terminationStatus() const
    {
        return m_terminationStatus;
    }
    DashboardRecoveryState recoveryState() const { return m_recoveryState; }
    const std::optional<DashboardRecoveryContext> &recoveryContext() const
    {
        return m_recoveryContext;
    }
    const std::optional<QString> &terminationMessage() const { return m_terminationMessage; }
    const std::optional<SystemMetricSample> &latestSystemSample() const
    {
        return m_latestSystemSample;
    }
    const MetricSampleHistory &sampleHistory() const { return m_sampleHistory; }
    const std::vector<DashboardIncident> &incidents() const { return m_incidents; }

    // Chart points and the sensor table, computed afresh on each call.
    std::vector<HeatTrendPoint> heatTrendPoints(double windowSeconds) const;
    std::vector<HardwareTrendPoint> hardwareTrendPoints(double windowSeconds) const;
    std::vector<DashboardSensorStatus> sensorStatuses() const;

    // What the menu bar item and its panel show now.
    MenuBarPresentation menuBarPresentation() const;

    // Empties the incident log, an active incident included; the next hot
    // sample opens a new one. The settings page asks the user first.
    void clearIncidents();

    // Monitoring. Starting twice makes one producer; stopping twice is harmless.
    // Stopping touches nothing but `isMonitoring`: all derived state stays, and
    // the sampler with its snapshots lives on for the next start.
    void startMonitoring();
    void stopMonitoring();

    // Applies one sample, whole. In the running program the monitoring loop is
    // its only caller; tests and headless tools drive the store through it.
    void ingest(const SystemMetricSample &sample);

    // Selection (user clicks). Selecting a task always moves the process
    // selection to that task's target node; an id that is not listed, or a
    // node of another task, changes nothing.
    void selectTask(const QString &taskID);
    void selectProcess(const QString &processNodeID);
    // The task of `selectedTaskID` among `allTasks`; null when none is selected
    // or it is no longer listed. Valid until the next change of `allTasks`.
    const DashboardTask *selectedTask() const;
    // The selected node; with no process selected, the selected task's target.
    std::optional<DashboardProcessNode> selectedProcess() const;
    // The selected task's diagnosis, or the placeholder while none is selected.
    TaskDiagnosis selectedDiagnosis() const;
    // `liveTasks`, plus the selected task when it has fallen out of them: the
    // page's attention list. Pointers, not copies of the tasks and their
    // trees; valid until the next change of `liveTasks` or `allTasks`.
    std::vector<const DashboardTask *> visibleTasks() const;

    // Termination (DashboardStoreTermination.cpp). One termination runs at a
    // time from the user's view: the page offers the action only through
    // `canTerminateSelectedProcess`.
    //
    // Records what the user saw of `process` and asks for confirmation; the
    // mode is forced only after this same node ignored a graceful signal.
    // Nothing happens for a node that the last sample offers no target for.
    void requestTermination(const DashboardTask &task, const DashboardProcessNode &process);
    // The safety check and one signal, then a wait of at most about 2 s for the
    // exit. Returns at once: the wait runs off the store's thread, and ingest
    // and user actions go on until its answer arrives as a queued call.
    void confirmTermination();
    // The dialog was dismissed: clears the pending request, nothing else.
    void cancelTermination();
    bool canTerminateSelectedProcess() const;
    // The last attempt's status, when it is about the selected process.
    std::optional<DashboardTerminationStatus> selectedTerminationStatus() const;

    // What the confirmation will act on: the record the user saw.
    const std::optional<ProcessTerminationTarget> &pendingTerminationTarget() const
    {
        return m_pendingTerminationTarget;
    }

signals:
    // One signal per observed field, in the order they are emitted; a write
    // names its field by its signal.
    void isMonitoringChanged();
    void selectedTaskIDChanged();
    void selectedProcessIDChanged();
    void liveTasksChanged();
    void allTasksChanged();
    void pendingTerminationChanged();
    void terminationStatusChanged();
    void recoveryStateChanged();
    void recoveryContextChanged();
    void terminationMessageChanged();
    void latestSystemSampleChanged();
    void sampleHistoryChanged();
    void incidentsChanged();
    // After any operation that changed at least one observed field.
    void changed();

private:
    using FieldSignal = void (DashboardStore::*)();

    // Holds notifications back until the outermost batch ends.
    class NotificationBatch {
    public:
        explicit NotificationBatch(DashboardStore &store);
        ~NotificationBatch();
        NotificationBatch(const NotificationBatch &) = delete;
        NotificationBatch &operator=(const NotificationBatch &) = delete;

    private:
        DashboardStore &m_store;
    };

    template <typename T> void write(T &field, T value, FieldSignal notify)
    {
        if (field == value)
            return;
        field = std::move(value);
        markChanged(notify);
    }
    void markChanged(FieldSignal notify);
    void emitPending();

    // Termination steps (DashboardStoreTermination.cpp).
    std::optional<DashboardRecoveryState> applyRecoveryVerdict(const SystemMetricSample &sample);
    void rebuildTerminationTargets(const SystemMetricSample &sample, TickTexts &texts);
    void finishTerminationWait(const DashboardPendingTermination &pending,
                               const std::optional<SystemMetricSample> &baseline,
                               bool stillRunning);
    void recordTerminationFailure(const DashboardPendingTermination &pending);
    void writeTerminationStatus(const DashboardPendingTermination &pending,
                                DashboardTerminationPhase phase);

    void drainStream(quint64 generation);

    // Ingest, load sources: the warm-up gate, ranking and stable targets; the
    // tasks (DashboardStoreIngest.cpp); the selection kept valid
    // (DashboardStoreSelection.cpp).
    std::vector<ApplicationLoad> rankForTick(std::vector<ApplicationLoad> loads,
                                             TimePoint timestamp);
    void publishTasks(std::vector<ApplicationLoad> rankedLoads, TickTexts &texts);
    // The texts of this tick: those of the last one while the user's locale
    // holds, a new collator and empty memos when it changed.
    TickTexts &textsForTick(qsizetype processCount);
    // Makes the next tick recompute all it derives, as the first one does.
    void forgetIngestMemos();
    void keepSelectionValid(const QString &firstBusyLoadID);
    void pruneRetiredStreams();

    void updateMenuBarAbnormalState(const SystemMetricSample &sample);
    // Copies the tracker's list to `incidents`; after every change to the tracker.
    void publishIncidents();

    // Observed fields.
    bool m_isMonitoring = false;
    QString m_selectedTaskID;
    std::optional<QString> m_selectedProcessID;
    std::vector<DashboardTask> m_liveTasks;
    std::vector<DashboardTask> m_allTasks;
    std::optional<DashboardPendingTermination> m_pendingTermination;
    std::optional<DashboardTerminationStatus> m_terminationStatus;
    DashboardRecoveryState m_recoveryState = DashboardRecoveryState::idle;
    std::optional<DashboardRecoveryContext> m_recoveryContext;
    std::optional<QString> m_terminationMessage;
    std::optional<SystemMetricSample> m_latestSystemSample;
    MetricSampleHistory m_sampleHistory{3600.0};
    std::vector<DashboardIncident> m_incidents;

    // Working state.
    LiveSystemMonitor m_monitor;
    // The running loop: present exactly while monitoring runs.
    std::unique_ptr<SampleStream> m_monitoringStream;
    // Streams that were stopped but whose producer may still finish a tick;
    // kept so their threads are joined without blocking the stop.
    std::vector<std::unique_ptr<SampleStream>> m_retiredStreams;
    // Tells the queued deliveries of a stopped stream from the current one's.
    quint64 m_streamGeneration = 0;
    // Smoothed scores and the last reorder; standing targets and their last
    // refresh.
    TaskOrderState m_taskOrder;
    TaskTargetState m_taskTargets;
    // Samples seen so far whose grouping was not empty; the first one, when
    // all its scores are 0 (rates need two readings), ranks nothing.
    qint64 m_processMetricSampleCount = 0;

    ProcessTerminationController m_terminationController;
    std::optional<RecoveryEvaluator> m_recoveryEvaluator;
    // The last sample's records by node key: those the record rules offer,
    // and those they refuse (DashboardStoreTermination.cpp).
    QHash<QString, ProcessTerminationTarget> m_processTerminationTargets;
    QHash<QString, ProcessTerminationTarget> m_refusedTerminationTargets;
    // The list those tables were made from, when it holds each pid once in
    // rising order; none when they must be made anew.
    std::optional<QList<ProcessMetric>> m_terminationTargetsSource;
    std::optional<ProcessTerminationTarget> m_pendingTerminationTarget;
    // Exit waits in progress; destroyed (cancelled and joined) with the store.
    ProcessExitWaiter m_exitWaiter;

    // What ingest keeps from tick to tick, none of it observed: the name order
    // of the locale it was made for, the texts and node keys made with it,
    // and the tasks by source (DashboardStoreIngest.cpp).
    QLocale m_nameOrderLocale;
    std::unique_ptr<ProcessNameOrder> m_nameOrder;
    std::unique_ptr<TickTexts> m_tickTexts; // refers to *m_nameOrder
    TaskMemo m_taskMemo;

    // The incident log; `incidents` is its published copy.
    DashboardIncidentTracker m_incidentTracker;
    std::optional<TimePoint> m_menuBarAbnormalStartedAt;

    int m_batchDepth = 0;
    // Field signals marked and not yet emitted, by their index among the
    // class's own methods (signals come first, in declaration order).
    std::bitset<32> m_pending;
};
