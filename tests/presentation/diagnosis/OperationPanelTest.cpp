#include "DiagnosisTesting.h"

#include "presentation/diagnosis/OperationTexts.h"
#include "presentation/diagnosis/ProcessOperationPanel.h"
#include "presentation/shell/TerminationConfirmationDialog.h"

namespace {

using namespace Qt::StringLiterals;
using Phase = DashboardTerminationPhase;
using Signal = ProcessTerminationSignal;
using State = DashboardRecoveryState;

DashboardTerminationStatus statusOf(Phase phase, Signal mode = Signal::graceful)
{
    return {u"7-1.0"_s, u"worker"_s, 7, mode, phase};
}

TEST(EndButtonTitle, FollowsTheSelectionsStatus)
{
    const DashboardProcessNode target{.isTarget = true}, child;
    const struct {
        const DashboardProcessNode *process;
        OptionalTerminationStatus status;
        QString title;
    } cases[] = {
        {nullptr, std::nullopt, u"结束选中进程"_s},
        {nullptr, statusOf(Phase::exited), u"结束选中进程"_s},
        {&child, std::nullopt, u"结束选中进程"_s},
        {&target, std::nullopt, u"结束主要进程"_s},
        {&target, statusOf(Phase::verifying), u"正在结束…"_s},
        {&child, statusOf(Phase::verifying, Signal::forced), u"正在强制结束…"_s},
        {&target, statusOf(Phase::exited), u"进程已结束"_s},
        {&child, statusOf(Phase::unresponsive), u"强制结束"_s},
        {&child, statusOf(Phase::failed), u"重试结束"_s},
        {&target, statusOf(Phase::failed, Signal::forced), u"强制结束失败"_s},
    };
    for (const auto &test : cases)
        EXPECT_EQ(endButtonTitle(test.process, test.status), test.title);
}

TEST(TerminationImpact, ItsFourCases)
{
    DashboardTask task;
    task.terminationImpact = u"会中断当前测试。"_s;
    const DashboardProcessNode target{.isTarget = true}, parent{.children = {{}, {}}}, leaf;
    const QString none = u"选择进程后显示结束操作的影响范围。"_s;
    const struct {
        const DashboardTask *task;
        const DashboardProcessNode *process;
        bool canTerminate;
        OptionalTerminationStatus status;
        QString text;
    } cases[] = {
        {nullptr, &leaf, true, std::nullopt, none},
        {&task, nullptr, true, std::nullopt, none},
        {&task, &target, true, std::nullopt, task.terminationImpact},
        {&task, &parent, true, std::nullopt,
         u"会结束这个进程，并可能中断它的 2 个直接子进程；所属应用也可能自动重新启动它。"_s},
        {&task, &leaf, true, statusOf(Phase::failed),
         u"会结束这个进程；未保存的工作可能丢失，所属应用也可能自动重新启动它。"_s},
        {&task, &leaf, true, statusOf(Phase::unresponsive),
         u"进程没有响应正常结束请求。强制结束会立即中断进程，未保存的数据可能丢失，"
         u"所属应用也可能自动重新启动它。"_s},
        {&task, &target, false, std::nullopt, task.terminationImpact},
        {&task, &leaf, false, std::nullopt, u"安全预检未通过，不能从 KilnWarden 结束这个进程。"_s},
    };
    for (const auto &test : cases) {
        EXPECT_EQ(terminationImpactText(test.task, test.process, test.canTerminate, test.status),
                  test.text);
    }
}

TEST(VerificationStatus, PhaseOutranksRecoveryStateAndTheCountdownFollowsSamples)
{
    const DashboardRecoveryContext context{
        .processName = u"pytest"_s, .pid = 42, .startedAt = TimePoint::fromSecondsSince1970(1000)};
    const auto at = [](double seconds) {
        SystemMetricSample sample;
        sample.timestamp = TimePoint::fromSecondsSince1970(seconds);
        return std::optional<SystemMetricSample>(sample);
    };
    const std::optional<SystemMetricSample> none;
    const QString left = u"正在验证结束该进程后的整机变化 · 剩余约 "_s;
    const QString notEnded = u"本次操作未成功结束，未进入两分钟验证。"_s;
    const struct {
        OptionalTerminationStatus status;
        State state;
        std::optional<SystemMetricSample> latest;
        QString text;
    } cases[] = {
        {statusOf(Phase::verifying), State::recovered, none,
         u"正在确认原进程是否退出，通常不超过 2 秒。"_s},
        {statusOf(Phase::unresponsive), State::terminationFailed, none,
         u"进程仍在运行；如需继续，可再次确认强制结束。"_s},
        {statusOf(Phase::failed, Signal::forced), State::terminationFailed, none,
         u"强制结束未生效，建议打开系统监视器进一步检查。"_s},
        {statusOf(Phase::failed), State::terminationFailed, none, notEnded},
        {std::nullopt, State::idle, none, u"结束进程并确认退出后，将验证两分钟整机变化。"_s},
        {statusOf(Phase::exited), State::recovering, none, left + u"2 分 0 秒"_s},
        {std::nullopt, State::recovering, at(1000.9), left + u"1 分 59 秒"_s},
        {std::nullopt, State::recovering, at(1061), left + u"59 秒"_s},
        {std::nullopt, State::recovering, at(1500), left + u"0 秒"_s},
        {std::nullopt, State::recovered, at(1100), u"负载或温度已下降，验证通过。"_s},
        {std::nullopt, State::noImprovement, none, u"两分钟内未观察到达到阈值的整机改善。"_s},
        {std::nullopt, State::insufficientData, none, u"缺少可比较的系统样本，无法完成验证。"_s},
        {std::nullopt, State::terminationFailed, none, notEnded},
    };
    const std::optional<DashboardRecoveryContext> stored = context;
    for (const auto &test : cases) {
        const DashboardRecoveryContext *effective = effectiveRecoveryContext(test.status, stored);
        EXPECT_EQ(verificationStatusText(test.status, test.state, effective, test.latest),
                  test.text);
    }
    // Recovering with the context outranked by a running status.
    EXPECT_EQ(effectiveRecoveryContext(statusOf(Phase::verifying), stored), nullptr);
    EXPECT_EQ(verificationStatusText(std::nullopt, State::recovering, nullptr, none),
              u"正在对比操作前后的 CPU、温度和热状态。"_s);
    EXPECT_EQ(verificationTargetLine(statusOf(Phase::unresponsive), &context), u"worker · PID 7"_s);
    EXPECT_EQ(verificationTargetLine(std::nullopt, &context), u"pytest · PID 42 · 最近一次操作"_s);
    EXPECT_EQ(verificationTargetLine(std::nullopt, nullptr), QString());
}

// The panel on the real page over a store driven through the termination
// workflow with a made-up controller: a test run (bash, then pytest doing the
// work beside a python3 worker) and an unknown tool whose busy leaf may not
// be ended. The texts themselves are the tables' above; here they are wired.
class OperationPanel : public DiagnosisStoreTest {
protected:
    QList<ProcessMetric> processes() const
    {
        return {madeUpProcess(800, 1, u"bash"_s, 0.2),
                madeUpProcess(801, 800, u"pytest"_s, 70, u"python3 -m pytest"_s, u"kiln"_s),
                madeUpProcess(802, 800, u"python3"_s, 5, u"python3 worker.py"_s),
                madeUpProcess(900, 1, u"mystery"_s, 0.5),
                madeUpProcess(901, 900, u"gnome-system-monitor"_s, 30)};
    }
    void SetUp() override
    {
        ingestTwice(processes());
        openPage();
        endButton = find<PanelButton>(u"endTaskButton"_s);
    }
    void select(pid_t target, std::optional<pid_t> process = std::nullopt)
    {
        const DashboardTask *task = taskWithTarget(target);
        store->selectTask(task->id);
        if (process)
            store->selectProcess(task->processTree.front().nodeWithPID(*process)->id);
    }
    QString label(const char *identifier) const
    {
        return find<TextLabel>(QLatin1String(identifier))->fullText();
    }
    ProcessTerminationTarget targetOf(pid_t pid) const
    {
        const ProcessMetric process = processes().at(pid == 801 ? 1 : 2);
        return {process.identity, process.userID, process.name};
    }
    // Press the button and confirm in the frame's dialog, as the user does.
    void pressAndConfirm()
    {
        QTest::mouseClick(endButton, Qt::LeftButton);
        ASSERT_TRUE(m_window->confirmationDialog()->isVisible());
        QTest::mouseClick(m_window->confirmationDialog()->confirmButton(), Qt::LeftButton);
    }

