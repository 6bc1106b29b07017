#include "process/TaskAssembly.h"

#include "process/LoadTextFormats.h"
#include "process/PrintableText.h"
#include "sampling/Text.h"

#include <QHash>

#include <algorithm>
#include <bit>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace {

class TreeBuilder {
public:
    TreeBuilder(const std::vector<ProcessMetric> &processes, pid_t targetPID, TickTexts &texts,
                std::vector<std::size_t> *preorder)
        : m_processes(processes), m_targetPID(targetPID), m_texts(texts), m_preorder(preorder)
    {
        m_byPID.reserve(processes.size());
        for (std::size_t index = 0; index < processes.size(); ++index)
            m_byPID.emplace(processes[index].identity.pid, index);
        for (std::size_t index = 0; index < processes.size(); ++index) {
            const pid_t parent = processes[index].parentPID;
            if (m_byPID.contains(parent))
                m_children[parent].push_back(index);
            else
                m_roots.push_back(index);
        }
    }

    std::vector<DashboardProcessNode> build()
    {
        std::vector<DashboardProcessNode> result;
        sortInOrder(m_roots);
        for (std::size_t index : m_roots) {
            if (auto node = buildNode(index))
                result.push_back(std::move(*node));
        }
        // What no root reached hangs in a cycle of parent numbers; nearly
        // always there is none, and nothing is left to sort.
        std::vector<std::size_t> unreached;
        for (std::size_t index = 0; index < m_processes.size(); ++index) {
            if (!m_visited.contains(m_processes[index].identity.pid))
                unreached.push_back(index);
        }
        sortInOrder(unreached);
        for (std::size_t index : unreached) {
            if (auto node = buildNode(index))
                result.push_back(std::move(*node));
        }
        return result;
    }

private:
    void sortInOrder(std::vector<std::size_t> &indices) const
    {
        std::stable_sort(indices.begin(), indices.end(), [&](std::size_t left, std::size_t right) {
            const ProcessMetric &a = m_processes[left];
            const ProcessMetric &b = m_processes[right];
            return m_texts.order().lessThan(a.name, a.identity.pid, b.name, b.identity.pid);
        });
    }

    std::optional<DashboardProcessNode> buildNode(std::size_t index)
    {
        const ProcessMetric &process = m_processes[index];
        if (!m_visited.insert(process.identity.pid).second)
            return std::nullopt;
        if (m_preorder)
            m_preorder->push_back(index);
        DashboardProcessNode node;
        describeProcessNode(node, process, m_targetPID, m_texts);

        const auto found = m_children.find(process.identity.pid);
        if (found != m_children.end()) {
            std::vector<std::size_t> children = found->second;
            sortInOrder(children);
            for (std::size_t child : children) {
                if (auto childNode = buildNode(child))
                    node.children.push_back(std::move(*childNode));
            }
        }
        return node;
    }

    const std::vector<ProcessMetric> &m_processes;
    pid_t m_targetPID;
    TickTexts &m_texts;
    std::vector<std::size_t> *m_preorder;
    std::unordered_map<pid_t, std::size_t> m_byPID;
    std::unordered_map<pid_t, std::vector<std::size_t>> m_children;
    std::vector<std::size_t> m_roots;
    std::unordered_set<pid_t> m_visited;
};

// The memo of a text function: the text of `key`, formatted on its first use.
template <typename Key, typename Format>
QString memoised(QHash<Key, QString> &texts, Key key, Format format)
{
    auto found = texts.constFind(key);
    if (found == texts.cend())
        found = texts.insert(key, format());
    return *found;
}

} // namespace

QString TickTexts::duration(double seconds)
{
    return memoised(m_durations, durationTextKey(seconds),
                    [&] { return durationText(seconds, m_locale); });
}

void TickTexts::forgetBeyond(qsizetype entries)
{
    const auto forget = [entries](auto &memo) {
        if (memo.size() > entries)
            memo.clear();
    };
    forget(m_durations);
    forget(m_memories);
    forget(m_rates);
    forget(m_nodeKeys);
}

