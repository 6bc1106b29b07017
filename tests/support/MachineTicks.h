#pragma once

// The machine's CPU ticks as the test reads them itself: a thread of its own
// reads /proc/stat every few milliseconds with the wall-clock time, so a
// figure the program reports over an interval can be compared with what the
// machine did over that same interval, however busy it is.

#include <atomic>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "probes/CPUUsageTracker.h"

class MachineTickRecorder {
public:
    // Starts recording; with a pid, that process's CPU time too.
    explicit MachineTickRecorder(int watchedPID = 0);
    ~MachineTickRecorder(); // stops
    MachineTickRecorder(const MachineTickRecorder &) = delete;
    MachineTickRecorder &operator=(const MachineTickRecorder &) = delete;

    // Busy percent between the readings nearest to two wall-clock times
    // (seconds since 1970); nothing without readings around both.
    std::optional<double> usageBetween(double fromSeconds, double toSeconds) const;
    // The watched process's CPU time over the same span, in percent of one
    // core, as the process list counts it.
    std::optional<double> processPercentBetween(double fromSeconds, double toSeconds) const;

private:
    struct Reading {
        double wallClock = 0.0;
        CPUTickSnapshot ticks;
        std::optional<unsigned long long> processTicks;
    };
    const Reading *nearest(double wallClock) const;

    int m_watchedPID;
    mutable std::mutex m_mutex;
    std::vector<Reading> m_readings;
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};
