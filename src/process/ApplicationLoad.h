#pragma once

#include "sampling/ProcessMetric.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

// One load source of one tick: an application, or a family of processes that
// share a lineage root, with the process that stands for it.
struct ApplicationLoad {
    QString id;          // "task-" + FNV-1a 64 of the group key; stable across ticks
    QString application; // the name shown to the user
    std::optional<QString> applicationPath; // the identity that keys the group; none for a lineage
    std::vector<ProcessMetric> processes;   // all members, in the order of the input list
    ProcessMetric target;                   // the member offered for termination

    bool operator==(const ApplicationLoad &) const = default;
};

// Sum of CPU percent, plus one point per MB/s of disk, capped at 50 points, so
// that a disk-bound source ranks without outweighing a busy CPU.
// The members' figures added up: what the score, the supporting facts and
// the task's own figures all start from.
struct LoadTotals {
    double cpuPercent = 0.0;
    double diskBytesPerSecond = 0.0;
    std::uint64_t residentBytes = 0; // wraps only beyond 18 EB

    bool operator==(const LoadTotals &) const = default;
};
LoadTotals loadTotals(const ApplicationLoad &load);

double loadScore(const ApplicationLoad &load);

// The longest-running member's duration (the target's for an empty list).
double loadDuration(const ApplicationLoad &load);
