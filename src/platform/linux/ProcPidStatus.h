#pragma once

#include <optional>
#include <string_view>
#include <sys/types.h>

// The thread-group id ("Tgid:" line) of /proc/<pid>/status. A thread's own
// directory (/proc/<tid>, readable though not listed) shows its thread-group
// leader's pid there, so a reading whose Tgid is not its pid is a thread, not
// a process. Nothing when the line is missing or not a positive number.
std::optional<pid_t> parseProcPidStatusThreadGroup(std::string_view text);
