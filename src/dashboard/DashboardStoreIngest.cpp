// One tick: the sample, the history, the recovery verdict, the ranked tasks,
// the selection kept valid, the menu bar's abnormal time and the incidents.

#include "dashboard/DashboardStore.h"

#include "process/ApplicationGrouping.h"
#include "process/TaskAssembly.h"
#include "sampling/Text.h"

#include <algorithm>

namespace {

constexpr std::size_t kLiveTaskCount = 4;

} // namespace

void DashboardStore::ingest(const SystemMetricSample &sample)
{
    NotificationBatch batch(*this);

    // 1. The newest sample.
    write(m_latestSystemSample, std::optional<SystemMetricSample>(sample),
          &DashboardStore::latestSystemSampleChanged);

    // 2. The history; this notifies on every sample.
    m_sampleHistory.append(sample);
    markChanged(&DashboardStore::sampleHistoryChanged);

    // 3. Recovery verdict of an open verification.
    const std::optional<DashboardRecoveryState> finishedRecovery = applyRecoveryVerdict(sample);

    // 4.-6. Grouping, warm-up gate, ranking and stable targets.
    std::vector<ApplicationLoad> loads = groupApplicationLoads(sample.processMetrics);
    const QString firstBusyLoad = firstBusyLoadID(loads);
    std::vector<ApplicationLoad> rankedLoads = rankForTick(std::move(loads), sample.timestamp);
    // One collator, locale and set of node keys for the rest of the tick.
    TickTexts &texts = textsForTick(sample.processMetrics.size());
    // 7. Termination targets.
    rebuildTerminationTargets(sample, texts);

    // 8.-9. Tasks and live tasks.
    publishTasks(std::move(rankedLoads), texts);
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

void DashboardStore::clearIncidents()
{
    NotificationBatch batch(*this);
    m_incidentTracker = DashboardIncidentTracker();
    publishIncidents();
}

void DashboardStore::publishIncidents()
{
    write(m_incidents, m_incidentTracker.incidents(), &DashboardStore::incidentsChanged);
}

std::vector<ApplicationLoad> DashboardStore::rankForTick(std::vector<ApplicationLoad> loads,
                                                         TimePoint timestamp)
{
    // The process probe needs two readings for rates, so the first sample's
    // processes all read 0: ranking them would seed every smoothed score with
    // 0 and select nothing. Such a first sample ranks nothing; a first sample
    // with no processes at all does not use the gate up.
    bool gated = false;
    if (!loads.empty()) {
        ++m_processMetricSampleCount;
        gated = m_processMetricSampleCount == 1 &&
                std::all_of(loads.begin(), loads.end(),
                            [](const ApplicationLoad &load) { return loadScore(load) == 0.0; });
    }
    std::vector<ApplicationLoad> input = gated ? std::vector<ApplicationLoad>() : std::move(loads);
    const LoadIndexByID index = indexLoadsByID(input);
    std::vector<ApplicationLoad> ranked =
        rankLoads(std::move(input), index, timestamp, m_allTasks, m_taskOrder);
    return stabilizeTargets(std::move(ranked), index, timestamp, m_taskTargets);
}

TickTexts &DashboardStore::textsForTick(qsizetype processCount)
{
    // The trees collate in the user's locale of the moment, the texts are
    // those of the interface's language; what was made with others goes.
    const QLocale locale;
    if (!m_nameOrder || locale != m_nameOrderLocale || m_tickTexts->locale() != interfaceLocale()) {
        forgetIngestMemos();
        m_nameOrderLocale = locale;
        m_nameOrder = std::make_unique<ProcessNameOrder>(locale);
        m_tickTexts = std::make_unique<TickTexts>(*m_nameOrder);
    }
    m_tickTexts->forgetBeyond(4 * processCount + 1024);
    return *m_tickTexts;
}

void DashboardStore::forgetIngestMemos()
{
    m_taskMemo.clear();
    m_tickTexts.reset();
    m_nameOrder.reset();
    m_terminationTargetsSource.reset();
}

void DashboardStore::publishTasks(std::vector<ApplicationLoad> rankedLoads, TickTexts &texts)
{
    // A source whose inputs are those of the last tick keeps its task. While
    // each one does so at the place it had, nothing is copied: a tick that
    // keeps them all leaves both lists as they are.
    std::vector<DashboardTask> tasks;
    bool same = rankedLoads.size() == m_allTasks.size();
    for (std::size_t index = 0; index < rankedLoads.size(); ++index) {
        const TaskMemo::Answer answer = m_taskMemo.task(std::move(rankedLoads[index]), texts);
        if (same && answer.kept && m_allTasks[index].id == answer.task.id)
            continue;
        if (same) {
            same = false;
            tasks.reserve(rankedLoads.size());
            tasks.assign(m_allTasks.begin(), m_allTasks.begin() + std::ptrdiff_t(index));
        }
        tasks.push_back(answer.task);
    }
    m_taskMemo.endTick();
    if (same)
        return;
    write(m_allTasks, std::move(tasks), &DashboardStore::allTasksChanged);
    const std::size_t liveCount = std::min(kLiveTaskCount, m_allTasks.size());
    write(m_liveTasks,
          std::vector<DashboardTask>(m_allTasks.begin(),
                                     m_allTasks.begin() + std::ptrdiff_t(liveCount)),
          &DashboardStore::liveTasksChanged);
}
