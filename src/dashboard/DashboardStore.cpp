#include "dashboard/DashboardStore.h"

#include "process/ApplicationGrouping.h"
#include "process/TaskAssembly.h"

#include <QMetaObject>

DashboardStore::DashboardStore(LiveSystemMonitor monitor,
                               ProcessTerminationController terminationController, QObject *parent)
    : QObject(parent), m_monitor(std::move(monitor)),
      m_terminationController(std::move(terminationController))
{
}

DashboardStore::~DashboardStore()
{
    // Producer threads call back into this object; end them before it goes.
    if (m_monitoringStream)
        m_monitoringStream->terminate();
    for (auto &stream : m_retiredStreams)
        stream->terminate();
    m_monitoringStream.reset();
    m_retiredStreams.clear();
}

DashboardStore::NotificationBatch::NotificationBatch(DashboardStore &store) : m_store(store)
{
    ++m_store.m_batchDepth;
}

DashboardStore::NotificationBatch::~NotificationBatch()
{
    if (--m_store.m_batchDepth == 0)
        m_store.emitPending();
}

void DashboardStore::markChanged(Field which)
{
    m_pending.set(static_cast<std::size_t>(which));
    if (m_batchDepth == 0)
        emitPending();
}

void DashboardStore::emitPending()
{
    if (m_pending.none())
        return;
    const auto pending = m_pending;
    m_pending.reset();
    auto has = [&](Field field) { return pending.test(static_cast<std::size_t>(field)); };
    if (has(Field::isMonitoring))
        emit isMonitoringChanged();
    if (has(Field::selectedTaskID))
        emit selectedTaskIDChanged();
    if (has(Field::selectedProcessID))
        emit selectedProcessIDChanged();
    if (has(Field::liveTasks))
        emit liveTasksChanged();
    if (has(Field::allTasks))
        emit allTasksChanged();
    if (has(Field::pendingTermination))
        emit pendingTerminationChanged();
    if (has(Field::terminationStatus))
        emit terminationStatusChanged();
    if (has(Field::recoveryState))
        emit recoveryStateChanged();
    if (has(Field::recoveryContext))
        emit recoveryContextChanged();
    if (has(Field::terminationMessage))
        emit terminationMessageChanged();
    if (has(Field::latestSystemSample))
        emit latestSystemSampleChanged();
    if (has(Field::sampleHistory))
        emit sampleHistoryChanged();
    if (has(Field::incidents))
        emit incidentsChanged();
    emit changed();
}

void DashboardStore::startMonitoring()
{
    if (m_monitoringStream)
        return;
    NotificationBatch batch(*this);
    pruneRetiredStreams();
    write(m_isMonitoring, true, Field::isMonitoring);
    const quint64 generation = ++m_streamGeneration;
    // Runs on the producer thread: hand the store's thread a queued call. If
    // the store is gone by then, Qt drops the call with the store's events.
    m_monitoringStream = m_monitor.samples([this, generation] {
        QMetaObject::invokeMethod(
            this, [this, generation] { drainStream(generation); }, Qt::QueuedConnection);
    });
}

void DashboardStore::stopMonitoring()
{
    NotificationBatch batch(*this);
    if (m_monitoringStream) {
        m_monitoringStream->terminate();
        m_retiredStreams.push_back(std::move(m_monitoringStream));
        ++m_streamGeneration; // deliveries already queued are dropped
    }
    pruneRetiredStreams();
    write(m_isMonitoring, false, Field::isMonitoring);
}

void DashboardStore::pruneRetiredStreams()
{
    std::erase_if(m_retiredStreams, [](const auto &stream) { return stream->isFinished(); });
}

void DashboardStore::drainStream(quint64 generation)
{
    // The loop: take what the producer queued and ingest it sample by sample.
    // A delivery of a stream that was stopped meanwhile is dropped here.
    if (generation != m_streamGeneration || !m_monitoringStream)
        return;
    for (const SystemMetricSample &sample : m_monitoringStream->takeAll()) {
        if (generation != m_streamGeneration || !m_monitoringStream)
            return;
        ingest(sample);
    }
}

void DashboardStore::ingest(const SystemMetricSample &sample)
{
    NotificationBatch batch(*this);

    // 1. The newest sample.
    write(m_latestSystemSample, std::optional<SystemMetricSample>(sample),
          Field::latestSystemSample);

    // 2. The history; this notifies on every sample.
    m_sampleHistory.append(sample);
    markChanged(Field::sampleHistory);

    // 3. Recovery verdict of an open verification.
    const std::optional<DashboardRecoveryState> finishedRecovery = applyRecoveryVerdict(sample);

    // 4.-6. Grouping, warm-up gate, ranking and stable targets.
    std::vector<ApplicationLoad> loads = groupApplicationLoads(sample.processMetrics);
    const QString firstBusyLoad = firstBusyLoadID(loads);
    const std::vector<ApplicationLoad> rankedLoads =
        rankForTick(std::move(loads), sample.timestamp);
    // One collator, locale and set of node keys for the rest of the tick.
    const ProcessNameOrder order;
    TickTexts texts(order);
    // 7. Termination targets.
    rebuildTerminationTargets(sample, texts);

    // 8.-9. Tasks and live tasks.
    publishTasks(rankedLoads, texts);
    // 10.-11. Selection of task and process.
    keepSelectionValid(firstBusyLoad);
    // 12. Menu bar abnormal time.
    updateMenuBarAbnormalState(sample);

    // 13.-15. Incident observation, verdict, publication. The tick's point
    // goes in before a finished verdict closes the incident.
    m_incidentTracker.observe(sample, m_liveTasks.empty() ? nullptr : &m_liveTasks.front());
    if (finishedRecovery)
        m_incidentTracker.finishActiveIncident(*finishedRecovery, sample.timestamp);
    publishIncidents();
}

void DashboardStore::updateMenuBarAbnormalState(const SystemMetricSample &sample)
{
    const std::optional<double> topTaskCPU =
        m_liveTasks.empty() ? std::nullopt : std::optional<double>(m_liveTasks.front().cpu);
    if (!isAbnormalMenuBarState(menuBarState(&sample, topTaskCPU))) {
        // One calm sample ends the episode: the next one starts anew.
        m_menuBarAbnormalStartedAt.reset();
        return;
    }
    // A move between the two abnormal states keeps the start.
    if (!m_menuBarAbnormalStartedAt)
        m_menuBarAbnormalStartedAt = sample.timestamp;
}

MenuBarPresentation DashboardStore::menuBarPresentation() const
{
    return makePresentation(m_latestSystemSample ? &*m_latestSystemSample : nullptr, m_allTasks,
                            m_menuBarAbnormalStartedAt);
}

void DashboardStore::clearIncidents()
{
    NotificationBatch batch(*this);
    m_incidentTracker = DashboardIncidentTracker();
    publishIncidents();
}

void DashboardStore::publishIncidents()
{
    write(m_incidents, m_incidentTracker.incidents(), Field::incidents);
}
