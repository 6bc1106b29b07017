#include "dashboard/DashboardTexts.h"
#include "sampling/Text.h"
#include "support/FixtureTable.h"

#include <gtest/gtest.h>

namespace {

DashboardProcessNode node(const char *id, pid_t pid, const char *name, const char *command = "",
                          std::vector<DashboardProcessNode> children = {}, bool isTarget = false)
{
    DashboardProcessNode result;
    result.id = QString::fromUtf8(id);
    result.pid = pid;
    result.name = QString::fromUtf8(name);
    result.command = QString::fromUtf8(command);
    result.children = std::move(children);
    result.isTarget = isTarget;
    return result;
}

// sh(1) -> [make(2) -> [cc(3, target), cc(4, id "dup")], tail(5, id "dup")]
DashboardProcessNode sampleTree()
{
    return node("n1", 1, "sh", "sh",
                {node("n2", 2, "make", "make build",
                      {node("n3", 3, "cc", "cc", {}, true), node("dup", 4, "cc", "cc")}),
                 node("dup", 5, "tail", "tail")});
}

TEST(DashboardProcessNodeTest, PathToTargetListsTheAncestors)
{
    const DashboardProcessNode tree = sampleTree();
    EXPECT_EQ(tree.pathToTarget(), (std::vector<pid_t>{1, 2}));
    EXPECT_EQ(tree.children[0].children[0].pathToTarget(), std::vector<pid_t>{});
    EXPECT_EQ(tree.children[1].pathToTarget(), std::nullopt);

    DashboardTask task;
    task.processTree = {tree, node("x", 9, "other")};
    EXPECT_EQ(task.initiallyExpandedPIDs(), (std::set<pid_t>{1, 2}));
    task.processTree = {node("t", 7, "solo", "", {}, true)};
    EXPECT_TRUE(task.initiallyExpandedPIDs().empty()); // a root target opens nothing
}

TEST(DashboardProcessNodeTest, MatchesOnAnyFieldOrAnyChild)
{
    DashboardProcessNode tree = sampleTree();
    tree.children[0].children[0].project = QStringLiteral("KilnProject");
    const std::pair<const char *, bool> rows[] = {
        {"SH", true},   {"Make B", true}, {"kilnproj", true}, {"4", true},
        {"tail", true}, {"zzz", false},   {"", true},
    };
    for (const auto &[query, expected] : rows)
        EXPECT_EQ(tree.matches(QString::fromUtf8(query)), expected) << query;
    // Only through the child; an absent project does not match.
    EXPECT_FALSE(tree.children[1].matches(QStringLiteral("kiln")));
}

TEST(DashboardProcessNodeTest, RoleLabelFirstHitDecides)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("process-role-labels"))) {
        DashboardProcessNode subject = node("a", 1, "", "");
        subject.name = *row.text(1);
        subject.command = row.text(2).value_or(QString());
        if (row.text(3))
            subject.children.push_back(node("b", 2, "child"));
        EXPECT_EQ(subject.roleLabel(), *row.text(0)) << row.where;
    }
}

// The messages are the operation panel's; the titles are tested here.
TEST(DashboardPendingTerminationTest, ForcedTitlesAndAPidNeverGrouped)
{
    const DashboardPendingTermination pending{
        {}, node("p", 4321, "pytest", "", {}, true), ProcessTerminationSignal::forced};
    EXPECT_EQ(terminationConfirmationTitle(pending),
              QStringLiteral("强制结束 pytest（PID 4321）？"));
    EXPECT_EQ(terminationConfirmationActionTitle(pending), QStringLiteral("强制结束"));
}

} // namespace
