#pragma once

#include "process/RawProcessMetric.h"
#include "sampling/Probing.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <memory>
#include <optional>

// What is remembered of one process between two ticks.
struct ProcessCounterSnapshot {
    ProcessIdentity identity;
    std::uint64_t totalCPUNanoseconds = 0;
    std::uint64_t diskBytes = 0;

    bool operator==(const ProcessCounterSnapshot &) const = default;
};

// Turns the reader's running counters into per-tick rates. Owned by the
// sampler, which calls `sample` once per tick with that tick's time, so the
// interval of a rate is the real time between two calls. Rates are 0 unless
// the same process (pid, start time and executable) was seen on the previous
// tick, time moved forward and neither counter went backwards: a new process,
// a reused pid and a reset counter all rate 0 once and normally after that.
class ProcessMetricsProbe final : public ProcessMetricsProbing {
public:
    explicit ProcessMetricsProbe(std::unique_ptr<RawProcessMetricReading> reader);

    QList<ProcessMetric> sample(TimePoint now) override;

private:
    // What was handed out for a pid on the previous tick.
    struct KnownProcess {
        ProcessCounterSnapshot counters;
        ProcessMetric metric;
    };

    // The copy of `text` already held, so that the processes and ticks that
    // share a name, path or command share one copy.
    QString shared(const QString &text);
    std::optional<QString> shared(const std::optional<QString> &text);
    // The same pid's copy of the last tick when the text is still that one:
    // an equal text costs a comparison, where the pool costs a hash of it.
    template <typename Text> Text shared(const Text &text, const Text *known);

    std::unique_ptr<RawProcessMetricReading> m_reader;
    QHash<pid_t, KnownProcess> m_previous;
    std::optional<TimePoint> m_previousSampleTime;
    // Every text handed out that some record still holds: after each tick
    // the texts that only this pool holds leave it.
    QSet<QString> m_texts;
};
