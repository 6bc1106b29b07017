#include "probes/CPUUsageTracker.h"

#include <algorithm>

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(CPUUsageTracker)
};

} // namespace

std::optional<double> cpuUsageBetween(const CPUTickSnapshot &older, const CPUTickSnapshot &newer)
{
    const double user = newer.user - older.user;
    const double system = newer.system - older.system;
    const double idle = newer.idle - older.idle;
    const double nice = newer.nice - older.nice;
    if (user < 0 || system < 0 || idle < 0 || nice < 0)
        return std::nullopt; // a wrapped or reset counter
    const double busy = user + system + nice;
    const double total = busy + idle;
    if (!(total > 0))
        return std::nullopt;
    return std::clamp(busy / total * 100.0, 0.0, 100.0);
}

CPUUsageTracker::CPUUsageTracker(QString source, QString readFailureReason)
    : m_source(std::move(source)), m_readFailureReason(std::move(readFailureReason))
{
}

SensorReading<double> CPUUsageTracker::update(const std::optional<CPUTickSnapshot> &ticks)
{
    // A failed read keeps the last good snapshot, so the next good read covers the gap.
    if (!ticks)
        return SensorReading<double>::temporarilyUnavailable(m_readFailureReason);
    if (!m_previous) {
        m_previous = ticks;
        return SensorReading<double>::warmingUp();
    }
    const std::optional<double> usage = cpuUsageBetween(*m_previous, *ticks);
    m_previous = ticks; // also on no figure: a wrapped counter costs one tick
    if (!usage)
        return SensorReading<double>::temporarilyUnavailable(Words::tr("CPU 计数器无有效增量"));
    return SensorReading<double>::available(*usage, m_source);
}
