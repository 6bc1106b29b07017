#include "DiagnosisTesting.h"

#include "presentation/diagnosis/OperationTexts.h"
#include "presentation/diagnosis/ProcessOperationPanel.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/shell/TerminationConfirmationDialog.h"

#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using Phase = DashboardTerminationPhase;
using Signal = ProcessTerminationSignal;
using State = DashboardRecoveryState;

DashboardTerminationStatus statusOf(Phase phase, Signal mode = Signal::graceful)
{
    return {QStringLiteral("7-1.0"), QStringLiteral("worker"), 7, mode, phase};
}

TEST(EndButtonTitle, FollowsTheSelectionsStatus)
{
    DashboardProcessNode target;
    target.isTarget = true;
    DashboardProcessNode child;
    const struct {
        const DashboardProcessNode *process;
        OptionalTerminationStatus status;
        QString title;
    } cases[] = {
        {nullptr, std::nullopt, QStringLiteral("结束选中进程")},
        {nullptr, statusOf(Phase::exited), QStringLiteral("结束选中进程")},
        {&child, std::nullopt, QStringLiteral("结束选中进程")},
        {&target, std::nullopt, QStringLiteral("结束主要进程")},
        {&target, statusOf(Phase::verifying), QStringLiteral("正在结束…")},
        {&child, statusOf(Phase::verifying, Signal::forced), QStringLiteral("正在强制结束…")},
        {&target, statusOf(Phase::exited), QStringLiteral("进程已结束")},
        {&child, statusOf(Phase::unresponsive), QStringLiteral("强制结束")},
        {&child, statusOf(Phase::failed), QStringLiteral("重试结束")},
        {&target, statusOf(Phase::failed, Signal::forced), QStringLiteral("强制结束失败")},
    };
    for (const auto &test : cases)
        EXPECT_EQ(endButtonTitle(test.process, test.status), test.title);
}

TEST(TerminationImpact, ItsFourCases)
{
    DashboardTask task;
    task.terminationImpact = QStringLiteral("会中断当前测试。");
    DashboardProcessNode target;
    target.isTarget = true;
    DashboardProcessNode parent;
    parent.children = {DashboardProcessNode{}, DashboardProcessNode{}};
    DashboardProcessNode leaf;
    const QString refused = QStringLiteral("安全预检未通过，不能从 KilnWarden 结束这个进程。");
    const struct {
        const DashboardTask *task;
        const DashboardProcessNode *process;
        bool canTerminate;
        OptionalTerminationStatus status;
        QString text;
    } cases[] = {
        {nullptr, &leaf, true, std::nullopt, QStringLiteral("选择进程后显示结束操作的影响范围。")},
        {&task, nullptr, true, std::nullopt, QStringLiteral("选择进程后显示结束操作的影响范围。")},
        {&task, &target, true, std::nullopt, task.terminationImpact},
        {&task, &parent, true, std::nullopt,
         QStringLiteral(
             "会结束这个进程，并可能中断它的 2 个直接子进程；所属应用也可能自动重新启动它。")},
        {&task, &leaf, true, statusOf(Phase::failed),
         QStringLiteral("会结束这个进程；未保存的工作可能丢失，所属应用也可能自动重新启动它。")},
        {&task, &leaf, true, statusOf(Phase::unresponsive),
         QStringLiteral("进程没有响应正常结束请求。强制结束会立即中断进程，未保存的数据可能丢失，"
                        "所属应用也可能自动重新启动它。")},
        {&task, &target, false, std::nullopt, task.terminationImpact},
        {&task, &leaf, false, std::nullopt, refused},
    };
    for (const auto &test : cases) {
        EXPECT_EQ(terminationImpactText(test.task, test.process, test.canTerminate, test.status),
                  test.text);
    }
}

