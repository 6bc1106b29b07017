#include "dashboard/ProcessExitWaiter.h"

#include "sampling/Cancellation.h"

#include <QMetaObject>

#include <algorithm>
#include <system_error>

struct ProcessExitWaiter::Wait {
    Cancellation cancellation;
    Finished finished;
    std::unique_ptr<PinnedProcess> pin;
    std::thread thread;
};

ProcessExitWaiter::ProcessExitWaiter(QObject *parent, ThreadStarting startThread)
    : QObject(parent), m_startThread(std::move(startThread))
{
    if (!m_startThread)
        m_startThread = [](std::function<void()> job) { return std::thread(std::move(job)); };
}

ProcessExitWaiter::~ProcessExitWaiter()
{
    for (auto &wait : m_waits)
        wait->cancellation.cancel();
    for (auto &wait : m_waits) {
        if (wait->thread.joinable())
            wait->thread.join();
    }
    // Queued answers still pending go with this object's events.
}

void ProcessExitWaiter::start(const ProcessTerminationController &controller,
                              const ProcessTerminationTarget &target,
                              std::unique_ptr<PinnedProcess> pin, Finished finished)
{
    auto owned = std::make_unique<Wait>();
    Wait *wait = owned.get();
    wait->finished = std::move(finished);
    wait->pin = std::move(pin);
    m_waits.push_back(std::move(owned));
    try {
        wait->thread = m_startThread([this, wait, controller, target] {
            const bool stillRunning =
                controller.waitForExit(target, wait->cancellation, wait->pin.get());
            if (wait->cancellation.isCancelled())
                return; // the waiter is going away; nobody is left to tell
            QMetaObject::invokeMethod(
                this, [this, wait, stillRunning] { deliver(wait, stillRunning); },
                Qt::QueuedConnection);
        });
    } catch (const std::system_error &) {
        // No thread (EAGAIN: the process or the user is at its limit). The
        // answer keeps its road through the event loop, and without a wait
        // there is no proof of exit.
        QMetaObject::invokeMethod(
            this, [this, wait] { deliver(wait, true); }, Qt::QueuedConnection);
    }
}

void ProcessExitWaiter::deliver(Wait *wait, bool stillRunning)
{
    const auto found = std::find_if(m_waits.begin(), m_waits.end(),
                                    [wait](const auto &entry) { return entry.get() == wait; });
    if (found == m_waits.end())
        return;
    // The thread has handed over its answer and is returning; joining it
    // here costs at most the few instructions it has left.
    std::unique_ptr<Wait> done = std::move(*found);
    m_waits.erase(found);
    if (done->thread.joinable())
        done->thread.join();
    if (done->finished)
        done->finished(stillRunning);
}
