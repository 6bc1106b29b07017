#include "dashboard/ProcessExitWaiter.h"

#include "sampling/Cancellation.h"

#include <QMetaObject>

#include <algorithm>
#include <thread>

struct ProcessExitWaiter::Wait {
    Cancellation cancellation;
    Finished finished;
    std::thread thread;
};

ProcessExitWaiter::ProcessExitWaiter(QObject *parent) : QObject(parent) {}

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
                              const ProcessTerminationTarget &target, Finished finished)
{
    auto owned = std::make_unique<Wait>();
    Wait *wait = owned.get();
    wait->finished = std::move(finished);
    m_waits.push_back(std::move(owned));
    wait->thread = std::thread([this, wait, controller, target] {
        const bool stillRunning = controller.waitForExit(target, wait->cancellation);
        if (wait->cancellation.isCancelled())
            return; // the waiter is going away; nobody is left to tell
        QMetaObject::invokeMethod(
            this, [this, wait, stillRunning] { deliver(wait, stillRunning); },
            Qt::QueuedConnection);
    });
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
