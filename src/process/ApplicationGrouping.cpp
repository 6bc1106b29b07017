#include "process/ApplicationGrouping.h"

#include "process/PrintableText.h"

#include <QHash>

#include <algorithm>
#include <unordered_map>

namespace {

// The walks up the parent chain of one tick's list. Cycles of parent numbers
// are possible (a pid reused between the kernel's reads of two processes), so
// every walk marks what it has seen; a stamp per index makes that free of
// allocation and linear in the chain's length.
class AncestorWalks {
public:
    explicit AncestorWalks(const QList<ProcessMetric> &processes)
        : m_processes(processes), m_stamps(std::size_t(processes.size()), 0)
    {
        // Each process's parent is looked up once, in the list sorted by pid
        // (the reader lists in rising order, so sorting is a check); every
        // walk then steps by index.
        std::vector<std::pair<pid_t, qsizetype>> byPID;
        byPID.reserve(std::size_t(processes.size()));
        for (qsizetype index = 0; index < processes.size(); ++index) {
            const ProcessMetric &process = processes[index];
            if (!process.isServiceManager)
                byPID.emplace_back(process.identity.pid, index);
            m_anyTerminalSession = m_anyTerminalSession || process.leadsTerminalSession;
        }
        if (!std::is_sorted(byPID.begin(), byPID.end()))
            std::sort(byPID.begin(), byPID.end());
        m_parents.reserve(std::size_t(processes.size()));
        for (const ProcessMetric &process : processes) {
            // The first record of a pid wins: the lowest index sorts first.
            const auto found = std::lower_bound(byPID.begin(), byPID.end(),
                                                std::pair(process.parentPID, qsizetype(-1)));
            const bool parentListed = found != byPID.end() && found->first == process.parentPID;
            m_parents.push_back(parentListed && !process.leadsTerminalSession ? found->second
                                                                               : -1);
        }
    }

    // The index of the process whose `applicationPath` is the outermost one on
    // the chain from `index` upward, or -1 when no process on it has one.
    // Below a terminal session's leader, where the chain ends, neither the
    // leader nor a process in the leader's control group has an identity: a
    // terminal puts its tabs in its own unit or slice, and a tab is not the
    // terminal. A process there in a unit of its own keeps its identity.
    qsizetype outermostApplication(qsizetype index)
    {
        const ProcessMetric *session = nullptr;
        if (m_anyTerminalSession) {
            const ProcessMetric &top = m_processes[topOf(index)];
            if (top.leadsTerminalSession)
                session = &top;
        }
        const unsigned stamp = nextStamp();
        qsizetype found = -1;
        for (qsizetype current = index; current >= 0; current = parentOf(current)) {
            if (m_stamps[std::size_t(current)] == stamp)
                break;
            m_stamps[std::size_t(current)] = stamp;
            const ProcessMetric &process = m_processes[current];
            const bool inSession =
                session && (&process == session || process.controlGroup == session->controlGroup);
            if (process.applicationPath && !inSession)
                found = current;
        }
        return found;
    }

    // The pid of the topmost ancestor reachable from `index` without repeating one.
    pid_t lineageRoot(qsizetype index) { return m_processes[topOf(index)].identity.pid; }

private:
    qsizetype topOf(qsizetype index)
    {
        const unsigned stamp = nextStamp();
        qsizetype current = index;
        m_stamps[std::size_t(current)] = stamp;
        for (qsizetype parent = parentOf(current);
             parent >= 0 && m_stamps[std::size_t(parent)] != stamp; parent = parentOf(current)) {
            m_stamps[std::size_t(parent)] = stamp;
            current = parent;
        }
        return current;
    }

    // A terminal session's leader roots its lineage: its parent (the terminal,
    // the tmux server) is not followed.
    qsizetype parentOf(qsizetype index) const
    {
        return m_parents[std::size_t(index)];
    }

    unsigned nextStamp()
    {
        if (++m_stamp == 0) { // wrapped: old stamps could collide
            std::fill(m_stamps.begin(), m_stamps.end(), 0u);
            m_stamp = 1;
        }
        return m_stamp;
    }

    const QList<ProcessMetric> &m_processes;
    std::vector<qsizetype> m_parents; // by index; -1 for none
    std::vector<unsigned> m_stamps;
    unsigned m_stamp = 0;
    bool m_anyTerminalSession = false;
};

struct Group {
    QString key;
    std::vector<qsizetype> members; // indices into the input, in input order
};

// The worker at the bottom of the group's tree: a member without children in
// the group (all members when a cycle leaves none), busiest CPU first, then
// disk, then the first in list order.
qsizetype chooseTarget(const QList<ProcessMetric> &processes, const std::vector<qsizetype> &members)
{
    if (members.size() == 1) // most sources on a desktop: nothing to choose from
        return members.front();
    std::vector<pid_t> parents;
    parents.reserve(members.size());
    for (qsizetype index : members)
        parents.push_back(processes[index].parentPID);
    std::sort(parents.begin(), parents.end());
    const auto isParent = [&](pid_t pid) {
        return std::binary_search(parents.begin(), parents.end(), pid);
    };
    bool anyLeaf = false;
    for (qsizetype index : members)
        anyLeaf = anyLeaf || !isParent(processes[index].identity.pid);

    qsizetype best = -1;
    for (qsizetype index : members) {
        const ProcessMetric &candidate = processes[index];
        if (anyLeaf && isParent(candidate.identity.pid))
            continue;
        if (best < 0) {
            best = index;
            continue;
        }
        const ProcessMetric &current = processes[best];
        if (candidate.cpuPercent > current.cpuPercent ||
            (candidate.cpuPercent == current.cpuPercent &&
             candidate.diskBytesPerSecond > current.diskBytesPerSecond))
            best = index;
    }
    return best;
}

// "codex" in any case. Only ASCII letters fold to the letters of "codex"
// (Unicode's case folding maps no other character onto them), so an ASCII
// comparison finds exactly what a case-insensitive search would, without
// folding every character of every name on every tick.
bool containsCodex(QStringView text)
{
    constexpr char16_t word[] = u"codex";
    constexpr qsizetype length = 5;
    for (qsizetype start = 0; start + length <= text.size(); ++start) {
        qsizetype matched = 0;
        while (matched < length) {
            char16_t code = text[start + matched].unicode();
            if (code >= u'A' && code <= u'Z')
                code = char16_t(code - u'A' + u'a');
            if (code != word[matched])
                break;
            ++matched;
        }
        if (matched == length)
            return true;
    }
    return false;
}

bool mentionsCodex(const ProcessMetric &process)
{
    return containsCodex(process.name) || containsCodex(process.command.command);
}

} // namespace

