#pragma once

#include "process/ApplicationLoad.h"
#include "process/DashboardTask.h"
#include "process/ProcessNameOrder.h"
#include "process/TaskClassification.h"
#include "sampling/Text.h"

#include <QHash>
#include <QLocale>

#include <cstdint>
#include <sys/types.h>
#include <vector>

// What ingest shares between its steps and its ticks: one collator for every
// tree, one locale, the texts that processes repeat (most share their running
// minute and a disk rate of 0, many a memory figure), each formatted once,
// and each process's node key, which both the termination targets and the
// trees are keyed by. The store keeps one while the user's locale holds; every
// memo is of a pure function, so forgetting one changes nothing but its cost.
class TickTexts {
public:
    explicit TickTexts(const ProcessNameOrder &order) : m_order(order) {}

    // Empties each memo that holds more than `entries` texts, so that values
    // which no longer occur (pids gone, rates of the past) do not pile up.
    void forgetBeyond(qsizetype entries);

    const ProcessNameOrder &order() const { return m_order; }
    // The interface's locale when made: every text is in its language.
    const QLocale &locale() const { return m_locale; }

    QString duration(double seconds);                 // durationText
    QString memory(std::uint64_t bytes);              // memoryText
    QString rate(double bytesPerSecond);              // rateText
    QString integer(long long value);                 // formatLocaleInteger
    QString nodeKey(const ProcessIdentity &identity); // processNodeKey

private:
    struct NodeKey {
        std::uint64_t startBits = 0;
        QString key;
    };

    const ProcessNameOrder &m_order;
    QLocale m_locale = interfaceLocale();
    QHash<long long, QString> m_durations;
    QHash<std::uint64_t, QString> m_memories;
    QHash<double, QString> m_rates;
    QHash<pid_t, NodeKey> m_nodeKeys;
};

// Turns a classified load source into what the views show: sums over the
// members, display texts, and the process tree. Pure but for the texts it
// leaves in `texts`. `preorder`, when given, receives the index in
// `load.processes` of each node of the tree, depth first, children in order.
DashboardTask assembleTask(const ApplicationLoad &load, const TaskClassification &classification,
                           TickTexts &texts, std::vector<std::size_t> *preorder = nullptr);
// The same with a tree already made for these members.
DashboardTask assembleTask(const ApplicationLoad &load, const TaskClassification &classification,
                           ProcessForest tree, TickTexts &texts);

// A tree node's own fields (not its children) as `process` shows them.
void describeProcessNode(DashboardProcessNode &node, const ProcessMetric &process,
                         pid_t targetPID, TickTexts &texts);

// The members of one load as a forest: a member whose parent is not in the
// load is a root; siblings and roots stand in name order (pid for equal
// names). Members caught in a cycle of parent numbers, which are nobody's
// root and nobody's reachable child, follow as further roots, so every member
// appears exactly once.
// `preorder` as for `assembleTask`.
std::vector<DashboardProcessNode> assembleProcessTree(const std::vector<ProcessMetric> &processes,
                                                      pid_t targetPID, TickTexts &texts,
                                                      std::vector<std::size_t> *preorder = nullptr);
