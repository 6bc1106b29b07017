// Load sources as a developer sees them on a Linux desktop: every terminal
// tab, tmux pane or editor terminal is a source of its own, and service
// managers are known by their cgroup. Fixture trees are read by the real
// reader and probe and grouped; the report tool's run (ReportToolTest) has a
// live session of its own.

#include "platform/linux/ProcfsProcessMetricReader.h"
#include "process/ApplicationGrouping.h"
#include "process/ProcessMetricsProbe.h"
#include "support/FixtureProcRoot.h"
#include "support/Fixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace {

const TimePoint kTickTime = TimePoint::fromSecondsSince1970(1700000500.0);

// One source as the grouping gives it: its name, its identity and its members.
struct Source {
    QString application;
    std::optional<QString> applicationPath;
    std::set<pid_t> members;

    bool operator==(const Source &) const = default;
};

void PrintTo(const Source &source, std::ostream *out)
{
    *out << source.application.toStdString() << " {";
    for (pid_t pid : source.members)
        *out << pid << ' ';
    *out << '}';
}

// The sources, in the order of their smallest pid.
std::vector<Source> grouped(const QList<ProcessMetric> &processes)
{
    std::vector<Source> sources;
    for (const ApplicationLoad &load : groupApplicationLoads(processes)) {
        Source source{load.application, load.applicationPath, {}};
        for (const ProcessMetric &process : load.processes)
            source.members.insert(process.identity.pid);
        sources.push_back(std::move(source));
    }
    std::sort(sources.begin(), sources.end(), [](const Source &a, const Source &b) {
        return *a.members.begin() < *b.members.begin();
    });
    return sources;
}

// The fixture read through the real reader and probe, with the CPU shares
// given (one tick has no rates), grouped.
std::vector<Source> sourcesOf(const QString &fixture, const std::map<pid_t, double> &cpu)
{
    FixtureProcRoot root(fixture);
    EXPECT_TRUE(root.isReady());
    const QString applications = fixturePath(QStringLiteral("xdg-desktop/usr/share"));
    ProcessMetricsProbe probe(
        std::make_unique<ProcfsProcessMetricReader>(root.path(), QStringList{applications}));
    QList<ProcessMetric> processes = probe.sample(kTickTime);
    for (ProcessMetric &process : processes) {
        if (const auto found = cpu.find(process.identity.pid); found != cpu.end())
            process.cpuPercent = found->second;
    }
    return grouped(processes);
}

TEST(TerminalSessionTest, EachTabAndPaneIsASourceAndAnAppStartedFromATabKeepsItsOwn)
{
    // GNOME Terminal (2000) with a build in tab 1 (2100) and a test in tab 2
    // (2200), Firefox started from tab 2 into its own scope (2300), and a tmux
    // server (3000) started from tab 1 whose panes (3100, 3200) run a cargo
    // build and a vite server. Pid 1 and the user's systemd (900) are
    // service managers. See tests/fixtures/terminal-sessions.
    const QString terminal = fixturePath(
        QStringLiteral("xdg-desktop/usr/share/applications/org.gnome.Terminal.desktop"));
    const QString firefox =
        fixturePath(QStringLiteral("xdg-desktop/usr/share/applications/firefox.desktop"));
    const std::vector<Source> expected = {
        {QStringLiteral("systemd"), std::nullopt, {1}},
        {QStringLiteral("systemd"), std::nullopt, {900}},
        {QStringLiteral("System Terminal"), terminal, {2000, 3000}},
        {QStringLiteral("cc1plus"), std::nullopt, {2100, 2101, 2102}},
        {QStringLiteral("pytest"), std::nullopt, {2200, 2201}},
        {QStringLiteral("Firefox Web Browser"), firefox, {2300, 2301}},
        {QStringLiteral("rustc"), std::nullopt, {3100, 3101, 3102}},
        {QStringLiteral("node"), std::nullopt, {3200, 3201}},
    };
    const std::map<pid_t, double> cpu = {{2102, 90.0}, {2201, 60.0}, {3102, 80.0}, {3201, 20.0}};
    EXPECT_EQ(sourcesOf(QStringLiteral("terminal-sessions/proc"), cpu), expected);
}

TEST(TerminalSessionTest, ContainerWhosePidOneIsBashKeepsTheUsersBashAsAParent)
{
    // Pid 1 is bash; the user's bash (7) runs make (8) and cc1 (9).
    const std::vector<Source> expected = {
        {QStringLiteral("bash"), std::nullopt, {1}},
        {QStringLiteral("cc1"), std::nullopt, {7, 8, 9}},
    };
    EXPECT_EQ(sourcesOf(QStringLiteral("container-bash/proc"), {{9, 95.0}}), expected);
}

} // namespace
