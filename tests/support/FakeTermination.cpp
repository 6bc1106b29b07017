#include "support/FakeTermination.h"

#include <unistd.h>

void FakeProcessIdentityReader::setReading(pid_t pid,
                                           std::optional<ProcessTerminationTarget> reading)
{
    queueReadings(pid, {std::move(reading)});
}

void FakeProcessIdentityReader::queueReadings(
    pid_t pid, std::vector<std::optional<ProcessTerminationTarget>> readings)
{
    std::lock_guard lock(m_mutex);
    m_readings[pid] = {readings.begin(), readings.end()};
}

int FakeProcessIdentityReader::readCount(pid_t pid)
{
    std::lock_guard lock(m_mutex);
    return m_readCounts[pid];
}

std::optional<ProcessTerminationTarget> FakeProcessIdentityReader::readIdentity(pid_t pid)
{
    if (m_log)
        m_log->record("read " + std::to_string(pid));
    std::lock_guard lock(m_mutex);
    ++m_readCounts[pid];
    auto found = m_readings.find(pid);
    if (found == m_readings.end() || found->second.empty())
        return std::nullopt;
    std::deque<std::optional<ProcessTerminationTarget>> &queue = found->second;
    std::optional<ProcessTerminationTarget> reading = queue.front();
    if (queue.size() > 1)
        queue.pop_front();
    return reading;
}

class RecordingPinnedProcess final : public PinnedProcess {
public:
    RecordingPinnedProcess(RecordingSignalSender &sender, pid_t pid) : m_sender(sender), m_pid(pid)
    {
    }

    int send(ProcessTerminationSignal signal) override
    {
        if (m_sender.m_log) {
            m_sender.m_log->record("send " + std::to_string(m_pid) + " " +
                                   (signal == ProcessTerminationSignal::forced ? "9" : "15"));
        }
        std::lock_guard lock(m_sender.m_mutex);
        m_sender.m_sent.push_back({m_pid, signal});
        return m_sender.m_sendError;
    }

    std::optional<bool> isRunning() override
    {
        std::lock_guard lock(m_sender.m_mutex);
        return m_sender.m_pinRunning;
    }

private:
    RecordingSignalSender &m_sender;
    pid_t m_pid;
};

std::unique_ptr<PinnedProcess> RecordingSignalSender::pin(pid_t pid)
{
    if (m_log)
        m_log->record("pin " + std::to_string(pid));
    std::lock_guard lock(m_mutex);
    m_pinned.push_back(pid);
    return std::make_unique<RecordingPinnedProcess>(*this, pid);
}

ProcessTerminationController
makeFakeTerminationController(std::shared_ptr<FakeProcessIdentityReader> reader,
                              std::shared_ptr<RecordingSignalSender> sender,
                              std::vector<double> intervals)
{
    return ProcessTerminationController(std::move(reader), std::move(sender), ::getuid(),
                                        ::getpid(), std::move(intervals));
}
