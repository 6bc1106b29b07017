#include "sampling/TimePoint.h"

#include <chrono>

TimePoint TimePoint::now()
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return TimePoint{std::chrono::duration<double>(sinceEpoch).count()};
}
