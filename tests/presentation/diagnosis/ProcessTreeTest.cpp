#include "DiagnosisTesting.h"

#include "presentation/diagnosis/DiagnosisRoles.h"
#include "presentation/diagnosis/DiagnosisWorkspace.h"
#include "presentation/diagnosis/ProcessCompositionView.h"
#include "presentation/diagnosis/ProcessTree.h"
#include "presentation/diagnosis/ProcessTreeRows.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

DashboardProcessNode node(pid_t pid, std::vector<DashboardProcessNode> children = {},
                          bool isTarget = false)
{
    DashboardProcessNode result;
    result.id = QStringLiteral("%1-1.0").arg(pid);
    result.name = QStringLiteral("p%1").arg(pid);
    result.pid = pid;
    result.isTarget = isTarget;
    result.children = std::move(children);
    return result;
}

std::vector<std::pair<pid_t, int>> shape(const std::vector<VisibleProcessRow> &rows)
{
    std::vector<std::pair<pid_t, int>> result;
    for (const VisibleProcessRow &row : rows)
        result.emplace_back(row.node->pid, row.depth);
    return result;
}

TEST(ProcessTreeFlattening, PreOrderAndOnlyBelowOpenNodes)
{
    // 1 ─ 2 ─ 3
    //   └ 4
    // 5 ─ 6
    const std::vector<DashboardProcessNode> roots = {node(1, {node(2, {node(3)}), node(4)}),
                                                     node(5, {node(6)})};
    using Rows = std::vector<std::pair<pid_t, int>>;
    const struct {
        std::set<pid_t> expanded;
        Rows rows;
    } cases[] = {
        {{}, {{1, 0}, {5, 0}}},
        {{1}, {{1, 0}, {2, 1}, {4, 1}, {5, 0}}},
        {{1, 2}, {{1, 0}, {2, 1}, {3, 2}, {4, 1}, {5, 0}}},
        // A closed node hides its subtree whatever the set says below it.
        {{2, 5}, {{1, 0}, {5, 0}, {6, 1}}},
        // An open leaf and unknown pids change nothing.
        {{3, 4, 99}, {{1, 0}, {5, 0}}},
    };
    for (const auto &test : cases)
        EXPECT_EQ(shape(flattenProcessTree(roots, test.expanded)), test.rows);
}

TEST(ProcessTreeFlattening, HasNoDepthLimit)
{
    DashboardProcessNode deepest = node(1000, {}, true);
    for (pid_t pid = 999; pid > 1000 - 300; --pid)
        deepest = node(pid, {std::move(deepest)});
    const std::vector<DashboardProcessNode> roots = {deepest};
    DashboardTask task;
    task.id = QStringLiteral("deep");
    task.processTree = roots;
    const auto rows = flattenProcessTree(roots, task.initiallyExpandedPIDs());
    ASSERT_EQ(rows.size(), 300u);
    EXPECT_EQ(rows.back().depth, 299);
    EXPECT_TRUE(rows.back().node->isTarget);
}

TEST(ProcessTreeExpansion, ReplacedExactlyWhenTheTaskIDChanges)
{
    DashboardTask first;
    first.id = QStringLiteral("a");
    first.processTree = {node(1, {node(2, {node(3, {}, true)})})};
    DashboardTask second = first;
    second.id = QStringLiteral("b");

    ProcessExpansion expansion;
    expansion.follow(&first);
    EXPECT_EQ(expansion.expandedPIDs(), (std::set<pid_t>{1, 2}));
    expansion.toggle(2);
    expansion.toggle(7);
    DashboardTask nextTick = first;
    nextTick.processTree.front().cpu = 50; // a new sample of the same task
    expansion.follow(&nextTick);
    EXPECT_EQ(expansion.expandedPIDs(), (std::set<pid_t>{1, 7}));

    expansion.follow(&second); // same pids, another task: starts afresh
    EXPECT_EQ(expansion.expandedPIDs(), (std::set<pid_t>{1, 2}));
    expansion.toggle(1);
    expansion.follow(nullptr);
    EXPECT_TRUE(expansion.expandedPIDs().empty());
    expansion.follow(&second); // returning starts afresh too
    EXPECT_EQ(expansion.expandedPIDs(), (std::set<pid_t>{1, 2}));
}

