// The whole route on this machine: the real sampler, the real store, the
// real page and the real Linux termination controller, on a busy loop that
// this test starts itself. What the sampler saw of the process must be what
// the controller reads back, or the end is refused. Nothing else is
// signalled: the test checks that the selected process is its own child
// before it presses the button.
#include "DiagnosisTesting.h"

#include "platform/PlatformFactory.h"
#include "presentation/diagnosis/ProcessOperationPanel.h"
#include "presentation/shell/TerminationConfirmationDialog.h"
#include "support/ShellChild.h"

#include <QFile>
#include <QTemporaryDir>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Qt::StringLiterals;

TEST(LiveDiagnosisEndToEnd, EndsItsOwnBusyChildThroughThePageAndTheDialog)
{
    // A busy loop that looks like a test runner: /bin/sh started through a
    // link named "pytest", so its process name is "pytest". Until the handle
    // reaps it, its pid stays its own (an ended child stays a zombie).
    QTemporaryDir project(QDir::tempPath() + u"/kiln-e2e-XXXXXX"_s);
    const QByteArray folder = QFile::encodeName(project.path());
    ASSERT_EQ(::symlink("/bin/sh", folder + "/pytest"), 0);
    ShellChild child(folder, {"pytest", "-c", "while :; do :; done"},
                     ShellChild::Session::inherited, folder + "/pytest");
    const pid_t pid = child.pid();
    ASSERT_GT(pid, 0);

    auto sampler = makeSystemMetricSampler();
    DashboardStore store(LiveSystemMonitor(makeSystemMetricSampler(), 2.0),
                         makeProcessTerminationController());
    for (int i = 0; i < 3; ++i) {
        store.ingest(sampler->sample(TimePoint::now()));
        QTest::qWait(400);
    }
    for (const DashboardTask &task : store.allTasks()) {
        for (const DashboardProcessNode &root : task.processTree) {
            if (const DashboardProcessNode *node = root.nodeWithPID(pid)) {
                store.selectTask(task.id);
                store.selectProcess(node->id);
            }
        }
    }
    const auto selected = store.selectedProcess();
    ASSERT_TRUE(selected.has_value()) << "the sampler did not find the child";
    ASSERT_EQ(selected->pid, pid) << "refusing to press: the selection is not the test's child";

    DashboardWindow window(store, DashboardSection::liveDiagnosis, [] {});
    window.resize(1440, 900);
    window.show();
    settleEvents(20);
    auto *end = window.findChild<PanelButton *>(u"endTaskButton"_s);
    ASSERT_TRUE(end->isEnabled());
    QTest::mouseClick(end, Qt::LeftButton);
    ASSERT_TRUE(window.confirmationDialog()->isVisible());
    ASSERT_EQ(store.pendingTerminationTarget()->identity.pid, pid);
    QTest::mouseClick(window.confirmationDialog()->confirmButton(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return end->text() == u"进程已结束"_s; }, 5000));
    // Ended by the graceful signal, and left for its owner to reap.
    siginfo_t ended{};
    EXPECT_EQ(::waitid(P_PID, pid, &ended, WEXITED | WNOHANG | WNOWAIT), 0);
    EXPECT_EQ(ended.si_pid, pid);
    EXPECT_EQ(ended.si_status, SIGTERM);
    EXPECT_EQ(window.findChild<TextLabel *>(u"recoveryTarget"_s)->fullText(),
              u"pytest · PID %1 · 最近一次操作"_s.arg(pid));
}

} // namespace
