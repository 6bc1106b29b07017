#pragma once

// Made-up identity readers and signal senders: they touch no process, so a
// store or controller built on them can be driven with any pid.

#include "termination/ProcessTerminationController.h"

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

// One log for both fakes, so tests can check the order of pin, read and send.
struct TerminationCallLog {
    std::mutex mutex;
    std::vector<std::string> calls; // "pin 42", "read 42", "send 42 15"

    void record(std::string call)
    {
        std::lock_guard lock(mutex);
        calls.push_back(std::move(call));
    }
    std::vector<std::string> snapshot()
    {
        std::lock_guard lock(mutex);
        return calls;
    }
};

// Gives, per pid, the readings queued with `queueReadings` one per call (the
// last one stays), else nothing: an unknown pid has no process.
class FakeProcessIdentityReader final : public ProcessIdentityReading {
public:
    explicit FakeProcessIdentityReader(std::shared_ptr<TerminationCallLog> log = nullptr)
        : m_log(std::move(log))
    {
    }

    void setReading(pid_t pid, std::optional<ProcessTerminationTarget> reading);
    void queueReadings(pid_t pid, std::vector<std::optional<ProcessTerminationTarget>> readings);
    int readCount(pid_t pid);

    std::optional<ProcessTerminationTarget> readIdentity(pid_t pid) override;

private:
    std::mutex m_mutex;
    std::map<pid_t, std::deque<std::optional<ProcessTerminationTarget>>> m_readings;
    std::map<pid_t, int> m_readCounts;
    std::shared_ptr<TerminationCallLog> m_log;
};

// Records every pin and every signal instead of sending it; `send` answers
// with `sendError` (0: taken), a pin's `isRunning` with `pinRunning`
// (absent by default: a pin that cannot tell, so the reader decides).
class RecordingSignalSender final : public SignalSending {
public:
    struct Sent {
        pid_t pid = 0;
        ProcessTerminationSignal signal = ProcessTerminationSignal::graceful;
        bool operator==(const Sent &) const = default;
    };

    explicit RecordingSignalSender(std::shared_ptr<TerminationCallLog> log = nullptr)
        : m_log(std::move(log))
    {
    }

    void setSendError(int error)
    {
        std::lock_guard lock(m_mutex);
        m_sendError = error;
    }
    void setPinRunning(std::optional<bool> running)
    {
        std::lock_guard lock(m_mutex);
        m_pinRunning = running;
    }
    std::vector<pid_t> pinned()
    {
        std::lock_guard lock(m_mutex);
        return m_pinned;
    }
    std::vector<Sent> sent()
    {
        std::lock_guard lock(m_mutex);
        return m_sent;
    }

    std::unique_ptr<PinnedProcess> pin(pid_t pid) override;

private:
    friend class RecordingPinnedProcess;
    std::mutex m_mutex;
    int m_sendError = 0;
    std::optional<bool> m_pinRunning;
    std::vector<pid_t> m_pinned;
    std::vector<Sent> m_sent;
    std::shared_ptr<TerminationCallLog> m_log;
};

// A controller for the current user and this process over the two fakes.
ProcessTerminationController
makeFakeTerminationController(std::shared_ptr<FakeProcessIdentityReader> reader,
                              std::shared_ptr<RecordingSignalSender> sender,
                              std::vector<double> intervals =
                                  ProcessTerminationController::defaultExitVerificationIntervals());