std::uint64_t fnv1a64(const QString &text)
{
    constexpr std::uint64_t offset = 0xcbf29ce484222325ULL;
    constexpr std::uint64_t prime = 0x100000001b3ULL;
    // ASCII is its own UTF-8: most keys are hashed where they lie, without
    // making their bytes first.
    std::uint64_t hash = offset;
    for (const QChar character : text) {
        if (character.unicode() >= 0x80) {
            hash = offset;
            for (const char byte : text.toUtf8()) {
                hash ^= static_cast<unsigned char>(byte);
                hash *= prime;
            }
            return hash;
        }
        hash ^= character.unicode();
        hash *= prime;
    }
    return hash;
}

QString applicationNameForPath(const QString &applicationPath, const QString &platformName)
{
    if (!platformName.isEmpty())
        return platformName;
    QStringView path(applicationPath);
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    QStringView component = path.sliced(path.lastIndexOf(QLatin1Char('/')) + 1);
    const qsizetype dot = component.lastIndexOf(QLatin1Char('.'));
    if (dot > 0)
        component = component.first(dot);
    QString name = component.toString();
    name.remove(QStringLiteral(" Helper"), Qt::CaseSensitive);
    return name;
}

std::vector<ApplicationLoad> groupApplicationLoads(const QList<ProcessMetric> &processes)
{
    std::vector<ApplicationLoad> loads;
    if (processes.isEmpty())
        return loads;

    AncestorWalks walks(processes);
    std::vector<Group> groups;
    // Groups by what keys them, without building a key text per process.
    QHash<QString, std::size_t> groupByApplication;
    std::unordered_map<pid_t, std::size_t> groupByLineage;
    std::vector<qsizetype> applicationSources(std::size_t(processes.size()), -1);
    for (qsizetype index = 0; index < processes.size(); ++index) {
        const qsizetype source = walks.outermostApplication(index);
        applicationSources[std::size_t(index)] = source;
        std::size_t groupIndex = groups.size();
        if (source >= 0) {
            const QString &path = *processes[source].applicationPath;
            const auto found = groupByApplication.constFind(path);
            if (found == groupByApplication.cend()) {
                groupByApplication.insert(path, groupIndex);
                groups.push_back(Group{QStringLiteral("app:") + path, {}});
            } else {
                groupIndex = *found;
            }
        } else {
            const pid_t root = walks.lineageRoot(index);
            const auto [found, inserted] = groupByLineage.try_emplace(root, groupIndex);
            if (inserted)
                groups.push_back(Group{QStringLiteral("lineage:") + QString::number(root), {}});
            groupIndex = found->second;
        }
        groups[groupIndex].members.push_back(index);
    }

    loads.reserve(groups.size());
    for (const Group &group : groups) {
        const qsizetype targetIndex = chooseTarget(processes, group.members);
        ApplicationLoad load;
        load.processes.reserve(group.members.size());
        for (qsizetype index : group.members)
            load.processes.push_back(processes[index]);
        load.target = processes[targetIndex];
        // The target's own walk names the identity; in an "app:" group every
        // member's walk found the same path, though maybe on another process.
        const qsizetype source = applicationSources[std::size_t(targetIndex)];
        if (source >= 0)
            load.applicationPath = processes[source].applicationPath;

        const bool codex =
            std::any_of(group.members.begin(), group.members.end(),
                        [&](qsizetype index) { return mentionsCodex(processes[index]); });
        // The source's name is shown everywhere the task is: it passes the
        // printable rule here, once, whatever it was taken from.
        if (codex)
            load.application = QStringLiteral("Codex");
        else if (load.applicationPath)
            load.application = printableText(
                applicationNameForPath(*load.applicationPath, processes[source].applicationName));
        else
            load.application = printableText(load.target.name);
        load.id = QStringLiteral("task-") + QString::number(fnv1a64(group.key), 16);
        loads.push_back(std::move(load));
    }

    std::vector<double> scores;
    scores.reserve(loads.size());
    for (const ApplicationLoad &load : loads)
        scores.push_back(loadScore(load));
    std::vector<std::size_t> order(loads.size());
    for (std::size_t index = 0; index < order.size(); ++index)
        order[index] = index;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        if (scores[left] != scores[right])
            return scores[left] > scores[right];
        return loads[left].application < loads[right].application;
    });
    std::vector<ApplicationLoad> sorted;
    sorted.reserve(loads.size());
    for (std::size_t index : order)
        sorted.push_back(std::move(loads[index]));
    return sorted;
}
