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

std::optional<QString> ProcessMetricsProbe::shared(const std::optional<QString> &text)
{
    if (!text)
        return std::nullopt;
    return shared(*text);
}

template <typename Text> Text ProcessMetricsProbe::shared(const Text &text, const Text *known)
{
    if (known && *known == text)
        return *known;
    return shared(text);
}

QList<ProcessMetric> ProcessMetricsProbe::sample(TimePoint now)
{
    const std::vector<RawProcessMetric> raw = m_reader->readMetrics(now);
    const std::uint64_t elapsed =
        m_previousSampleTime ? elapsedNanoseconds(now.secondsSince(*m_previousSampleTime)) : 0;

    QHash<pid_t, KnownProcess> known;
    known.reserve(static_cast<qsizetype>(raw.size()));
    QList<ProcessMetric> metrics;
    metrics.reserve(static_cast<qsizetype>(raw.size()));

    for (const RawProcessMetric &record : raw) {
        const ProcessCounterSnapshot snapshot{record.identity, record.totalCPUNanoseconds,
                                              record.diskBytes};
        const auto found = m_previous.constFind(record.identity.pid);
        const ProcessMetric *last = found != m_previous.cend() ? &found->metric : nullptr;
        ProcessMetric metric;
        metric.identity = {record.identity.pid, record.identity.startTime,
                           shared(record.identity.executablePath,
                                  last ? &last->identity.executablePath : nullptr)};
        metric.parentPID = record.parentPID;
        metric.processGroupID = record.processGroupID;
        metric.userID = record.userID;
        metric.isServiceManager = record.isServiceManager;
        metric.leadsTerminalSession = record.leadsTerminalSession;
        metric.controlGroup = shared(record.controlGroup, last ? &last->controlGroup : nullptr);
        metric.name = shared(record.name, last ? &last->name : nullptr);
        metric.applicationPath =
            shared(record.applicationPath, last ? &last->applicationPath : nullptr);
        metric.applicationName =
            shared(record.applicationName, last ? &last->applicationName : nullptr);
        metric.command = {shared(record.command.command, last ? &last->command.command : nullptr),
                          shared(record.command.project, last ? &last->command.project : nullptr)};
        metric.residentBytes = record.residentBytes;

        if (found != m_previous.cend()) {
            const ProcessCounterSnapshot &previous = found->counters;
            const bool comparable = previous.identity == record.identity && elapsed != 0 &&
                                    snapshot.totalCPUNanoseconds >= previous.totalCPUNanoseconds &&
                                    snapshot.diskBytes >= previous.diskBytes;
            if (comparable) {
                const double interval = static_cast<double>(elapsed);
                metric.cpuPercent = static_cast<double>(snapshot.totalCPUNanoseconds -
                                                        previous.totalCPUNanoseconds) /
                                    interval * 100.0;
                metric.diskBytesPerSecond =
                    static_cast<double>(snapshot.diskBytes - previous.diskBytes) / interval * 1e9;
            }
        }

        const double age = now.secondsSince(record.identity.startTime);
        metric.duration = age > 0.0 ? age : 0.0;

        // A pid listed twice in one tick keeps its first counters; both
        // records are still returned and rated against the previous tick.
        if (!known.contains(record.identity.pid))
            known.insert(record.identity.pid, KnownProcess{snapshot, metric});
        metrics.append(std::move(metric));
    }

    m_previous = std::move(known);
    m_previousSampleTime = now;
    // The records of gone processes are released by now; their texts are
    // held by nothing else this thread knows, or by an older sample that
    // shares them already.
    m_texts.removeIf([](const QString &text) { return text.isDetached(); });
    return metrics;
}
