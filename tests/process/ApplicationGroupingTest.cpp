#include "process/ApplicationGrouping.h"
#include "support/RowName.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

#include <map>

namespace {

ProcessMetric inApplication(ProcessMetric process, const QString &path,
                            const QString &platformName = {})
{
    process.applicationPath = path;
    process.applicationName = platformName;
    return process;
}

ProcessMetric serviceManager(ProcessMetric process)
{
    process.isServiceManager = true;
    return process;
}

// What a grouping looks like from outside: per load, its name, its key path,
// its members' pids and its target's pid.
struct LoadShape {
    QString application;
    std::optional<QString> applicationPath;
    std::vector<pid_t> members;
    pid_t target = 0;

    bool operator==(const LoadShape &) const = default;
};

void PrintTo(const LoadShape &shape, std::ostream *out)
{
    *out << shape.application.toStdString() << " members[";
    for (pid_t pid : shape.members)
        *out << pid << ' ';
    *out << "] target " << shape.target;
}

std::vector<LoadShape> shapesOf(const std::vector<ApplicationLoad> &loads)
{
    std::vector<LoadShape> shapes;
    for (const ApplicationLoad &load : loads) {
        LoadShape shape{load.application, load.applicationPath, {}, load.target.identity.pid};
        for (const ProcessMetric &process : load.processes)
            shape.members.push_back(process.identity.pid);
        shapes.push_back(shape);
    }
    return shapes;
}

struct GroupingCase {
    const char *name;
    QList<ProcessMetric> processes;
    std::vector<LoadShape> expected; // in result order
};

using rows::PrintTo;

class GroupingTest : public testing::TestWithParam<GroupingCase> {};

TEST_P(GroupingTest, FoldsProcessesIntoLoadSources)
{
    EXPECT_EQ(shapesOf(groupApplicationLoads(GetParam().processes)), GetParam().expected);
}

const QString kEditor = QStringLiteral("/Applications/Editor.app");
const QString kTool = QStringLiteral("/Applications/Tool.app");
const QString kTerminal = QStringLiteral("/usr/share/applications/org.gnome.Terminal.desktop");
constexpr std::nullopt_t no = std::nullopt;
const auto p = [](pid_t pid, pid_t parent, const char *name, double cpu = 0.0, double disk = 0.0) {
    return makeProcess(pid, parent, name, cpu, disk);
};

using G = GroupingCase;
// clang-format off
INSTANTIATE_TEST_SUITE_P(Cases, GroupingTest, testing::Values(
    G{"EmptyListGivesNoLoads", {}, {}},
    G{"OrphanWithoutIdentityIsItsOwnLineage", {p(50, 1, "bash")}, {{"bash", no, {50}, 50}}},
    // 1 (another user's) is not in the list: 10 is the root.
    G{"ShellOfAnotherUserRootsALineageOfEverythingItStarts",
        {p(10, 1, "zsh"), p(11, 10, "make"), p(12, 11, "cc1", 90.0), p(13, 10, "sleep")},
        {{"cc1", no, {10, 11, 12, 13}, 12}}},
    // A (X) starts B (Y) starts C (none): all keyed by X.
    G{"TopmostApplicationWinsOverNestedOnes",
        {inApplication(p(20, 1, "Tool"), kTool), inApplication(p(21, 20, "Editor"), kEditor),
         p(22, 21, "worker", 5.0)}, {{"Tool", kTool, {20, 21, 22}, 22}}},
    // 40 and 41 name each other: each walk stops where it would come round
    // again, at the other process.
    G{"CycleOfParentNumbersEndsBothWalks", {p(40, 41, "ping", 1.0), p(41, 40, "pong", 3.0)},
        {{"pong", no, {41}, 41}, {"ping", no, {40}, 40}}},
    // Same application, naming each other: no leaf at all.
    G{"GroupOfParentsOnlyStillHasATarget",
        {inApplication(p(42, 43, "a", 1.0), kTool), inApplication(p(43, 42, "b", 4.0), kTool),
         inApplication(p(44, 1, "c", 2.0), kEditor)},
        {{"Tool", kTool, {42, 43}, 43}, {"Editor", kEditor, {44}, 44}}},
    G{"SelfParentIsACycleOfOne", {p(45, 45, "ouroboros", 2.0)}, {{"ouroboros", no, {45}, 45}}},
    G{"AllIdleTargetIsTheFirstLeafInListOrder",
        {p(60, 1, "sh"), p(62, 60, "b"), p(61, 60, "a")}, {{"b", no, {60, 62, 61}, 62}}},
    G{"EqualCPUTargetGoesToTheHigherDiskRate",
        {p(70, 1, "sh"), p(71, 70, "a", 10.0, 5.0), p(72, 70, "b", 10.0, 9.0)},
        {{"b", no, {70, 71, 72}, 72}}},
    G{"CodexAnywhereInTheGroupNamesIt",
        {inApplication(p(80, 1, "Tool"), kTool), p(81, 80, "codex")},
        {{"Codex", kTool, {80, 81}, 81}}},
    G{"PlatformNameOfTheIdentityWins",
        {inApplication(p(95, 1, "gnome-terminal-"), kTerminal, "终端"), p(96, 95, "bash")},
        {{"终端", kTerminal, {95, 96}, 96}}},
    // systemd --user (100) starts two unrelated services; each is a lineage
    // of its own, and the manager one of its own.
    G{"ServiceManagerIsNobodysParent",
        {serviceManager(p(100, 1, "systemd")), p(101, 100, "pipewire", 2.0),
         p(102, 100, "tracker", 1.0), p(103, 102, "extract", 0.5)},
        {{"pipewire", no, {101}, 101}, {"extract", no, {102, 103}, 103},
         {"systemd", no, {100}, 100}}},
    G{"ServiceManagerDoesNotCarryAnIdentityDownToItsChildren",
        {serviceManager(inApplication(p(110, 1, "systemd"), kTool)), p(111, 110, "daemon", 1.0)},
        {{"daemon", no, {111}, 111}, {"Tool", kTool, {110}, 110}}},
    G{"EqualScoresSortByNameInCodePointOrder",
        {p(120, 1, "beta", 5.0), p(121, 1, "Zulu", 5.0), p(122, 1, "alpha", 5.0),
         p(123, 1, "busy", 6.0)},
        {{"busy", no, {123}, 123}, {"Zulu", no, {121}, 121}, {"alpha", no, {122}, 122},
         {"beta", no, {120}, 120}}},
    // 30 MB/s (30 points) outranks 25 % CPU.
    G{"DiskCountsAMegabytePerSecondAsAPoint",
        {p(130, 1, "cpu", 25.0), p(131, 1, "disk", 0.0, 30e6)},
        {{"disk", no, {131}, 131}, {"cpu", no, {130}, 130}}}),
    RowName());
// clang-format on

TEST(ApplicationGroupingTest, LoadScoreCapsDiskAtFiftyPoints)
{
    struct Row {
        double cpu;
        double disk;
        double score;
    };
    const Row rows[] = {
        {0.0, 80e6, 50.0}, {0.0, 50e6, 50.0}, {10.0, 2e6, 12.0}, {150.0, 0.0, 150.0}};
    for (const Row &row : rows) {
        ApplicationLoad load;
        load.processes = {makeProcess(1, 0, "a", row.cpu / 2, row.disk / 2),
                          makeProcess(2, 0, "b", row.cpu / 2, row.disk / 2)};
        EXPECT_DOUBLE_EQ(loadScore(load), row.score) << row.cpu << " " << row.disk;
    }
}

TEST(ApplicationGroupingTest, LoadDurationIsTheLongestMember)
{
    ApplicationLoad load;
    load.target = makeProcess(1, 0, "t");
    load.target.duration = 7.0;
    EXPECT_DOUBLE_EQ(loadDuration(load), 7.0); // no members: the target's
    load.processes = {makeProcess(1, 0, "a"), makeProcess(2, 0, "b")};
    load.processes[1].duration = 99.0;
    EXPECT_DOUBLE_EQ(loadDuration(load), 99.0);
}

TEST(ApplicationGroupingTest, IdsHashTheGroupKeyAndStayAcrossTicks)
{
    // FNV-1a 64 reference values.
    EXPECT_EQ(fnv1a64(QString()), 0xcbf29ce484222325ULL);
    EXPECT_EQ(fnv1a64(QStringLiteral("a")), 0xaf63dc4c8601ec8cULL);
    EXPECT_EQ(fnv1a64(QStringLiteral("foobar")), 0x85944171f73967e8ULL);

    QList<ProcessMetric> tick = {makeProcess(10, 1, "sh"), makeProcess(11, 10, "job", 50.0),
                                 inApplication(makeProcess(20, 1, "Editor"), kEditor)};
    const auto first = groupApplicationLoads(tick);
    std::map<QString, QString> idByName;
    for (const auto &load : first)
        idByName[load.application] = load.id;
    EXPECT_EQ(idByName[QStringLiteral("job")],
              QStringLiteral("task-") + QString::number(fnv1a64(QStringLiteral("lineage:10")), 16));
    EXPECT_EQ(idByName[QStringLiteral("Editor")],
              QStringLiteral("task-") +
                  QString::number(fnv1a64(QStringLiteral("app:") + kEditor), 16));

    // Next tick: counters move, a child comes and goes; ids do not change.
    tick[1].cpuPercent = 1.0;
    tick.append(makeProcess(12, 10, "extra", 9.0));
    for (const auto &load : groupApplicationLoads(tick))
        EXPECT_EQ(load.id, idByName[load.application == "extra" ? "job" : load.application]);
}

TEST(ApplicationGroupingTest, ApplicationNameFromPath)
{
    struct Row {
        const char *path;
        const char *platformName;
        const char *expected;
    };
    const Row rows[] = {
        {"/Applications/Editor.app", "", "Editor"},
        {"/Applications/Editor.app/", "", "Editor"},
        {"/A.app/Contents/Frameworks/Editor Helper (GPU).app", "", "Editor (GPU)"},
        {"/Applications/Foo Helper Helper.app", "", "Foo"},
        {"/Applications/Foo.Bar.app", "", "Foo.Bar"},
        {"/opt/NoExtension", "", "NoExtension"},
        {"org.example.Thing", "Thing", "Thing"},
        {"/usr/share/applications/firefox.desktop", "Firefox 网络浏览器", "Firefox 网络浏览器"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(applicationNameForPath(QString::fromUtf8(row.path),
                                         QString::fromUtf8(row.platformName)),
                  QString::fromUtf8(row.expected))
            << row.path;
}

} // namespace
