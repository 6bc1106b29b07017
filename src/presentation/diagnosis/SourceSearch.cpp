#include "presentation/diagnosis/SourceSearch.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(SourceSearch)
};

} // namespace

QString processListScopeText(ProcessListScope scope)
{
    return scope == ProcessListScope::attention ? Words::tr("需关注") : Words::tr("全部来源");
}

QString trimmedSourceQuery(const QString &query)
{
    // QString::trimmed drops every Unicode blank, newlines included.
    return query.trimmed();
}

bool taskMatchesSourceQuery(const DashboardTask &task, const QString &trimmedQuery)
{
    if (task.application.contains(trimmedQuery, Qt::CaseInsensitive))
        return true;
    if (task.detail.contains(trimmedQuery, Qt::CaseInsensitive))
        return true;
    return std::any_of(
        task.processTree.begin(), task.processTree.end(),
        [&](const DashboardProcessNode &root) { return root.matches(trimmedQuery); });
}

std::vector<const DashboardTask *> sourcesOf(const std::vector<DashboardTask> &tasks)
{
    std::vector<const DashboardTask *> sources;
    sources.reserve(tasks.size() + 1);
    for (const DashboardTask &task : tasks)
        sources.push_back(&task);
    return sources;
}

std::vector<const DashboardTask *> filterSources(const std::vector<const DashboardTask *> &base,
                                                 const QString &query)
{
    const QString trimmed = trimmedSourceQuery(query);
    if (trimmed.isEmpty())
        return base;
    std::vector<const DashboardTask *> visible;
    for (const DashboardTask *task : base) {
        if (taskMatchesSourceQuery(*task, trimmed))
            visible.push_back(task);
    }
    return visible;
}

bool isSelectedSourceFilteredOut(const QString &query, const DashboardTask *selected,
                                 const std::vector<const DashboardTask *> &visible)
{
    if (trimmedSourceQuery(query).isEmpty() || !selected)
        return false;
    return std::none_of(visible.begin(), visible.end(),
                        [&](const DashboardTask *task) { return task->id == selected->id; });
}
