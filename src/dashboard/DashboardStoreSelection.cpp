// Read accessors of the selection that the pages share, so that no page
// looks the selected task up on its own.
#include "dashboard/DashboardStore.h"

#include <algorithm>

const DashboardTask *DashboardStore::selectedTask() const
{
    if (m_selectedTaskID.isEmpty())
        return nullptr;
    const auto found = std::find_if(m_allTasks.begin(), m_allTasks.end(),
                                    [this](const DashboardTask &task) {
                                        return task.id == m_selectedTaskID;
                                    });
    return found == m_allTasks.end() ? nullptr : &*found;
}