class ProcessTreeView_ : public DiagnosisStoreTest {
protected:
    // bash(500) ─ make(501) ─ cc(502), cc(503, busy); plus a second root
    // sh(510) of another lineage.
    QList<ProcessMetric> processes(double busy = 80.0, bool extraChild = false)
    {
        QList<ProcessMetric> list = {
            madeUpProcess(500, 1, QStringLiteral("bash"), 0.2),
            madeUpProcess(501, 500, QStringLiteral("make"), 0.2, QStringLiteral("make -j4"),
                          QStringLiteral("kiln")),
            madeUpProcess(502, 501, QStringLiteral("cc1"), 2, QStringLiteral("cc1 a.c")),
            madeUpProcess(503, 501, QStringLiteral("cc1"), busy, QStringLiteral("cc1 b.c")),
            madeUpProcess(600, 1, QStringLiteral("idle"), 0.1)};
        if (extraChild)
            list.append(
                madeUpProcess(504, 501, QStringLiteral("cc1"), 1, QStringLiteral("cc1 c.c")));
        return list;
    }

    QList<pid_t> visiblePIDs(ProcessTreeView *tree) const
    {
        QList<pid_t> pids;
        for (const ProcessTreeRow &row : tree->treeModel()->rows())
            pids.append(row.pid);
        return pids;
    }
};

TEST_F(ProcessTreeView_, TogglesKeepAcrossTicksAndSelectionIsAPressOutsideTheChevron)
{
    ingestTwice(processes());
    const DashboardTask *build = taskWithTarget(503);
    ASSERT_NE(build, nullptr);
    store->selectTask(build->id);
    LiveDiagnosisPage *page = openPage();
    ProcessTreeView *tree = page->workspace()->composition()->treeView();
    // The target's ancestors are open: the target is visible.
    EXPECT_EQ(visiblePIDs(tree), (QList<pid_t>{500, 501, 502, 503}));

    const QModelIndex target = tree->treeModel()->index(3);
    EXPECT_EQ(target.data(DiagnosisRole::identifier), QStringLiteral("processTree-node-503"));
    EXPECT_EQ(target.data(DiagnosisRole::accessibleValue), QStringLiteral("已选择"));
    EXPECT_EQ(target.data(Qt::AccessibleDescriptionRole),
              QStringLiteral("选择后可查看该进程详情和可用操作"));
    EXPECT_TRUE(target.data(Qt::AccessibleTextRole)
                    .toString()
                    .startsWith(QStringLiteral("cc1，主要负载进程，工作进程，PID 503，CPU 80%")));
    const QModelIndex leaf = tree->treeModel()->index(2);
    EXPECT_EQ(leaf.data(DiagnosisRole::toggleEnabled), false);
    const QModelIndex make = tree->treeModel()->index(1);
    EXPECT_EQ(make.data(DiagnosisRole::toggleIdentifier), QStringLiteral("processTree-toggle-501"));
    EXPECT_EQ(make.data(DiagnosisRole::toggleLabel), QStringLiteral("折叠子进程"));

    // Close make by its chevron: its children go, nothing is selected.
    const QString selectedBefore = store->selectedProcessID().value_or(QString());
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->toggleRect(501).center());
    EXPECT_EQ(visiblePIDs(tree), (QList<pid_t>{500, 501}));
    EXPECT_EQ(store->selectedProcessID().value_or(QString()), selectedBefore);
    EXPECT_EQ(tree->treeModel()->index(1).data(DiagnosisRole::toggleLabel),
              QStringLiteral("展开子进程"));

    // A new tick of the same task keeps it closed; opening shows a new child.
    ingest(processes(70, true));
    EXPECT_EQ(visiblePIDs(tree), (QList<pid_t>{500, 501}));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->toggleRect(501).center());
    EXPECT_EQ(visiblePIDs(tree), (QList<pid_t>{500, 501, 502, 503, 504}));

    // A press on the row outside the chevron selects that process.
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->rowRect(501).center());
    const auto selected = store->selectedProcess();
    ASSERT_TRUE(selected.has_value());
    EXPECT_EQ(selected->pid, 501);
    EXPECT_EQ(visiblePIDs(tree).size(), 5);
    EXPECT_EQ(tree->treeModel()->index(1).data(DiagnosisRole::accessibleValue),
              QStringLiteral("已选择"));
    // A press on a leaf's invisible chevron place selects the leaf.
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->toggleRect(502).center());
    EXPECT_EQ(store->selectedProcess()->pid, 502);
}

