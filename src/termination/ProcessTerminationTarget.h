#pragma once

#include "sampling/ProcessMetric.h"

#include <QString>

#include <sys/types.h>

// What was seen of a process when the user chose it. The safety check compares
// this record, not a later tick's, with the machine at the moment of the signal.
struct ProcessTerminationTarget {
    ProcessIdentity identity;
    uid_t userID = 0;
    QString name;

    bool operator==(const ProcessTerminationTarget &) const = default;
};
