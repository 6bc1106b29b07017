#include "DiagnosisTesting.h"

#include "presentation/diagnosis/OperationTexts.h"
#include "presentation/diagnosis/ProcessOperationPanel.h"
#include "presentation/shell/TerminationConfirmationDialog.h"
#include "support/FixtureTable.h"

#include <algorithm>
#include <string_view>

namespace {

using namespace Qt::StringLiterals;
using Phase = DashboardTerminationPhase;
using Signal = ProcessTerminationSignal;
using State = DashboardRecoveryState;

DashboardTerminationStatus statusOf(Phase phase, Signal mode = Signal::graceful)
{
    return {u"7-1.0"_s, u"worker"_s, 7, mode, phase};
}

// The status named by fields `at` (the phase; "-": none) and `at + 1` (the signal).
OptionalTerminationStatus statusIn(const FixtureRow &row, std::size_t at)
{
    constexpr std::string_view phases[] = {"verifying", "exited", "unresponsive", "failed"};
    const auto phase = std::find(std::begin(phases), std::end(phases), row.view(at));
    if (phase == std::end(phases))
        return std::nullopt;
    return statusOf(Phase(phase - std::begin(phases)),
                    row.fields[at + 1] == "forced" ? Signal::forced : Signal::graceful);
}

TEST(EndButtonTitle, FollowsTheSelectionsStatus)
{
    const DashboardProcessNode target{.isTarget = true}, child;
    for (const FixtureRow &row : fixtureTable(u"end-button-titles"_s)) {
        const DashboardProcessNode *process = row.fields[0] == "-"        ? nullptr
                                              : row.fields[0] == "target" ? &target
                                                                          : &child;
        EXPECT_EQ(endButtonTitle(process, statusIn(row, 1)), *row.text(3)) << row.where;
    }
}

TEST(TerminationImpact, ItsFourCases)
{
    DashboardTask task;
    task.terminationImpact = u"会中断当前测试。"_s;
    const DashboardProcessNode target{.isTarget = true}, parent{.children = {{}, {}}}, leaf;
    for (const FixtureRow &row : fixtureTable(u"termination-impacts"_s)) {
        const QByteArray &kind = row.fields[1];
        const DashboardProcessNode *process = kind == "target"   ? &target
                                              : kind == "parent" ? &parent
                                              : kind == "leaf"   ? &leaf
                                                                 : nullptr;
        EXPECT_EQ(terminationImpactText(row.fields[0] == "-" ? nullptr : &task, process,
                                        row.fields[2] == "1", statusIn(row, 3)),
                  *row.text(5))
            << row.where;
    }
}

TEST(VerificationStatus, PhaseOutranksRecoveryStateAndTheCountdownFollowsSamples)
{
    const DashboardRecoveryContext context{
        .processName = u"pytest"_s, .pid = 42, .startedAt = TimePoint::fromSecondsSince1970(1000)};
    const std::optional<DashboardRecoveryContext> stored = context;
    constexpr std::string_view states[] = {
        "idle",          "recovering",       "recovered",
        "noImprovement", "insufficientData", "terminationFailed"};
    for (const FixtureRow &row : fixtureTable(u"verification-status-texts"_s)) {
        const OptionalTerminationStatus status = statusIn(row, 0);
        const auto state = std::find(std::begin(states), std::end(states), row.view(2));
        ASSERT_NE(state, std::end(states)) << row.where;
        std::optional<SystemMetricSample> latest;
        if (row.fields[3] != "-") {
            latest.emplace();
            latest->timestamp = TimePoint::fromSecondsSince1970(row.fields[3].toDouble());
        }
        EXPECT_EQ(verificationStatusText(status, State(state - std::begin(states)),
                                         effectiveRecoveryContext(status, stored), latest),
                  *row.text(4))
            << row.where;
    }
    // Recovering with the context outranked by a running status.
    EXPECT_EQ(effectiveRecoveryContext(statusOf(Phase::verifying), stored), nullptr);
    EXPECT_EQ(verificationStatusText(std::nullopt, State::recovering, nullptr, std::nullopt),
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
    EXPECT_EQ(label("terminationMessage"), u"python3：进程仍在运行，可尝试强制结束。"_s);
    pressAndConfirm();
    ASSERT_TRUE(waitForOutcome());
    EXPECT_FALSE(endButton->isEnabled());
}

TEST_F(OperationPanel, AnExitStartsTheCountdownThatMovesWithSamples)
{
    select(801);
    reader->queueReadings(801, {targetOf(801), std::nullopt}); // checked once, then gone
    pressAndConfirm();
    ASSERT_TRUE(waitForOutcome());

    QList<ProcessMetric> after = processes();
    after.removeAt(1); // pytest is gone
    for (int i = 0; i < 30; ++i)
        ingest(after, 20.0);
    EXPECT_EQ(label("recoveryStatus"), u"正在验证结束该进程后的整机变化 · 剩余约 1 分 0 秒"_s);
    EXPECT_TRUE(showsText(m_window.get(), u"40% → 20%"_s));
}

} // namespace
