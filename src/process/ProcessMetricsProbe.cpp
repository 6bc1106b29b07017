#include "process/ProcessMetricsProbe.h"

#include <cmath>

namespace {

// Seconds as whole nanoseconds; 0 for a step back, a still clock or a value
// that is not a number, and the largest count for an absurdly long gap (a
// double beyond 2⁶⁴ has no defined conversion).
std::uint64_t elapsedNanoseconds(double seconds)
{
    if (!(seconds > 0.0))
        return 0;
    const double nanoseconds = seconds * 1e9;
    if (nanoseconds >= 18446744073709551615.0)
        return UINT64_MAX;
    return static_cast<std::uint64_t>(nanoseconds);
}

} // namespace

ProcessMetricsProbe::ProcessMetricsProbe(std::unique_ptr<RawProcessMetricReading> reader)
    : m_reader(std::move(reader))
{
}

QString ProcessMetricsProbe::shared(const QString &text)
{
    if (const auto found = m_texts.constFind(text); found != m_texts.cend())
        return *found;
    m_texts.insert(text);
    return text;
}

void ProcessMetricsProbe::keep(QString &slot, const QString &text)
{
    if (slot == text)
        return;
    slot = shared(text);
}

void ProcessMetricsProbe::keep(std::optional<QString> &slot, const std::optional<QString> &text)
{
    if (slot && text) {
        keep(*slot, *text);
    } else if (slot || text) {
        slot = text ? std::optional(shared(*text)) : std::nullopt;
    }
}

void ProcessMetricsProbe::describe(ProcessMetric &metric, const RawProcessMetric &record,
                                   TimePoint now)
{
    metric.identity.pid = record.identity.pid;
    metric.identity.startTime = record.identity.startTime;
    keep(metric.identity.executablePath, record.identity.executablePath);
    metric.parentPID = record.parentPID;
    metric.processGroupID = record.processGroupID;
    metric.userID = record.userID;
    metric.isServiceManager = record.isServiceManager;
    metric.leadsTerminalSession = record.leadsTerminalSession;
    keep(metric.controlGroup, record.controlGroup);
    keep(metric.name, record.name);
    keep(metric.applicationPath, record.applicationPath);
    keep(metric.applicationName, record.applicationName);
    keep(metric.command.command, record.command.command);
    keep(metric.command.project, record.command.project);
    metric.residentBytes = record.residentBytes;
    metric.cpuPercent = 0.0;
    metric.diskBytesPerSecond = 0.0;
    const double age = now.secondsSince(record.identity.startTime);
    metric.duration = age > 0.0 ? age : 0.0;
}

QList<ProcessMetric> ProcessMetricsProbe::sample(TimePoint now)
{
    const std::uint64_t elapsed =
        m_previousSampleTime ? elapsedNanoseconds(now.secondsSince(*m_previousSampleTime)) : 0;
    ++m_tick;

    QList<ProcessMetric> metrics;
    metrics.reserve(static_cast<qsizetype>(m_known.size()) + 16);
    // Rates need the same process (pid, start time and executable) on the
    // last tick, time that moved forward and counters that did not go back.
    const auto rate = [&](ProcessMetric &metric, bool comparable, std::uint64_t cpuBefore,
                          std::uint64_t diskBefore, const RawProcessMetric &record) {
        if (!comparable || elapsed == 0 || record.totalCPUNanoseconds < cpuBefore ||
            record.diskBytes < diskBefore)
            return;
        const double interval = static_cast<double>(elapsed);
        metric.cpuPercent =
            static_cast<double>(record.totalCPUNanoseconds - cpuBefore) / interval * 100.0;
        metric.diskBytesPerSecond =
            static_cast<double>(record.diskBytes - diskBefore) / interval * 1e9;
    };

    m_reader->visitMetrics(now, [&](const RawProcessMetric &record) {
        const auto [entry, isNew] = m_known.try_emplace(record.identity.pid);
        KnownProcess &known = entry->second;
        if (!isNew && known.tick == m_tick) {
            // A pid listed twice in one tick keeps the first record's
            // counters; the second is rated against the tick before when it
            // is the same process as the first.
            ProcessMetric metric = known.metric;
            describe(metric, record, now);
            rate(metric, known.earlierComparable && record.identity == known.metric.identity,
                 known.earlierCPUNanoseconds, known.earlierDiskBytes, record);
            metrics.append(std::move(metric));
            return;
        }
        // Every known entry was listed on the last tick: the others left.
        known.earlierComparable = !isNew && known.metric.identity == record.identity;
        known.earlierCPUNanoseconds = known.totalCPUNanoseconds;
        known.earlierDiskBytes = known.diskBytes;
        known.totalCPUNanoseconds = record.totalCPUNanoseconds;
        known.diskBytes = record.diskBytes;
        known.tick = m_tick;
        describe(known.metric, record, now);
        rate(known.metric, known.earlierComparable, known.earlierCPUNanoseconds,
             known.earlierDiskBytes, record);
        metrics.append(known.metric);
    });

    std::erase_if(m_known, [&](const auto &entry) { return entry.second.tick != m_tick; });
    m_previousSampleTime = now;
    // The records of gone processes and replaced texts are released by now,
    // or by the consumer of an older sample soon: a text that only this pool
    // holds leaves it.
    m_texts.removeIf([](const QString &text) { return text.isDetached(); });
    return metrics;
}
