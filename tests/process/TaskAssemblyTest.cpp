#include "process/TaskAssembly.h"
#include "process/ApplicationGrouping.h"
#include "process/LoadTextFormats.h"
#include "process/ProcessNameOrder.h"
#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace Qt::StringLiterals;

TEST(LoadTextFormatsTest, DurationsRoundToWholeSeconds)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("duration-texts")))
        EXPECT_EQ(durationText(std::stod(std::string(row.view(0)))), *row.text(1)) << row.where;
}

TEST(LoadTextFormatsTest, ResourceImpactThresholdsAreInclusive)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("resource-impacts")))
        EXPECT_EQ(
            resourceImpactName(resourceImpact(row.text(0)->toDouble(), row.text(1)->toDouble())),
            *row.text(2))
            << row.where;
}

TEST(ProcessNameOrderTest, DigitRunsSortByValueInTheCLocale)
{
    const ProcessNameOrder order(QLocale::c());
    for (const FixtureRow &row : fixtureTable(QStringLiteral("process-name-order")))
        EXPECT_EQ(order.compare(*row.text(0), *row.text(2)), u"<=>"_s.indexOf(*row.text(1)) - 1)
            << row.where;
    // A real locale collates (not by code point) and still sorts digit runs by value.
    const ProcessNameOrder german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_LT(german.compare(u"a2", u"a10"), 0);
    EXPECT_LT(german.compare(u"Äpfel", u"Birnen"), 0);
    EXPECT_LT(german.compare(u"apfel", u"Birnen"), 0);
}

// The tree's shape as "name(pid)[children]" for compact expectations.
QString shapeOf(const std::vector<DashboardProcessNode> &nodes)
{
    QStringList parts;
    for (const DashboardProcessNode &node : nodes) {
        QString part = node.name + QLatin1Char('(') + QString::number(node.pid) + QLatin1Char(')');
        if (node.isTarget)
            part += QLatin1Char('*');
        if (!node.children.empty())
            part += QLatin1Char('[') + shapeOf(node.children) + QLatin1Char(']');
        parts << part;
    }
    return parts.join(QLatin1Char(' '));
}

TEST(ProcessTreeTest, BuildsTheForestInNameOrder)
{
    const ProcessNameOrder order(QLocale::c());
    for (const FixtureRow &row : fixtureTable(QStringLiteral("process-trees"))) {
        std::vector<ProcessMetric> processes;
        for (std::size_t index = 2; index < row.fields.size(); ++index) {
            const QStringList fields = row.text(index)->split(u':');
            processes.push_back(makeProcess(fields[0].toInt(), fields[1].toInt(), fields[2]));
        }
        TickTexts texts(order);
        EXPECT_EQ(shapeOf(assembleProcessTree(processes, row.text(0)->toInt(), texts)),
                  *row.text(1))
            << row.where;
    }
}

TEST(TaskAssemblyTest, SumsAndFormatsTheMembers)
{
    ProcessMetric shell = makeProcess(10, 1, "bash", 1.0, 500'000.0);
    shell.duration = 4000.0;
    ProcessMetric runner = makeProcess(11, 10, "pytest", 79.5, 1'500'000.0);
    runner.command.project = QStringLiteral("kiln");
    const ApplicationLoad load = makeLoad("pytest", {shell, runner});
    TaskClassification classification = TaskClassification::classify(load);

    const ProcessNameOrder order(QLocale::c());
    TickTexts texts(order);
    const DashboardTask task = assembleTask(load, classification, texts);
    EXPECT_EQ(task.id, load.id);
    EXPECT_EQ(task.kind, TaskKind::test);
    EXPECT_EQ(task.diagnosis, classification.diagnosis);
    EXPECT_EQ(task.targetProcess, (DashboardProcessSummary{QStringLiteral("pytest"), 11, 79.5,
                                                           QStringLiteral("10 秒")}));
    EXPECT_EQ(task.relatedProcessCount, 2);
    EXPECT_DOUBLE_EQ(task.cpu, 80.5);
    EXPECT_EQ(task.memory, QStringLiteral("20 MB"));
    EXPECT_EQ(task.disk, QStringLiteral("2.0 MB/s"));
    EXPECT_EQ(task.energy, ResourceImpact::high); // the sum crosses 80, no member does
    EXPECT_EQ(task.duration, QStringLiteral("1 小时 6 分钟"));
    EXPECT_EQ(task.symbolName, classification.symbolName);
    EXPECT_EQ(task.canTerminate, classification.canTerminate);
    EXPECT_EQ(task.terminationImpact, classification.impact);
    EXPECT_FALSE(task.isEnded);

    ASSERT_EQ(task.processTree.size(), 1u);
    const DashboardProcessNode &root = task.processTree[0];
    EXPECT_EQ(root.id, QStringLiteral("10-1010.0"));
    EXPECT_EQ(root.energyImpact, ResourceImpact::low);
    ASSERT_EQ(root.children.size(), 1u);
    const DashboardProcessNode &leaf = root.children[0];
    EXPECT_EQ(leaf.id, processNodeKey(11, TimePoint::fromSecondsSince1970(1011.0)));
    EXPECT_EQ(leaf.memory, QStringLiteral("10 MB"));
    EXPECT_EQ(leaf.disk, QStringLiteral("1.5 MB/s"));
    EXPECT_EQ(leaf.energyImpact, ResourceImpact::medium);
    EXPECT_EQ(leaf.project, std::optional<QString>(QStringLiteral("kiln")));
    EXPECT_TRUE(leaf.isTarget);
    EXPECT_FALSE(root.isTarget);
}

// What a process calls itself reaches the task only as printable text:
// controls, separators and direction marks are "?" in every shown field.
TEST(TaskAssemblyTest, AProcessesOwnTextsArriveAsPrintableText)
{
    const ProcessNameOrder order(QLocale::c());
    for (const FixtureRow &row : fixtureTable(QStringLiteral("printable-texts"))) {
        const QString raw = *row.text(0), shown = *row.text(1);
        for (const bool desktopEntry : {false, true}) {
            ProcessMetric process = makeProcess(11, 1, raw, 50.0);
            process.command = {raw, raw};
            if (desktopEntry) {
                process.applicationPath = u"/usr/share/applications/x.desktop"_s;
                process.applicationName = raw;
            }
            const std::vector<ApplicationLoad> loads = groupApplicationLoads({process});
            ASSERT_EQ(loads.size(), 1u);
            TickTexts texts(order);
            const DashboardTask task =
                assembleTask(loads[0], TaskClassification::classify(loads[0]), texts);
            const DashboardProcessNode &node = task.processTree.at(0);
            EXPECT_EQ(task.application, shown) << row.where;
            EXPECT_EQ(task.targetProcess.name, shown) << row.where;
            EXPECT_EQ(task.detail, shown + u" · "_s + shown) << row.where;
            EXPECT_EQ(node.name, shown) << row.where;
            EXPECT_EQ(node.command, shown) << row.where;
            EXPECT_EQ(node.project, shown) << row.where;
        }
    }
}

} // namespace