QString TickTexts::integer(long long value)
{
    return formatLocaleInteger(value, m_locale);
}

QString TickTexts::nodeKey(const ProcessIdentity &identity)
{
    // A pid is one process within a tick; the start time guards the rare
    // reuse between the sample's processes and an earlier caller's.
    // The start time compares bit for bit, as the key prints it: 0.0 and -0.0
    // are equal doubles but two keys.
    const auto bits = std::bit_cast<std::uint64_t>(identity.startTime.secondsSince1970);
    NodeKey &entry = m_nodeKeys[identity.pid];
    if (entry.key.isEmpty() || entry.startBits != bits)
        entry = NodeKey{bits, processNodeKey(identity.pid, identity.startTime)};
    return entry.key;
}

QString TickTexts::memory(std::uint64_t bytes)
{
    return memoised(m_memories, bytes, [&] { return memoryText(bytes); });
}

QString TickTexts::rate(double bytesPerSecond)
{
    if (std::isnan(bytesPerSecond)) // equal to no key, not even itself
        return rateText(bytesPerSecond);
    return memoised(m_rates, bytesPerSecond, [&] { return rateText(bytesPerSecond); });
}

void describeProcessNode(DashboardProcessNode &node, const ProcessMetric &process,
                         pid_t targetPID, TickTexts &texts)
{
    node.id = texts.nodeKey(process.identity);
    // A process's own texts leave for the screen here: printable only.
    node.name = printableText(process.name);
    node.pid = process.identity.pid;
    node.parentPID = process.parentPID;
    node.cpu = process.cpuPercent;
    node.memory = texts.memory(process.residentBytes);
    node.disk = texts.rate(process.diskBytesPerSecond);
    node.energyImpact = resourceImpact(process.cpuPercent, process.diskBytesPerSecond);
    node.duration = texts.duration(process.duration);
    node.command = printableText(process.command.command);
    node.project.reset();
    if (process.command.project)
        node.project = printableText(*process.command.project);
    node.isTarget = process.identity.pid == targetPID;
}

std::vector<DashboardProcessNode> assembleProcessTree(const std::vector<ProcessMetric> &processes,
                                                      pid_t targetPID, TickTexts &texts,
                                                      std::vector<std::size_t> *preorder)
{
    if (preorder)
        preorder->clear();
    return TreeBuilder(processes, targetPID, texts, preorder).build();
}

DashboardTask assembleTask(const ApplicationLoad &load, const TaskClassification &classification,
                           TickTexts &texts, std::vector<std::size_t> *preorder)
{
    return assembleTask(load, classification,
                        assembleProcessTree(load.processes, load.target.identity.pid, texts,
                                            preorder),
                        texts);
}

DashboardTask assembleTask(const ApplicationLoad &load, const TaskClassification &classification,
                           ProcessForest tree, TickTexts &texts)
{
    const LoadTotals totals = loadTotals(load);
    const double cpu = totals.cpuPercent;
    const double disk = totals.diskBytesPerSecond;
    const ProcessMetric &target = load.target;

    DashboardTask task;
    task.id = load.id;
    task.application = load.application;
    task.kind = classification.kind;
    task.detail = classification.detail;
    task.targetProcess =
        DashboardProcessSummary{printableText(target.name), target.identity.pid, target.cpuPercent,
                                texts.duration(target.duration)};
    task.relatedProcessCount = static_cast<qint64>(load.processes.size());
    task.processTree = std::move(tree);
    task.cpu = cpu;
    task.memory = texts.memory(totals.residentBytes);
    task.disk = texts.rate(disk);
    task.energy = resourceImpact(cpu, disk);
    task.duration = texts.duration(loadDuration(load));
    task.symbolName = classification.symbolName;
    task.diagnosis = classification.diagnosis;
    task.canTerminate = classification.canTerminate;
    task.terminationImpact = classification.impact;
    task.isEnded = false;
    return task;
}
