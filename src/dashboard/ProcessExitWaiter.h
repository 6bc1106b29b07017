#pragma once

#include "termination/ProcessTerminationController.h"

#include <QObject>

#include <functional>
#include <list>
#include <memory>
#include <thread>

// Waits for a signalled process to exit without blocking the thread it lives
// on: each wait runs the controller's `waitForExit` (at most about 2 s) on a
// thread of its own, and the answer comes back as a queued call on this
// object's thread, between whatever else that thread does meanwhile.
//
// Destroying the waiter cancels every wait in progress and joins its thread;
// answers not yet delivered are dropped with the object's queued calls, so a
// callback never runs after its owner has gone.
class ProcessExitWaiter final : public QObject {
public:
    using Finished = std::function<void(bool stillRunning)>;
    // Starts a thread running the job; throws std::system_error when the
    // system has no thread to give, as std::thread's constructor does.
    using ThreadStarting = std::function<std::thread(std::function<void()> job)>;

    explicit ProcessExitWaiter(QObject *parent = nullptr, ThreadStarting startThread = {});
    ~ProcessExitWaiter() override;

    // Starts one wait; `finished` runs later on this object's thread, also
    // when no thread could be started for it: it is then told the process
    // still runs, since nothing proved the exit. The controller is copied
    // (the wait shares only its stateless reader); the pin of the signalled
    // process, when there is one, is the wait's to ask and release.
    void start(const ProcessTerminationController &controller,
               const ProcessTerminationTarget &target, std::unique_ptr<PinnedProcess> pin,
               Finished finished);

    // Waits started and not yet delivered.
    std::size_t activeCount() const { return m_waits.size(); }

private:
    struct Wait;
    void deliver(Wait *wait, bool stillRunning);

    ThreadStarting m_startThread;
    std::list<std::unique_ptr<Wait>> m_waits;
};
