// Cancellation on Linux: CLOCK_BOOTTIME keeps counting through suspend, a
// timerfd on it gives the deadline and an eventfd gives the wake-up, and one
// poll waits for whichever comes first.
#include "sampling/Cancellation.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <ctime>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

class FileDescriptor {
public:
    explicit FileDescriptor(int fd = -1) : m_fd(fd) {}
    ~FileDescriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    int get() const { return m_fd; }

private:
    int m_fd;
};

timespec toTimespec(double seconds)
{
    timespec value{};
    double whole = std::floor(seconds);
    value.tv_sec = static_cast<time_t>(whole);
    value.tv_nsec = static_cast<long>((seconds - whole) * 1e9);
    if (value.tv_nsec >= 1000000000L) {
        value.tv_sec += 1;
        value.tv_nsec -= 1000000000L;
    }
    return value;
}

} // namespace

struct Cancellation::State {
    std::atomic<bool> cancelled{false};
    FileDescriptor wakeup{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
};

Cancellation::Cancellation() : m_state(std::make_unique<State>()) {}

Cancellation::~Cancellation() = default;

void Cancellation::cancel()
{
    if (m_state->cancelled.exchange(true))
        return;
    if (m_state->wakeup.get() >= 0) {
        const std::uint64_t one = 1;
        [[maybe_unused]] ssize_t written = ::write(m_state->wakeup.get(), &one, sizeof one);
    }
}

bool Cancellation::isCancelled() const
{
    return m_state->cancelled.load();
}

bool Cancellation::sleepFor(double requestedSeconds)
{
    if (isCancelled())
        return false;
    if (!(requestedSeconds > 0.0))
        return true;
    const double seconds = std::min(requestedSeconds, kLongestSleepSeconds);

    // Without the descriptors, or with a timer that refuses the deadline,
    // sleep in short slices so that a cancel is still seen within 50 ms.
    auto sleepInSlices = [&] {
        const double deadline = continuousClockSeconds() + seconds;
        while (!isCancelled()) {
            const double left = deadline - continuousClockSeconds();
            if (left <= 0.0)
                return true;
            const timespec slice = toTimespec(left < 0.05 ? left : 0.05);
            ::nanosleep(&slice, nullptr);
        }
        return false;
    };

    FileDescriptor timer(::timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK));
    if (timer.get() < 0 || m_state->wakeup.get() < 0)
        return sleepInSlices();

    itimerspec deadline{};
    deadline.it_value = toTimespec(seconds);
    if (deadline.it_value.tv_sec == 0 && deadline.it_value.tv_nsec == 0)
        deadline.it_value.tv_nsec = 1; // a zero value would disarm the timer
    if (::timerfd_settime(timer.get(), 0, &deadline, nullptr) != 0)
        return sleepInSlices();

    pollfd fds[2] = {{timer.get(), POLLIN, 0}, {m_state->wakeup.get(), POLLIN, 0}};
    for (;;) {
        if (isCancelled())
            return false;
        const int ready = ::poll(fds, 2, -1);
        if (ready < 0) {
            if (errno == EINTR)
                continue;
            return !isCancelled();
        }
        if (fds[1].revents != 0 || isCancelled())
            return false;
        if (fds[0].revents != 0)
            return true;
    }
}

double continuousClockSeconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}
