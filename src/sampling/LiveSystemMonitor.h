#pragma once

#include "sampling/SystemMetricSampler.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class SampleStream;

// An endless stream of samples from one sampler: the first tick at once, then
// one tick every `interval` plus the time the tick took (the deadline is taken
// after each sample is handed over, so a slow tick delays the next ones rather
// than being made up for).
//
// A plain value: it holds the sampler by shared reference, so the probes and
// their snapshots outlive a stop and restart of the stream.
class LiveSystemMonitor {
public:
    using WallClock = std::function<TimePoint()>;

    LiveSystemMonitor(std::shared_ptr<SystemMetricSampler> sampler, double intervalSeconds,
                      WallClock wallClock = &TimePoint::now);

    // Starts a new producer on a worker thread of its own. `onSampleReady`, if
    // given, is called on that thread after each sample is queued; the consumer
    // then takes the samples on its own thread. One call per start of monitoring.
    std::unique_ptr<SampleStream> samples(std::function<void()> onSampleReady = {}) const;

    const std::shared_ptr<SystemMetricSampler> &sampler() const { return m_sampler; }
    double interval() const { return m_interval; }

private:
    std::shared_ptr<SystemMetricSampler> m_sampler;
    double m_interval;
    WallClock m_wallClock;
};

// The consumer's end of one producer. The buffer is unbounded: the producer
// never waits for the consumer. Terminating (or destroying) the stream cancels
// the producer, which stops at its next check; a tick already running finishes
// and its sample is dropped, never delivered.
class SampleStream {
public:
    ~SampleStream(); // terminates, then waits for the producer thread to end
    SampleStream(const SampleStream &) = delete;
    SampleStream &operator=(const SampleStream &) = delete;

    // Every sample queued so far, oldest first; empty once terminated.
    std::vector<SystemMetricSample> takeAll();

    // Blocks until a sample is there, or returns nothing once the stream ended.
    std::optional<SystemMetricSample> next();

    // Non-blocking: cancels the producer and drops whatever it delivers later.
    void terminate();

    // The producer thread has left its loop.
    bool isFinished() const;

private:
    friend class LiveSystemMonitor;
    struct State;
    explicit SampleStream(std::shared_ptr<State> state);
    std::shared_ptr<State> m_state;
};
