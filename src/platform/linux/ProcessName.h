#pragma once

#include <QString>

// The one derivation of a process's name on Linux, shared by the metric
// reader and the identity reader, so that the list and the safety check see
// one name for one process.
//
// The name is the comm of /proc/<pid>/stat, unless the kernel cut a longer
// executable name to 15 bytes (then the executable's file name), or the comm
// is empty (then the executable's file name too). It is the process's own
// text, control characters and all: printableText makes it fit to show.
QString processDisplayName(const QString &comm, const QString &executablePath);

// The executable path without the " (deleted)" that marks a replaced binary.
QString executablePathShown(const QString &executablePath);
