// The whole route on this machine: the real sampler, the real store, the
// real page and the real Linux termination controller, driven like a user,
// on a busy loop that this test starts itself. Nothing else is signalled:
// the test checks that the selected process is its own child before it
// presses the button.
#include "DiagnosisTesting.h"

#include "platform/PlatformFactory.h"
#include "presentation/diagnosis/DiagnosisWorkspace.h"
#include "presentation/diagnosis/ProcessCompositionView.h"
#include "presentation/diagnosis/ProcessOperationPanel.h"
#include "presentation/diagnosis/ProcessTree.h"
#include "presentation/diagnosis/SourceList.h"
#include "presentation/shell/TerminationConfirmationDialog.h"
#include "support/ShellChild.h"

#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include <cerrno>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Qt::StringLiterals;

// The pids from a root to the node of `pid`, the node itself last.
bool pathTo(const DashboardProcessNode &node, pid_t pid, std::vector<pid_t> &path)
{
    path.push_back(node.pid);
    if (node.pid == pid)
        return true;
    for (const DashboardProcessNode &child : node.children) {
        if (pathTo(child, pid, path))
            return true;
    }
    path.pop_back();
    return false;
}

TEST(LiveDiagnosisEndToEnd, EndsItsOwnBusyChildThroughThePageAndTheDialog)
{
    QTemporaryDir project(QDir::tempPath() + u"/kiln-e2e-XXXXXX"_s);
    ASSERT_TRUE(project.isValid());
    // A busy loop that looks like a test runner: /bin/sh started through a
    // link named "pytest" in the project folder, so its process name is
    // "pytest". Until the handle reaps it, its pid stays its own (an ended
    // child stays a zombie).
    const QByteArray folder = QFile::encodeName(project.path());
    ASSERT_EQ(::symlink("/bin/sh", folder + "/pytest"), 0);
    ShellChild child(folder, {"pytest", "-c", "while :; do :; done"},
                     ShellChild::Session::inherited, folder + "/pytest");
    ASSERT_GT(child.pid(), 0);
    const pid_t pid = child.pid();

    auto sampler = makeSystemMetricSampler();
    DashboardStore store(LiveSystemMonitor(makeSystemMetricSampler(), 2.0),
                         makeProcessTerminationController());
    const auto tick = [&] {
        store.ingest(sampler->sample(TimePoint::now()));
        QTest::qWait(400);
    };
    for (int i = 0; i < 3; ++i)
        tick();
    // The source holding the child, and the pids from its root down to it.
    const DashboardTask *task = nullptr;
    std::vector<pid_t> path;
    for (const DashboardTask &candidate : store.allTasks()) {
        for (const DashboardProcessNode &root : candidate.processTree) {
            if (pathTo(root, pid, path))
                task = &candidate;
        }
    }
    ASSERT_NE(task, nullptr) << "the sampler did not find the child";
    const QString taskID = task->id;

    DashboardWindow window(store, DashboardSection::liveDiagnosis, [] {});
    window.resize(1440, 900);
    window.show();
    settleEvents(20);
    auto *page = qobject_cast<LiveDiagnosisPage *>(window.shell()->currentPage());
    ASSERT_NE(page, nullptr);

    // Find it: every source, searched by its project (the folder it runs in).
    QTest::mouseClick(window.findChild<QWidget *>(u"processListScope-all"_s), Qt::LeftButton);
    QTest::keyClicks(window.findChild<QLineEdit *>(u"processSearch"_s),
                     QFileInfo(project.path()).fileName());
    SourceListView *list = page->sourceList();
    ASSERT_GE(list->sourceModel()->rowOf(taskID), 0) << "the child's source is not listed";
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->rowRect(taskID).center());
    ASSERT_EQ(store.selectedTaskID(), taskID);

    // Walk its processes down to the child, opening what is closed.
    ProcessTreeView *tree = page->workspace()->composition()->treeView();
    ProcessTreeModel *model = tree->treeModel();
    const auto rowOf = [&](pid_t wanted) {
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->rowAt(row).pid == wanted)
                return row;
        }
        return -1;
    };
    for (const pid_t ancestor : path) {
        const int row = rowOf(ancestor);
        ASSERT_GE(row, 0) << ancestor;
        tree->scrollTo(model->index(row));
        if (ancestor != pid && !model->rowAt(row).isExpanded)
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                              tree->toggleRect(ancestor).center());
    }
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->rowRect(pid).center());
    const auto selected = store.selectedProcess();
    ASSERT_TRUE(selected.has_value());
    ASSERT_EQ(selected->pid, pid) << "refusing to press: the selection is not the test's child";

    // End it through the button and the dialog.
    auto *end = window.findChild<PanelButton *>(u"endTaskButton"_s);
    ASSERT_TRUE(end->isEnabled());
    QTest::mouseClick(end, Qt::LeftButton);
    auto *dialog = window.confirmationDialog();
    ASSERT_TRUE(dialog->isVisible());
    ASSERT_EQ(store.pendingTerminationTarget()->identity.pid, pid);
    QTest::mouseClick(dialog->findChild<QPushButton *>(u"confirmTerminationButton"_s),
                      Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return end->text() == u"进程已结束"_s; }, 5000));
    EXPECT_FALSE(end->isEnabled());
    // Ended by the graceful signal, and left for its owner to reap.
    siginfo_t ended{};
    EXPECT_EQ(::waitid(P_PID, pid, &ended, WEXITED | WNOHANG | WNOWAIT), 0);
    EXPECT_EQ(ended.si_pid, pid);
    EXPECT_EQ(ended.si_status, SIGTERM);

    const QString status = window.findChild<TextLabel *>(u"recoveryStatus"_s)->fullText();
    EXPECT_TRUE(status.startsWith(u"正在验证结束该进程后的整机变化 · 剩余约 "_s))
        << qPrintable(status);
    EXPECT_EQ(window.findChild<TextLabel *>(u"recoveryTarget"_s)->fullText(),
              u"pytest · PID %1 · 最近一次操作"_s.arg(pid));
}

} // namespace
