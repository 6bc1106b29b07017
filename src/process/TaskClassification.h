#pragma once

#include "process/ApplicationLoad.h"
#include "process/DashboardTask.h"

#include <QString>

class TickTexts;

// What kind of work a load source is, and what to tell the user about it.
// A pure function of one load, recomputed on every tick. It reads only the
// source's name, its process names and their redacted commands, so no
// argument text ever reaches it.
struct TaskClassification {
    TaskKind kind = TaskKind::unknown;
    QString detail; // command and project, or command and process count
    TaskDiagnosis diagnosis;
    QString impact; // what ending the task costs
    bool canTerminate = false;
    QString symbolName;

    bool operator==(const TaskClassification &) const = default;

    // `texts`, when given, are the tick's shared formats (TaskAssembly.h).
    static TaskClassification classify(const ApplicationLoad &load, TickTexts *texts = nullptr);
    // The same with the kind given: `classifyTaskKind(load)`, or a memo of it.
    static TaskClassification classify(const ApplicationLoad &load, TaskKind kind,
                                       TickTexts *texts);
};

// The kind alone: keyword tests over the lower-cased haystack of the source's
// name, process names and commands, in a fixed order; the first hit decides.
TaskKind classifyTaskKind(const ApplicationLoad &load);
