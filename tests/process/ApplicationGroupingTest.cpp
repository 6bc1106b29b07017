#include "process/ApplicationGrouping.h"
#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace Qt::StringLiterals;

ProcessMetric inApplication(ProcessMetric process, const QString &path,
                            const QString &platformName = {})
{
    process.applicationPath = path;
    process.applicationName = platformName;
    return process;
}

// A process of the table: pid:parent:name[:cpu:disk[:app=<path>][:name=<the
// platform's name>][:manager]].
ProcessMetric processOf(const QString &field)
{
    const QStringList parts = field.split(u':');
    ProcessMetric process = makeProcess(parts[0].toInt(), parts[1].toInt(), parts[2],
                                        parts.value(3).toDouble(), parts.value(4).toDouble());
    for (const QString &extra : parts.mid(5)) {
        process.isServiceManager = process.isServiceManager || extra == u"manager";
        if (extra.startsWith(u"app="))
            process.applicationPath = extra.mid(4);
        if (extra.startsWith(u"name="))
            process.applicationName = extra.mid(5);
    }
    return process;
}

// A load as the table writes it: application[@path]:members:target.
QString shapeOf(const ApplicationLoad &load)
{
    QStringList members;
    for (const ProcessMetric &process : load.processes)
        members << QString::number(process.identity.pid);
    return load.application + (load.applicationPath ? u'@' + *load.applicationPath : QString()) +
           u':' + members.join(u',') + u':' + QString::number(load.target.identity.pid);
}

TEST(GroupingTest, FoldsProcessesIntoLoadSources)
{
    EXPECT_TRUE(groupApplicationLoads({}).empty());
    for (const FixtureRow &row : fixtureTable(QStringLiteral("application-loads"))) {
        QList<ProcessMetric> processes;
        QStringList expected;
        for (std::size_t index = 0; index < row.fields.size(); ++index) {
            if (!expected.isEmpty() || *row.text(index) == u"=>")
                expected << *row.text(index);
            else
                processes << processOf(*row.text(index));
        }
        QStringList shapes{u"=>"_s};
        for (const ApplicationLoad &load : groupApplicationLoads(processes))
            shapes << shapeOf(load);
        EXPECT_EQ(shapes, expected) << row.where;
    }
}

const QString kEditor = QStringLiteral("/Applications/Editor.app");

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

// The grouping never makes a load without members; one built so speaks for its target.
TEST(ApplicationGroupingTest, LoadWithoutMembersTakesTheTargetsDuration)
{
    ApplicationLoad load;
    load.target.duration = 7.0;
    EXPECT_EQ(loadDuration(load), 7.0);
}

TEST(ApplicationGroupingTest, IdsHashTheGroupKeyAndStayAcrossTicks)
{
    // FNV-1a 64 reference values.
    EXPECT_EQ(fnv1a64(QString()), 0xcbf29ce484222325ULL);
    EXPECT_EQ(fnv1a64(QStringLiteral("a")), 0xaf63dc4c8601ec8cULL);
    EXPECT_EQ(fnv1a64(QStringLiteral("foobar")), 0x85944171f73967e8ULL);
    EXPECT_EQ(fnv1a64(QStringLiteral("é")), 0x0ac21707b7181e01ULL); // its UTF-8 bytes

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
    for (const FixtureRow &row : fixtureTable(QStringLiteral("application-names")))
        EXPECT_EQ(applicationNameForPath(*row.text(1), row.text(2).value_or(QString())),
                  *row.text(0))
            << row.where;
}

} // namespace