    PanelButton *endButton = nullptr;
};

TEST_F(OperationPanel, EnabledRuleAndTitlesBeforeAnyAttemptAndNamesShownWhole)
{
    const struct {
        pid_t target;
        std::optional<pid_t> process;
        bool enabled;
        QString title;
    } cases[] = {
        {801, std::nullopt, true, u"结束主要进程"_s},
        {801, 802, true, u"结束选中进程"_s},
        {901, std::nullopt, false, u"结束主要进程"_s}, // refused: the impact says why
        {901, 900, true, u"结束选中进程"_s},
    };
    for (const auto &test : cases) {
        select(test.target, test.process);
        const auto process = store->selectedProcess();
        EXPECT_EQ(endButton->isEnabled(), test.enabled) << test.target;
        expectHeard(m_window.get(),
                    {{u"endTaskButton"_s,
                      u"%1 %2，PID %3"_s.arg(test.title, process->name).arg(process->pid),
                      test.enabled ? u"可结束"_s : u"不可结束"_s}});
        if (!test.enabled) {
            EXPECT_EQ(label("terminationImpact"), store->selectedTask()->terminationImpact);
        }
        // The panel's name line has room for the whole name: none is cut
        // while the line has space to spare after the badge.
        QApplication::processEvents(); // the layout pass that comes before a paint
        int namesShown = 0;
        for (const TextLabel *name : m_window->findChildren<TextLabel *>()) {
            if (name->isVisible() && name->fullText() == process->name) {
                ++namesShown;
                EXPECT_GE(name->width(), name->fontMetrics().horizontalAdvance(process->name));
            }
        }
        EXPECT_GE(namesShown, 1);
    }
    QTest::mouseClick(find(u"openTerminalButton"_s), Qt::LeftButton);
    EXPECT_EQ(terminalsOpened, 1);
    EXPECT_FALSE(store->pendingTermination().has_value());
}

TEST_F(OperationPanel, UnresponsiveOffersTheForcedEndBehindTheDialog)
{
    select(801, 802);
    reader->setReading(802, targetOf(802)); // keeps running through every signal
    pressAndConfirm();
    ASSERT_TRUE(waitForOutcome());
    EXPECT_EQ(endButton->text(), u"强制结束"_s);
    EXPECT_TRUE(endButton->isEnabled());
    auto *message = find<TextLabel>(u"terminationMessage"_s);
    EXPECT_EQ(message->fullText(), u"python3：进程仍在运行，可尝试强制结束。"_s);
    EXPECT_EQ(message->palette().color(QPalette::WindowText),
              QColor::fromRgb(DashboardPalette::danger));
    // Another process of the tree is not blocked.
    select(801);
    EXPECT_TRUE(endButton->isEnabled());

    select(801, 802);
    pressAndConfirm();
    ASSERT_TRUE(waitForOutcome());
    EXPECT_FALSE(endButton->isEnabled());
}

TEST_F(OperationPanel, AnExitStartsTheCountdownThatMovesWithSamples)
{
    select(801);
    reader->queueReadings(801, {targetOf(801), std::nullopt}); // checked once, then gone
    pressAndConfirm();
    EXPECT_FALSE(endButton->isEnabled());
    ASSERT_TRUE(waitForOutcome());
    EXPECT_FALSE(endButton->isEnabled());
    EXPECT_EQ(label("recoveryTarget"), u"pytest · PID 801 · 最近一次操作"_s);

    QList<ProcessMetric> after = processes();
    after.removeAt(1); // pytest is gone
    for (int i = 0; i < 30; ++i)
        ingest(after, 20.0);
    EXPECT_EQ(label("recoveryStatus"), u"正在验证结束该进程后的整机变化 · 剩余约 1 分 0 秒"_s);
    EXPECT_TRUE(showsText(m_window.get(), u"40% → 20%"_s));
}

} // namespace
