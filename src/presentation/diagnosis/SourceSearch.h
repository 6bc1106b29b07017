#pragma once

#include "dashboard/DashboardModel.h"

#include <QString>

#include <vector>

// The left column's two pieces of view-local state and the search over the
// published tasks. Pure functions: the page holds the state, the store the
// tasks.

// The scope switch, in its order; the text is the switch's label.
enum class ProcessListScope { attention, all };
QString processListScopeText(ProcessListScope scope); // "需关注", "全部来源"

// The query as it is matched: blanks and newlines at both ends dropped.
QString trimmedSourceQuery(const QString &query);

// Whether `task` stays in the list for an already trimmed, non-empty query:
// its application, then its detail, then any node of its tree at any depth
// (the node's own matching: pid, name, redacted command, project).
bool taskMatchesSourceQuery(const DashboardTask &task, const QString &trimmedQuery);

// The whole scope's list as pointers into the store's (the attention scope's
// is the store's `visibleTasks`). Valid while the store's list is.
std::vector<const DashboardTask *> sourcesOf(const std::vector<DashboardTask> &tasks);

// The sources shown for `query` over `base` (the scope's list), in the order
// of `base`.
std::vector<const DashboardTask *> filterSources(const std::vector<const DashboardTask *> &base,
                                                 const QString &query);

// The notice under the list: the query is not blank, a task is selected and
// still published (`selected`, from the store), and it is not shown.
bool isSelectedSourceFilteredOut(const QString &query, const DashboardTask *selected,
                                 const std::vector<const DashboardTask *> &visible);
