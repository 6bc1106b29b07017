#pragma once

#include <sys/resource.h>

// Raises this program's soft limit on open files toward the hard limit, to at
// most `ceiling`, and returns the soft limit in force afterwards (0 when it
// cannot be read). The process reader keeps a few descriptors open per
// process, and the soft limit many systems start programs with (1024) would
// hold only a couple of hundred processes' worth. Nothing in this program
// uses select(), so descriptors above 1023 are safe.
rlim_t raiseOpenFileLimit(rlim_t ceiling);