TEST(VerificationStatus, PhaseOutranksRecoveryStateAndTheCountdownFollowsSamples)
{
    DashboardRecoveryContext context;
    context.processName = QStringLiteral("pytest");
    context.pid = 42;
    context.startedAt = TimePoint::fromSecondsSince1970(1000);
    const auto at = [](double seconds) {
        SystemMetricSample sample;
        sample.timestamp = TimePoint::fromSecondsSince1970(seconds);
        return std::optional<SystemMetricSample>(sample);
    };
    const std::optional<SystemMetricSample> none;
    const struct {
        OptionalTerminationStatus status;
        State state;
        std::optional<SystemMetricSample> latest;
        QString text;
    } cases[] = {
        {statusOf(Phase::verifying), State::recovered, none,
         QStringLiteral("正在确认原进程是否退出，通常不超过 2 秒。")},
        {statusOf(Phase::unresponsive), State::terminationFailed, none,
         QStringLiteral("进程仍在运行；如需继续，可再次确认强制结束。")},
        {statusOf(Phase::failed, Signal::forced), State::terminationFailed, none,
         QStringLiteral("强制结束未生效，建议打开系统监视器进一步检查。")},
        {statusOf(Phase::failed), State::terminationFailed, none,
         QStringLiteral("本次操作未成功结束，未进入两分钟验证。")},
        {std::nullopt, State::idle, none,
         QStringLiteral("结束进程并确认退出后，将验证两分钟整机变化。")},
        {statusOf(Phase::exited), State::recovering, none,
         QStringLiteral("正在验证结束该进程后的整机变化 · 剩余约 2 分 0 秒")},
        {std::nullopt, State::recovering, at(1000.9),
         QStringLiteral("正在验证结束该进程后的整机变化 · 剩余约 1 分 59 秒")},
        {std::nullopt, State::recovering, at(1061),
         QStringLiteral("正在验证结束该进程后的整机变化 · 剩余约 59 秒")},
        {std::nullopt, State::recovering, at(1500),
         QStringLiteral("正在验证结束该进程后的整机变化 · 剩余约 0 秒")},
        {std::nullopt, State::recovered, at(1100), QStringLiteral("负载或温度已下降，验证通过。")},
        {std::nullopt, State::noImprovement, none,
         QStringLiteral("两分钟内未观察到达到阈值的整机改善。")},
        {std::nullopt, State::insufficientData, none,
         QStringLiteral("缺少可比较的系统样本，无法完成验证。")},
        {std::nullopt, State::terminationFailed, none,
         QStringLiteral("本次操作未成功结束，未进入两分钟验证。")},
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
              QStringLiteral("正在对比操作前后的 CPU、温度和热状态。"));
    EXPECT_EQ(verificationTargetLine(statusOf(Phase::unresponsive), &context),
              QStringLiteral("worker · PID 7"));
    EXPECT_EQ(verificationTargetLine(std::nullopt, &context),
              QStringLiteral("pytest · PID 42 · 最近一次操作"));
    EXPECT_EQ(verificationTargetLine(std::nullopt, nullptr), QString());
}

// The panel on the real page over a store driven through the termination
// workflow with a made-up controller: a test run (pytest with two workers)
// and an unknown tool whose target may not be ended.
class OperationPanel : public DiagnosisStoreTest {
protected:
    // A test run (bash, then pytest doing the work beside a python3 worker)
    // and an unknown tool whose busy leaf may not be ended.
    QList<ProcessMetric> processes() const
    {
        return {madeUpProcess(800, 1, QStringLiteral("bash"), 0.2),
                madeUpProcess(801, 800, QStringLiteral("pytest"), 70,
                              QStringLiteral("python3 -m pytest"), QStringLiteral("kiln")),
                madeUpProcess(802, 800, QStringLiteral("python3"), 5,
                              QStringLiteral("python3 worker.py")),
                madeUpProcess(900, 1, QStringLiteral("mystery"), 0.5),
                madeUpProcess(901, 900, QStringLiteral("mystery-worker"), 30)};
    }
    void SetUp() override
    {
        ingestTwice(processes());
        page = openPage();
        endButton = find<PanelButton>(QStringLiteral("endTaskButton"));
        ASSERT_NE(endButton, nullptr);
    }
    QString value() const { return accessibleText(endButton, QAccessible::Value); }
    void select(pid_t target, std::optional<pid_t> process = std::nullopt)
    {
        const DashboardTask *task = taskWithTarget(target);
        ASSERT_NE(task, nullptr);
        store->selectTask(task->id);
        if (process)
            store->selectProcess(task->processTree.front().nodeWithPID(*process)->id);
    }
    QString impactText() const
    {
        return find<TextLabel>(QStringLiteral("terminationImpact"))->fullText();
    }
    QString statusText() const
    {
        return find<TextLabel>(QStringLiteral("recoveryStatus"))->fullText();
    }
    ProcessTerminationTarget targetOf(pid_t pid) const
    {
        for (const ProcessMetric &process : processes()) {
            if (process.identity.pid == pid)
                return {process.identity, process.userID, process.name};
        }
        return {};
    }
    // Press the button and confirm in the frame's dialog, as the user does.
    void pressAndConfirm()
    {
        QTest::mouseClick(endButton, Qt::LeftButton);
        ASSERT_TRUE(store->pendingTermination().has_value());
        QTest::mouseClick(m_window->confirmationDialog()->confirmButton(), Qt::LeftButton);
        ASSERT_TRUE(waitForOutcome());
        settleEvents(10);
    }

