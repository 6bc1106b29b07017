#pragma once

// Readable failure messages for the process records.

#include "sampling/ProcessMetric.h"

#include <ostream>

inline void PrintTo(const RedactedCommandSummary &summary, std::ostream *out)
{
    *out << '{' << summary.command.toStdString() << ", "
         << (summary.project ? summary.project->toStdString() : std::string("(no project)")) << '}';
}