TEST_F(ProcessTreeView_, ANewTaskStartsFromItsOwnInitialExpansion)
{
    ingestTwice(processes());
    const QString buildID = taskWithTarget(503)->id;
    const QString idleID = taskWithTarget(600)->id;
    store->selectTask(buildID);
    LiveDiagnosisPage *page = openPage();
    ProcessCompositionView *composition = page->workspace()->composition();
    ProcessTreeView *tree = composition->treeView();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->toggleRect(500).center());
    EXPECT_EQ(visiblePIDs(tree), (QList<pid_t>{500}));

    store->selectTask(idleID);
    EXPECT_EQ(visiblePIDs(tree), (QList<pid_t>{600}));
    EXPECT_EQ(tree->treeModel()->index(0).data(Qt::DisplayRole), QStringLiteral("idle"));
    EXPECT_EQ(tree->treeModel()->rowAt(0).badge, QStringLiteral("主要负载进程"));
    store->selectTask(buildID);
    EXPECT_EQ(visiblePIDs(tree), (QList<pid_t>{500, 501, 502, 503}));
    EXPECT_EQ(tree->treeModel()->rowAt(0).badge, QStringLiteral("关联根"));
    EXPECT_EQ(tree->treeModel()->rowAt(2).badge, QString());
    EXPECT_EQ(tree->treeModel()->rowAt(1).detail,
              QStringLiteral("父进程 · make -j4 · 项目 kiln · 磁盘 0 B/s · 10 秒"));
    EXPECT_EQ(tree->treeModel()->rowAt(2).detail,
              QStringLiteral("工作进程 · cc1 a.c · 磁盘 0 B/s · 10 秒"));
}

TEST_F(ProcessTreeView_, SelectedTaskThatDisappearsLeavesTheEmptyStateOrTheNextSource)
{
    ingestTwice(processes());
    store->selectTask(taskWithTarget(600)->id);
    LiveDiagnosisPage *page = openPage();
    ingest({processes()[0], processes()[1], processes()[2], processes()[3]});
    ProcessCompositionView *composition = page->workspace()->composition();
    // The store moved the selection on; the tree follows without a stale row.
    const DashboardTask *selected = store->selectedTask();
    if (selected) {
        EXPECT_EQ(composition->treeView()->treeModel()->rowAt(0).pid, 500);
    }
    ingest({});
    EXPECT_TRUE(composition->showsEmptyState());
}

TEST_F(ProcessTreeView_, ATreeFiftyDeepOpensToItsTargetAndStaysReadable)
{
    ingestTwice(madeUpChain(700, 50, QStringLiteral("recursive-build-step-with-a-long-name"), 90));
    store->selectTask(taskWithTarget(749)->id);
    LiveDiagnosisPage *page = openPage({960, 640});
    ProcessTreeView *tree = page->workspace()->composition()->treeView();
    ASSERT_EQ(tree->treeModel()->rowCount(), 50);
    EXPECT_EQ(tree->treeModel()->rowAt(49).depth, 49);
    // The deepest chevron still leaves the name its room inside the row.
    const QRect row = tree->rowRect(749);
    const QRect toggle = tree->toggleRect(749);
    EXPECT_LE(toggle.right() + 120 + ProcessTreeColumns::trailing, row.right() + 1);
    tree->grab(); // paints every visible row
}

} // namespace