    LiveDiagnosisPage *page = nullptr;
    PanelButton *endButton = nullptr;
};

TEST_F(OperationPanel, EnabledRuleTitlesAndImpactBeforeAnyAttempt)
{
    const struct {
        pid_t target;
        std::optional<pid_t> process;
        bool enabled;
        QString title;
    } cases[] = {
        {801, std::nullopt, true, QStringLiteral("结束主要进程")},
        {801, 802, true, QStringLiteral("结束选中进程")},
        {901, std::nullopt, false, QStringLiteral("结束主要进程")}, // refused: the impact says why
        {901, 900, true, QStringLiteral("结束选中进程")},
    };
    for (const auto &test : cases) {
        select(test.target, test.process);
        EXPECT_EQ(endButton->isEnabled(), test.enabled) << test.target;
        EXPECT_EQ(value(), test.enabled ? QStringLiteral("可结束") : QStringLiteral("不可结束"));
        EXPECT_EQ(endButton->text(), test.title);
        const auto process = store->selectedProcess();
        EXPECT_EQ(accessibleText(endButton, QAccessible::Name),
                  QStringLiteral("%1 %2，PID %3").arg(test.title, process->name).arg(process->pid));
        if (!test.enabled) {
            EXPECT_EQ(impactText(), store->selectedTask()->terminationImpact);
        }
    }
    EXPECT_EQ(statusText(), QStringLiteral("结束进程并确认退出后，将验证两分钟整机变化。"));
    EXPECT_EQ(find<TextLabel>(QStringLiteral("recoveryTarget"))->fullText(), QString());
}

TEST_F(OperationPanel, UnresponsiveOffersTheForcedEndThenNothingFurther)
{
    select(801, 802);
    reader->setReading(802, targetOf(802)); // keeps running through every signal
    pressAndConfirm();
    EXPECT_EQ(endButton->text(), QStringLiteral("强制结束"));
    EXPECT_TRUE(endButton->isEnabled());
    EXPECT_TRUE(impactText().startsWith(QStringLiteral("进程没有响应正常结束请求。")));
    EXPECT_EQ(statusText(), QStringLiteral("进程仍在运行；如需继续，可再次确认强制结束。"));
    EXPECT_EQ(find<TextLabel>(QStringLiteral("recoveryTarget"))->fullText(),
              QStringLiteral("python3 · PID 802"));
    auto *message = find<TextLabel>(QStringLiteral("terminationMessage"));
    EXPECT_EQ(message->fullText(), QStringLiteral("python3：进程仍在运行，可尝试强制结束。"));
    EXPECT_EQ(message->palette().color(QPalette::WindowText),
              QColor::fromRgb(DashboardPalette::danger));
    EXPECT_EQ(m_window->confirmationDialog()->isVisible(), false);

    // Another process of the tree is not blocked and gets its own title.
    select(801);
    EXPECT_EQ(endButton->text(), QStringLiteral("结束主要进程"));
    EXPECT_TRUE(endButton->isEnabled());

    select(801, 802);
    QTest::mouseClick(endButton, Qt::LeftButton);
    EXPECT_EQ(store->pendingTermination()->mode, ProcessTerminationSignal::forced);
    QTest::mouseClick(m_window->confirmationDialog()->confirmButton(), Qt::LeftButton);
    ASSERT_TRUE(waitForOutcome());
    EXPECT_EQ(endButton->text(), QStringLiteral("强制结束失败"));
    EXPECT_FALSE(endButton->isEnabled());
    EXPECT_EQ(statusText(), QStringLiteral("强制结束未生效，建议打开系统监视器进一步检查。"));
    EXPECT_EQ(sender->sent().size(), 2u);
}

