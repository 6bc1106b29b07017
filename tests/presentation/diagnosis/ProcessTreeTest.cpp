#include "DiagnosisTesting.h"

#include "presentation/diagnosis/DiagnosisWorkspace.h"
#include "presentation/diagnosis/ProcessCompositionView.h"
#include "presentation/diagnosis/ProcessTree.h"

namespace {

using namespace Qt::StringLiterals;

DashboardProcessNode node(pid_t pid, std::vector<DashboardProcessNode> children = {},
                          bool isTarget = false)
{
    return {.pid = pid, .isTarget = isTarget, .children = std::move(children)};
}

std::vector<std::pair<pid_t, int>> shape(const std::vector<VisibleProcessRow> &rows)
{
    std::vector<std::pair<pid_t, int>> result;
    for (const VisibleProcessRow &row : rows)
        result.emplace_back(row.node->pid, row.depth);
    return result;
}

TEST(ProcessTreeFlattening, PreOrderOnlyBelowOpenNodesAtAnyDepth)
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

    // No depth limit: a chain 300 deep opens down to its target.
    DashboardTask task;
    task.processTree = {node(1000, {}, true)};
    for (pid_t pid = 999; pid > 1000 - 300; --pid)
        task.processTree = {node(pid, std::move(task.processTree))};
    const auto rows = flattenProcessTree(task.processTree, task.initiallyExpandedPIDs());
    ASSERT_EQ(rows.size(), 300u);
    EXPECT_EQ(rows.back().depth, 299);
    EXPECT_TRUE(rows.back().node->isTarget);
}

// bash(500) ─ make(501) ─ cc1(502), cc1(503, busy); plus an idle root (600).
QList<ProcessMetric> buildProcesses(bool extraChild = false, double firstCC1CPU = 2)
{
    QList<ProcessMetric> list = {madeUpProcess(500, 1, u"bash"_s, 0.2),
                                 madeUpProcess(501, 500, u"make"_s, 0.2, u"make -j4"_s, u"kiln"_s),
                                 madeUpProcess(502, 501, u"cc1"_s, firstCC1CPU, u"cc1 a.c"_s),
                                 madeUpProcess(503, 501, u"cc1"_s, 80, u"cc1 b.c"_s),
                                 madeUpProcess(600, 1, u"idle"_s, 0.1)};
    if (extraChild)
        list.append(madeUpProcess(504, 501, u"cc1"_s, 1, u"cc1 c.c"_s));
    return list;
}

using ProcessTreeView_ = DiagnosisStoreTest;

TEST_F(ProcessTreeView_, TogglesKeepAcrossTicksSelectionIsAPressOutsideTheChevron)
{
    ingestTwice(buildProcesses());
    const QString buildID = taskWithTarget(503)->id;
    const QString idleID = taskWithTarget(600)->id;
    store->selectTask(buildID);
    ProcessCompositionView *composition = openPage()->workspace()->composition();
    ProcessTreeView *tree = composition->treeView();
    const ProcessTreeModel *model = tree->treeModel();
    const auto visiblePIDs = [&] {
        QList<pid_t> pids;
        for (const ProcessTreeRow &row : model->rows())
            pids.append(row.pid);
        return pids;
    };
    const auto press = [&](const QRect &box) {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, box.center());
    };
    // The target's ancestors are open: the target is visible.
    EXPECT_EQ(visiblePIDs(), (QList<pid_t>{500, 501, 502, 503}));
    EXPECT_TRUE(model->index(3)
                    .data(Qt::AccessibleTextRole)
                    .toString()
                    .startsWith(u"cc1，主要负载进程，工作进程，PID 503，CPU 80%"_s));
    expectHeard(m_window.get(), {{u"processTree-node-503"_s, {}, u"已选择"_s},
                                 {u"processTree-node-501"_s, {}, u"未选择"_s}});
    EXPECT_EQ(model->index(2).data(RowRole::toggleEnabled), false);
    EXPECT_EQ(model->index(1).data(RowRole::toggleLabel), u"折叠子进程"_s);
    EXPECT_EQ(model->rowAt(0).badge, u"关联根"_s);
    EXPECT_EQ(model->rowAt(2).badge, QString());
    EXPECT_EQ(model->rowAt(1).detail, u"父进程 · make -j4 · 项目 kiln · 磁盘 0 B/s · 10 秒"_s);
    EXPECT_EQ(model->rowAt(2).detail, u"工作进程 · cc1 a.c · 磁盘 0 B/s · 10 秒"_s);
    ingest(buildProcesses(false, 7)); // a tick that changes one figure reaches its row
    EXPECT_EQ(model->rowAt(2).cpu, u"7%"_s);

    // Close make by its chevron: its children go, the selection stays.
    const QString selectedBefore = store->selectedProcessID().value_or(QString());
    press(tree->toggleRect(501));
    EXPECT_EQ(visiblePIDs(), (QList<pid_t>{500, 501}));
    EXPECT_EQ(store->selectedProcessID().value_or(QString()), selectedBefore);
    EXPECT_EQ(model->index(1).data(RowRole::toggleLabel), u"展开子进程"_s);

    // A new tick of the same task keeps it closed; opening shows a new child.
    ingest(buildProcesses(true));
    EXPECT_EQ(visiblePIDs(), (QList<pid_t>{500, 501}));
    press(tree->toggleRect(501));
    EXPECT_EQ(visiblePIDs(), (QList<pid_t>{500, 501, 502, 503, 504}));

    // A press on the row outside the chevron selects that process, and on a
    // leaf's invisible chevron place the leaf.
    press(tree->rowRect(501));
    EXPECT_EQ(store->selectedProcess()->pid, 501);
    EXPECT_EQ(visiblePIDs().size(), 5);
    press(tree->toggleRect(502));
    EXPECT_EQ(store->selectedProcess()->pid, 502);

    // Another task shows its own tree.
    store->selectTask(idleID);
    EXPECT_EQ(visiblePIDs(), (QList<pid_t>{600}));
    EXPECT_EQ(model->rowAt(0).badge, u"主要负载进程"_s);

    // The selected source disappears: the tree follows the store's next
    // selection without a stale row, then shows the empty state.
    ingest(buildProcesses(true).mid(0, 4));
    if (const DashboardTask *selected = store->selectedTask()) {
        EXPECT_EQ(model->rowAt(0).pid, selected->processTree.front().pid);
    }
    ingest({});
    EXPECT_TRUE(composition->showsEmptyState());
}

TEST_F(ProcessTreeView_, ATreeFiftyDeepOpensToItsTargetAndStaysReadable)
{
    QList<ProcessMetric> chain; // each the parent of the next; the last one works
    for (pid_t pid = 700; pid < 750; ++pid)
        chain.append(makeProcess(pid, pid == 700 ? 1 : pid - 1, u"recursive-step-%1"_s.arg(pid),
                                 pid == 749 ? 90 : 0.1));
    ingestTwice(chain);
    store->selectTask(taskWithTarget(749)->id);
    ProcessTreeView *tree = openPage({960, 640})->workspace()->composition()->treeView();
    ASSERT_EQ(tree->treeModel()->rowCount(), 50);
    // The deepest chevron still leaves the name its room inside the row.
    EXPECT_LE(tree->toggleRect(749).right() + 120 + ProcessTreeColumns::trailing,
              tree->rowRect(749).right() + 1);
    tree->grab(); // paints every visible row
}

} // namespace
