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
    if (const auto current = m_currentTexts.constFind(text); current != m_currentTexts.cend())
        return *current;
    if (const auto previous = m_previousTexts.constFind(text); previous != m_previousTexts.cend()) {
        m_currentTexts.insert(*previous);
        return *previous;
    }
    m_currentTexts.insert(text);
    return text;
}

std::optional<QString> ProcessMetricsProbe::shared(const std::optional<QString> &text)
{
    if (!text)
        return std::nullopt;
    return shared(*text);
}

QList<ProcessMetric> ProcessMetricsProbe::sample(TimePoint now)
{
    const std::vector<RawProcessMetric> raw = m_reader->readMetrics(now);
    const std::uint64_t elapsed =
        m_previousSampleTime ? elapsedNanoseconds(now.secondsSince(*m_previousSampleTime)) : 0;

    QHash<pid_t, ProcessCounterSnapshot> counters;
    counters.reserve(static_cast<qsizetype>(raw.size()));
    m_currentTexts.clear();
    m_currentTexts.reserve(m_previousTexts.size());
    QList<ProcessMetric> metrics;
    metrics.reserve(static_cast<qsizetype>(raw.size()));

    for (const RawProcessMetric &record : raw) {
        const ProcessCounterSnapshot snapshot{record.identity, record.totalCPUNanoseconds,
                                              record.diskBytes};
        ProcessMetric metric;
        metric.identity = {record.identity.pid, record.identity.startTime,
                           shared(record.identity.executablePath)};
        metric.parentPID = record.parentPID;
        metric.processGroupID = record.processGroupID;
        metric.userID = record.userID;
        metric.isServiceManager = record.isServiceManager;
        metric.leadsTerminalSession = record.leadsTerminalSession;
        metric.controlGroup = shared(record.controlGroup);
        metric.name = shared(record.name);
        metric.applicationPath = shared(record.applicationPath);
        metric.applicationName = shared(record.applicationName);
        metric.command = {shared(record.command.command), shared(record.command.project)};
        metric.residentBytes = record.residentBytes;

        const auto previous = m_previousCounters.constFind(record.identity.pid);
        const bool comparable = previous != m_previousCounters.cend() &&
                                previous->identity == record.identity && elapsed != 0 &&
                                snapshot.totalCPUNanoseconds >= previous->totalCPUNanoseconds &&
                                snapshot.diskBytes >= previous->diskBytes;
        if (comparable) {
            const double interval = static_cast<double>(elapsed);
            metric.cpuPercent =
                static_cast<double>(snapshot.totalCPUNanoseconds - previous->totalCPUNanoseconds) /
                interval * 100.0;
            metric.diskBytesPerSecond =
                static_cast<double>(snapshot.diskBytes - previous->diskBytes) / interval * 1e9;
        }

        const double age = now.secondsSince(record.identity.startTime);
        metric.duration = age > 0.0 ? age : 0.0;

        // A pid listed twice in one tick keeps its first counters; both
        // records are still returned and rated against the previous tick.
        if (!counters.contains(record.identity.pid))
            counters.insert(record.identity.pid, snapshot);
        metrics.append(std::move(metric));
    }

    m_previousCounters = std::move(counters);
    m_previousSampleTime = now;
    m_previousTexts = std::move(m_currentTexts);
    m_currentTexts = {};
    return metrics;
}
