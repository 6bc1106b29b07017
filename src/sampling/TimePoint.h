#pragma once

// A point in wall-clock time as seconds since 1970 in a 64-bit float. Samples,
// process start times and termination keys all share this one representation,
// so that a start time read twice compares equal and prints the same digits.
struct TimePoint {
    double secondsSince1970 = 0.0;

    static TimePoint now();
    static constexpr TimePoint fromSecondsSince1970(double seconds) { return TimePoint{seconds}; }

    // Seconds from `earlier` to this point; negative when `earlier` is later.
    constexpr double secondsSince(TimePoint earlier) const
    {
        return secondsSince1970 - earlier.secondsSince1970;
    }
    constexpr TimePoint addingSeconds(double seconds) const
    {
        return TimePoint{secondsSince1970 + seconds};
    }

    // Spelled out rather than defaulted with <=>: Qt 6.4's moc cannot parse
    // <compare> when it is the first header a Q_OBJECT header pulls in.
    constexpr bool operator==(const TimePoint &) const = default;
    constexpr bool operator<(TimePoint other) const { return secondsSince1970 < other.secondsSince1970; }
    constexpr bool operator>(TimePoint other) const { return other < *this; }
    constexpr bool operator<=(TimePoint other) const { return !(other < *this); }
    constexpr bool operator>=(TimePoint other) const { return !(*this < other); }
};
