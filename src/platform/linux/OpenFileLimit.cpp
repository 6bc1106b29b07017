#include "platform/linux/OpenFileLimit.h"

#include <algorithm>

rlim_t raiseOpenFileLimit(rlim_t ceiling)
{
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return 0;
    const rlim_t wanted = std::min(limit.rlim_max, ceiling);
    if (limit.rlim_cur == RLIM_INFINITY || limit.rlim_cur >= wanted)
        return limit.rlim_cur;
    rlimit raised = limit;
    raised.rlim_cur = wanted;
    if (::setrlimit(RLIMIT_NOFILE, &raised) != 0)
        return limit.rlim_cur;
    return wanted;
}
