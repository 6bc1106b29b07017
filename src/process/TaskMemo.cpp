#include "process/TaskMemo.h"

#include "process/LoadTextFormats.h"
#include "process/TaskAssembly.h"
#include "process/TaskClassification.h"

#include <bit>
#include <cstdint>

namespace {

// Bit for bit: 0.0 and -0.0, or two NaNs, may print differently or alike,
// and equal bits always print alike.
bool sameBits(double left, double right)
{
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

// What the keyword search reads.
bool sameWords(const ApplicationLoad &left, const ApplicationLoad &right)
{
    if (left.application != right.application || left.processes.size() != right.processes.size())
        return false;
    for (std::size_t index = 0; index < left.processes.size(); ++index) {
        const ProcessMetric &a = left.processes[index];
        const ProcessMetric &b = right.processes[index];
        if (a.name != b.name || a.command.command != b.command.command)
            return false;
    }
    return true;
}

// What a tree node, the target's summary and the sums read of one process.
bool sameShown(const ProcessMetric &left, const ProcessMetric &right)
{
    return left.identity.pid == right.identity.pid &&
           sameBits(left.identity.startTime.secondsSince1970,
                    right.identity.startTime.secondsSince1970) &&
           left.parentPID == right.parentPID && left.name == right.name &&
           left.command == right.command && sameBits(left.cpuPercent, right.cpuPercent) &&
           left.residentBytes == right.residentBytes &&
           sameBits(left.diskBytesPerSecond, right.diskBytesPerSecond) &&
           durationTextKey(left.duration) == durationTextKey(right.duration);
}

// What the tree's shape and order read: which members there are, each one's
// parent, and the names and pids siblings are ordered by. The texts of one
// collator are assumed, as for the whole memo.
bool sameShape(const ApplicationLoad &left, const ApplicationLoad &right)
{
    if (left.processes.size() != right.processes.size())
        return false;
    for (std::size_t index = 0; index < left.processes.size(); ++index) {
        const ProcessMetric &a = left.processes[index];
        const ProcessMetric &b = right.processes[index];
        if (a.identity.pid != b.identity.pid || a.parentPID != b.parentPID || a.name != b.name)
            return false;
    }
    return true;
}

// `before`'s tree with the nodes of the members whose shown figures moved
// (or which became or stopped being the target) described anew; the shape is
// `now`'s too, so the k-th node depth first is still member `preorder[k]`.
ProcessForest refreshedTree(const ProcessForest &tree, const std::vector<std::size_t> &preorder,
                            const ApplicationLoad &before, const ApplicationLoad &now,
                            TickTexts &texts)
{
    std::vector<DashboardProcessNode> roots = tree.roots();
    const pid_t targetBefore = before.target.identity.pid;
    const pid_t targetNow = now.target.identity.pid;
    std::size_t next = 0;
    const auto refresh = [&](auto &self, DashboardProcessNode &node) -> void {
        const std::size_t index = preorder[next++];
        const ProcessMetric &process = now.processes[index];
        const pid_t pid = process.identity.pid;
        if (!sameShown(before.processes[index], process) ||
            (pid == targetBefore) != (pid == targetNow))
            describeProcessNode(node, process, targetNow, texts);
        for (DashboardProcessNode &child : node.children)
            self(self, child);
    };
    for (DashboardProcessNode &root : roots)
        refresh(refresh, root);
    return ProcessForest(std::move(roots));
}

bool sameInputs(const ApplicationLoad &left, const ApplicationLoad &right)
{
    if (left.id != right.id || !sameShown(left.target, right.target))
        return false;
    for (std::size_t index = 0; index < left.processes.size(); ++index) {
        if (!sameShown(left.processes[index], right.processes[index]))
            return false;
    }
    // The longest duration is not always the longest key: a NaN stops the
    // search for the longest where its key reads as 0.
    return durationTextKey(loadDuration(left)) == durationTextKey(loadDuration(right));
}

} // namespace

TaskMemo::Answer TaskMemo::task(ApplicationLoad load, TickTexts &texts)
{
    Entry &entry = m_entries[load.id];
    const bool again = entry.asked;
    m_idRepeated = m_idRepeated || again;
    entry.asked = true;
    const bool known = !entry.load.id.isEmpty() && sameWords(entry.load, load);
    if (known && sameInputs(entry.load, load)) {
        entry.load = std::move(load);
        return {entry.task, !again && !m_idRepeatedLastTick};
    }
    const TaskKind kind = known ? entry.task.kind : classifyTaskKind(load);
    const TaskClassification classification = TaskClassification::classify(load, kind, &texts);
    // A tree of the same shape keeps its nodes but those whose process moved:
    // in a large source most members stand still while one of them runs. Its
    // name, which may follow the target, is not the tree's.
    if (!entry.load.id.isEmpty() && sameShape(entry.load, load))
        entry.task = assembleTask(
            load, classification,
            refreshedTree(entry.task.processTree, entry.preorder, entry.load, load, texts), texts);
    else
        entry.task = assembleTask(load, classification, texts, &entry.preorder);
    entry.load = std::move(load);
    return {entry.task, false};
}

void TaskMemo::endTick()
{
    for (auto entry = m_entries.begin(); entry != m_entries.end();) {
        if (entry->asked) {
            entry->asked = false;
            ++entry;
        } else {
            entry = m_entries.erase(entry);
        }
    }
    m_idRepeatedLastTick = m_idRepeated;
    m_idRepeated = false;
}

void TaskMemo::clear()
{
    m_entries.clear();
    m_idRepeated = false;
    m_idRepeatedLastTick = false;
}
