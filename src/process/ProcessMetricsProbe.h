#pragma once

#include "process/RawProcessMetric.h"
#include "sampling/Probing.h"

#include <QSet>
#include <QString>

#include <memory>
#include <optional>
#include <unordered_map>

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
    // What was handed out for a pid on the last tick that listed it, with
    // the counters it was rated by. Updated in place, so a process that
    // stands still costs a comparison of each text and one copy of the record.
    struct KnownProcess {
        ProcessMetric metric;
        std::uint64_t totalCPUNanoseconds = 0;
        std::uint64_t diskBytes = 0;
        // The counters of the tick before, for a pid listed twice, and
        // whether they were this same process's.
        std::uint64_t earlierCPUNanoseconds = 0;
        std::uint64_t earlierDiskBytes = 0;
        bool earlierComparable = false;
        unsigned tick = 0;
    };

    // The copy of `text` already held, so that the processes and ticks that
    // share a name, path or command share one copy.
    QString shared(const QString &text);
    // `slot` becomes `text`; an equal text leaves the copy it holds.
    void keep(QString &slot, const QString &text);
    void keep(std::optional<QString> &slot, const std::optional<QString> &text);
    // Everything of `record` but the rates.
    void describe(ProcessMetric &metric, const RawProcessMetric &record, TimePoint now);

    std::unique_ptr<RawProcessMetricReading> m_reader;
    std::unordered_map<pid_t, KnownProcess> m_known;
    unsigned m_tick = 0;
    std::optional<TimePoint> m_previousSampleTime;
    // Every text handed out that some record still holds: after each tick
    // the texts that only this pool holds leave it.
    QSet<QString> m_texts;
};
