#include "sampling/MetricSampleHistory.h"

#include <algorithm>

void MetricSampleHistory::append(SystemMetricSample sample)
{
    const TimePoint cutoff = sample.timestamp.addingSeconds(-m_duration);
    // Assigned, not cleared: clear() on a list shared with the caller's copy
    // allocates an empty buffer of the same capacity, which would keep the
    // whole cost of the list in every kept sample.
    sample.processMetrics = QList<ProcessMetric>();
    m_samples.push_back(std::move(sample));
    // A sample exactly at the cutoff stays. Samples normally arrive in time
    // order, so the old ones are at the front; a clock that went backwards can
    // leave an out-of-order one behind, hence the full pass in that case.
    while (!m_samples.empty() && m_samples.front().timestamp < cutoff)
        m_samples.pop_front();
    const bool anyOlder = std::any_of(m_samples.begin(), m_samples.end(),
                                      [&](const auto &kept) { return kept.timestamp < cutoff; });
    if (anyOlder) {
        std::erase_if(m_samples, [&](const auto &kept) { return kept.timestamp < cutoff; });
    }
}

std::vector<SystemMetricSample> MetricSampleHistory::recentSamples(double windowSeconds) const
{
    std::vector<SystemMetricSample> result;
    if (m_samples.empty())
        return result;
    const TimePoint start = m_samples.back().timestamp.addingSeconds(-windowSeconds);

    std::vector<const SystemMetricSample *> kept;
    kept.reserve(m_samples.size());
    for (const auto &sample : m_samples) {
        if (sample.timestamp >= start)
            kept.push_back(&sample);
    }
    const std::size_t count = kept.size();
    if (count == 0)
        return result;
    const std::size_t stride = std::max<std::size_t>(
        1, (count + targetPointsPerQuery - 1) / targetPointsPerQuery);

    result.reserve(count / stride + 2);
    std::size_t position = 0;
    for (; position < count; position += stride)
        result.push_back(*kept[position]);
    if ((count - 1) % stride != 0)
        result.push_back(*kept[count - 1]);
    return result;
}
