#include "sampling/LiveSystemMonitor.h"

#include "sampling/Cancellation.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

struct SampleStream::State {
    std::shared_ptr<SystemMetricSampler> sampler;
    double interval = 2.0;
    LiveSystemMonitor::WallClock wallClock;
    std::function<void()> onSampleReady;

    Cancellation cancellation;
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<SystemMetricSample> buffer;
    bool terminated = false; // by the consumer
    bool finished = false;   // the producer left its loop
    std::thread producer;

    void run();
};

void SampleStream::State::run()
{
    for (;;) {
        if (cancellation.isCancelled())
            break;
        const TimePoint now = wallClock();
        SystemMetricSample sample = sampler->sample(now);
        {
            std::lock_guard lock(mutex);
            if (terminated)
                break; // the tick in progress at termination is dropped
            buffer.push_back(std::move(sample));
        }
        changed.notify_all();
        if (onSampleReady)
            onSampleReady();
        if (!cancellation.sleepFor(interval))
            break;
    }
    {
        std::lock_guard lock(mutex);
        finished = true;
    }
    changed.notify_all();
}

SampleStream::SampleStream(std::shared_ptr<State> state) : m_state(std::move(state)) {}

SampleStream::~SampleStream()
{
    terminate();
    if (m_state->producer.joinable())
        m_state->producer.join();
}

std::vector<SystemMetricSample> SampleStream::takeAll()
{
    std::lock_guard lock(m_state->mutex);
    std::vector<SystemMetricSample> taken(std::make_move_iterator(m_state->buffer.begin()),
                                          std::make_move_iterator(m_state->buffer.end()));
    m_state->buffer.clear();
    return taken;
}

std::optional<SystemMetricSample> SampleStream::next()
{
    std::unique_lock lock(m_state->mutex);
    m_state->changed.wait(lock, [this] {
        return !m_state->buffer.empty() || m_state->terminated || m_state->finished;
    });
    if (m_state->buffer.empty())
        return std::nullopt;
    SystemMetricSample sample = std::move(m_state->buffer.front());
    m_state->buffer.pop_front();
    return sample;
}

void SampleStream::terminate()
{
    {
        std::lock_guard lock(m_state->mutex);
        m_state->terminated = true;
        m_state->buffer.clear();
    }
    m_state->cancellation.cancel();
    m_state->changed.notify_all();
}

bool SampleStream::isFinished() const
{
    std::lock_guard lock(m_state->mutex);
    return m_state->finished;
}

LiveSystemMonitor::LiveSystemMonitor(std::shared_ptr<SystemMetricSampler> sampler,
                                     double intervalSeconds, WallClock wallClock)
    : m_sampler(std::move(sampler)), m_interval(intervalSeconds), m_wallClock(std::move(wallClock))
{
}

std::unique_ptr<SampleStream> LiveSystemMonitor::samples(std::function<void()> onSampleReady) const
{
    auto state = std::make_shared<SampleStream::State>();
    state->sampler = m_sampler;
    state->interval = m_interval;
    state->wallClock = m_wallClock;
    state->onSampleReady = std::move(onSampleReady);
    // The thread holds the state, so it never outlives what it uses.
    state->producer = std::thread([raw = state.get()] { raw->run(); });
    return std::unique_ptr<SampleStream>(new SampleStream(std::move(state)));
}
