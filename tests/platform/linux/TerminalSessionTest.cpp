// Load sources as a developer sees them on a Linux desktop: every terminal
// tab, tmux pane or editor terminal is a source of its own, and service
// managers are known by their cgroup. Fixture trees are read by the real
// reader and probe and grouped; the report tool's run (ReportToolTest) has a
// live session of its own.

#include "platform/linux/ProcfsProcessMetricReader.h"
#include "process/ApplicationGrouping.h"
#include "process/ProcessMetricsProbe.h"
#include "support/FixtureProcRoot.h"
#include "support/FixtureTable.h"
#include "support/Fixtures.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

// The sources of a /proc tree (tests/fixtures/tables/terminal-session-sources),
// each as "<name>|<desktop entry>|<member pids>", in the order of their
// smallest pid.
QStringList sourcesOf(const QString &fixture, const QString &cpuShares)
{
    FixtureProcRoot root(fixture);
    EXPECT_TRUE(root.isReady());
    const QString applications = fixturePath(QStringLiteral("xdg-desktop/usr/share"));
    ProcessMetricsProbe probe(
        std::make_unique<ProcfsProcessMetricReader>(root.path(), QStringList{applications}));
    QList<ProcessMetric> processes = probe.sample(TimePoint::fromSecondsSince1970(1700000500.0));
    for (const QString &share : cpuShares.split(u',')) {
        for (ProcessMetric &process : processes) {
            if (share.section(u'=', 0, 0).toInt() == process.identity.pid)
                process.cpuPercent = share.section(u'=', 1).toDouble();
        }
    }
    std::map<pid_t, QString> sources; // by their smallest pid
    for (const ApplicationLoad &load : groupApplicationLoads(processes)) {
        std::set<pid_t> members;
        for (const ProcessMetric &process : load.processes)
            members.insert(process.identity.pid);
        QStringList pids;
        for (const pid_t pid : members)
            pids << QString::number(pid);
        const QString entry =
            load.applicationPath.value_or(fixturePath({})).mid(fixturePath({}).size());
        sources[*members.begin()] = load.application + u'|' + entry + u'|' + pids.join(u' ');
    }
    QStringList texts;
    for (const auto &source : sources)
        texts << source.second;
    return texts;
}

TEST(TerminalSessionTest, EachTabAndPaneIsASourceAndAnAppStartedFromATabKeepsItsOwn)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("terminal-session-sources"))) {
        QStringList expected;
        for (std::size_t index = 2; index < row.fields.size(); ++index)
            expected << *row.text(index);
        EXPECT_EQ(sourcesOf(*row.text(0), *row.text(1)), expected) << row.where;
    }
}

} // namespace