TEST_F(OperationPanel, AProcessThatChangesOrExitsBeforeTheConfirmationIsNotSignalled)
{
    const struct {
        std::optional<ProcessTerminationTarget> seen;
        QString message;
    } cases[] = {
        {std::nullopt, QStringLiteral("python3：任务已经结束，无需再次操作。")},
        {ProcessTerminationTarget{{802, TimePoint::fromSecondsSince1970(5.0), "/usr/bin/python3"},
                                  ::getuid(),
                                  QStringLiteral("python3")},
         QStringLiteral("python3：任务身份已经变化，为避免误伤未发送结束信号。")},
    };
    for (const auto &test : cases) {
        select(801, 802);
        QTest::mouseClick(endButton, Qt::LeftButton);
        ASSERT_TRUE(m_window->confirmationDialog()->isVisible());
        reader->setReading(802, test.seen); // what is at the pid by the time of the click
        QTest::mouseClick(m_window->confirmationDialog()->confirmButton(), Qt::LeftButton);
        ASSERT_TRUE(waitForOutcome());
        settleEvents(10);
        EXPECT_EQ(find<TextLabel>(QStringLiteral("terminationMessage"))->fullText(), test.message);
        EXPECT_EQ(endButton->text(), QStringLiteral("重试结束"));
        EXPECT_EQ(statusText(), QStringLiteral("本次操作未成功结束，未进入两分钟验证。"));
    }
    EXPECT_TRUE(sender->sent().empty());
}

TEST_F(OperationPanel, AnExitStartsTheCountdownThatMovesWithSamples)
{
    select(801);
    reader->queueReadings(801, {targetOf(801), std::nullopt}); // checked once, then gone
    QTest::mouseClick(endButton, Qt::LeftButton);
    QTest::mouseClick(m_window->confirmationDialog()->confirmButton(), Qt::LeftButton);
    EXPECT_EQ(endButton->text(), QStringLiteral("正在结束…"));
    EXPECT_FALSE(endButton->isEnabled());
    ASSERT_TRUE(waitForOutcome());
    EXPECT_EQ(endButton->text(), QStringLiteral("进程已结束"));
    EXPECT_FALSE(endButton->isEnabled());
    EXPECT_EQ(statusText(), QStringLiteral("正在验证结束该进程后的整机变化 · 剩余约 2 分 0 秒"));
    EXPECT_EQ(find<TextLabel>(QStringLiteral("recoveryTarget"))->fullText(),
              QStringLiteral("pytest · PID 801 · 最近一次操作"));

    QList<ProcessMetric> after = processes();
    after.removeAt(1); // pytest is gone
    ingest(after, 20.0);
    EXPECT_EQ(statusText(), QStringLiteral("正在验证结束该进程后的整机变化 · 剩余约 1 分 58 秒"));
    for (int i = 0; i < 29; ++i)
        ingest(after, 20.0);
    EXPECT_EQ(statusText(), QStringLiteral("正在验证结束该进程后的整机变化 · 剩余约 1 分 0 秒"));
    EXPECT_TRUE(showsText(m_window.get(), QStringLiteral("40% → 20%")));
}

TEST_F(OperationPanel, OpenTerminalCallsThePagesAction)
{
    QTest::mouseClick(find(QStringLiteral("openTerminalButton")), Qt::LeftButton);
    EXPECT_EQ(terminalsOpened, 1);
    EXPECT_FALSE(store->pendingTermination().has_value());
}

} // namespace
