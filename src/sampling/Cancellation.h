#pragma once

#include <memory>

// A cancellation flag with a sleep that wakes at once when the flag is set.
//
// `sleepFor` measures on the platform's continuous clock, one that keeps
// counting while the machine is suspended, so a 2-second sleep that spans a
// suspend ends on resume instead of 2 seconds after it. The clock and the
// wake-up mechanism are the platform's (platform/<os>/ContinuousSleep.cpp).
//
// Thread-safe: `cancel` may be called from any thread while another sleeps.
class Cancellation {
public:
    Cancellation();
    ~Cancellation();
    Cancellation(const Cancellation &) = delete;
    Cancellation &operator=(const Cancellation &) = delete;

    // Idempotent. Wakes every current and future sleep.
    void cancel();
    bool isCancelled() const;

    // Sleeps for `seconds` (a non-positive value returns at once; one beyond
    // kLongestSleepSeconds, infinity included, sleeps that long). Returns
    // true when the whole time passed, false when cancelled before or during.
    bool sleepFor(double seconds);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// The longest sleep a timer holds here: about 31 years. The kernel keeps
// timer deadlines as 64-bit nanoseconds since boot (some 292 years), so this
// leaves room for any uptime; a longer request sleeps this long.
inline constexpr double kLongestSleepSeconds = 1e9;

// Seconds on the continuous clock, for measuring spans that include suspend.
double continuousClockSeconds();
