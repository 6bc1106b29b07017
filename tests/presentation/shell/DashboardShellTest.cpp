// The frame as a user meets it: sections, the header's status line and
// monitoring switch, and the question before a process is ended.

#include "presentation/shell/DashboardShell.h"
#include "dashboard/DashboardTexts.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/RefreshWhileShown.h"
#include "presentation/shell/DashboardPageHeader.h"
#include "presentation/shell/DashboardSidebar.h"
#include "presentation/shell/DashboardStatusLine.h"
#include "presentation/shell/DashboardWindow.h"
#include "presentation/shell/TerminationConfirmationDialog.h"
#include "snapshot/DashboardSnapshot.h"
#include "support/StoreTesting.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

// Two samples of a build (so rates and ranking have run) with one child.
void ingestBuild(DashboardStore &store, double cpu = 80.0)
{
    for (int tick = 0; tick < 2; ++tick) {
        SystemMetricSample sample = makeSample(1000.0 + 2 * tick);
        sample.processMetrics = {makeProcess(500, 1, u"ninja"_s, cpu),
                                 makeProcess(501, 500, u"clang"_s, cpu / 2)};
        store.ingest(sample);
    }
}

TEST(DashboardShell, NarrowSidebarShowsSymbolsNamedByTheirToolTips)
{
    auto store = makeStoreForTesting();
    DashboardWindow window(*store, DashboardSection::overview, [] {});
    window.resize(1000, 700);
    window.show();
    settleEvents(0);
    // Narrow: symbols only, named by their tool tips.
    EXPECT_EQ(window.findChild<QWidget *>(u"sidebar-hardware-monitor"_s)->toolTip(), u"硬件监控"_s);
    for (TextLabel *label : window.shell()->sidebar()->findChildren<TextLabel *>())
        EXPECT_FALSE(label->isVisible()) << label->fullText().toStdString();
    EXPECT_TRUE(window.findChild<QWidget *>(u"settingsButton"_s)->isVisible());
}

TEST(DashboardShell, StatusLineBySection)
{
    using enum DashboardSection;
    auto store = makeStoreForTesting();
    const auto line = [&](DashboardSection section) {
        return dashboardStatusLine(section, *store);
    };
    EXPECT_EQ(line(overview), u"最新采样：等待首次采样 · 设备整体状态正常"_s);
    SystemMetricSample sample = makeSample(1000.0);
    sample.temperatureCelsius =
        SensorReading<double>::available(61.0, u"Linux hwmon CPU sensors"_s);
    store->ingest(sample);
    const QString time = numericDateTimeText(sample.timestamp);
    EXPECT_FALSE(time.isEmpty());
    EXPECT_TRUE(line(liveDiagnosis).startsWith(u"最新采样：%1 · "_s.arg(time)));
    EXPECT_EQ(line(hardwareMonitor), u"来自 Linux hwmon CPU sensors · 采样间隔 2 秒 · 本机处理"_s);
    ingestBuild(*store);
    ASSERT_EQ(store->liveTasks().size(), 1u);
    EXPECT_TRUE(line(overview).endsWith(u" · 1 个进程需要关注"_s));
}

// Counts the layout passes asked for anywhere in the application.
class LayoutRequestCounter final : public QObject {
public:
    LayoutRequestCounter() { qApp->installEventFilter(this); }
    ~LayoutRequestCounter() override { qApp->removeEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::LayoutRequest)
            ++count;
        return QObject::eventFilter(watched, event);
    }
};

// A closed window rebuilds no page and lays nothing out while the store
// ticks; shown again, its page and header are those of the latest tick.
TEST(DashboardShell, ClosedWindowFollowsNoTickAndCatchesUpWhenShown)
{
    using enum DashboardSection;
    for (const DashboardSection section :
         {overview, liveDiagnosis, hardwareMonitor, eventHistory}) {
        SCOPED_TRACE(dashboardPageIdentifier(section).toStdString());
        auto store = makeStoreForTesting();
        DashboardWindow window(*store, section, [] {});
        window.resize(1200, 800);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        ingestBuild(*store);
        settleEvents(0);
        const QString before = window.shell()->header()->statusLineText();

        window.close();
        settleEvents(0);
        LayoutRequestCounter layouts;
        for (double at : {1010.0, 1012.0, 1014.0}) {
            SystemMetricSample sample = makeSample(at);
            sample.processMetrics = {makeProcess(500, 1, u"ninja"_s, 60.0)};
            store->ingest(sample);
            settleEvents(0);
        }
        EXPECT_EQ(layouts.count, 0);
        EXPECT_EQ(window.shell()->header()->statusLineText(), before);

        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        settleEvents(0);
        EXPECT_EQ(window.shell()->header()->statusLineText(), dashboardStatusLine(section, *store));
        for (const RefreshWhileShown *follower : window.findChildren<RefreshWhileShown *>())
            EXPECT_FALSE(follower->isPending());
    }
}

// A text that leaves the label's size, as its layout reads it, as it was (a
// clock's digits, a line cut to its box, a figure within the width the label
// keeps, a width the layout decides) lays nothing out; one that grows it does.
TEST(DashboardShell, TextChangesLayOutOnlyWhenTheLabelsSizeCanChange)
{
    // Elided, width policy, text before and after, and whether the layout is asked.
    const std::tuple<bool, QSizePolicy::Policy, const char *, const char *, bool> rows[] = {
        {false, QSizePolicy::Preferred, "10:20", "20:10", false},
        {true, QSizePolicy::Preferred, "10:20", "20:10", false},
        {true, QSizePolicy::Ignored, "1.2 MB/s", "12.5 MB/s", false},
        {false, QSizePolicy::Preferred, "10:20", "10:20 · 需要关注", true}};
    for (const auto &[elided, width, from, to, laysOut] : rows) {
        SCOPED_TRACE(to);
        QWidget box;
        auto *label =
            new TextLabel(QString::fromUtf8(from), 12, DashboardFontWeight::regular, 0xff000000);
        label->setElided(elided);
        label->setSizePolicy(width, QSizePolicy::Preferred);
        attach(&box, column(0, {}, {label, flexible()}));
        box.resize(300, 100);
        box.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
        settleEvents(0);
        LayoutRequestCounter layouts;
        label->setText(QString::fromUtf8(to));
        settleEvents(0);
        EXPECT_EQ(layouts.count > 0, laysOut) << layouts.count;
        EXPECT_EQ(label->text(), QString::fromUtf8(to));
    }
}

TEST(ConfirmationDialog, AsksTheStoresQuestionAndEveryDismissalClearsTheRequest)
{
    auto store = makeStoreForTesting();
    ingestBuild(*store);
    DashboardWindow window(*store, DashboardSection::overview, [] {});
    window.resize(1200, 800);
    window.show();
    TerminationConfirmationDialog *dialog = window.confirmationDialog();
    const DashboardTask &task = store->allTasks().front();
    for (const bool escape : {false, true}) {
        store->requestTermination(task, task.processTree.front());
        settleEvents(0);
        ASSERT_TRUE(dialog->isVisible());
        EXPECT_EQ(dialog->windowTitle(), u"结束 ninja（PID 500）？"_s);
        EXPECT_EQ(dialog->confirmButton()->text(), u"结束进程"_s);
        EXPECT_EQ(dialog->accessibleDescription(),
                  terminationConfirmationMessage(*store->pendingTermination()));
        // Escape, as any other way of closing the dialog.
        if (escape)
            QTest::keyClick(dialog, Qt::Key_Escape);
        else
            QTest::mouseClick(dialog->cancelButton(), Qt::LeftButton);
        EXPECT_FALSE(store->pendingTermination());
        EXPECT_FALSE(store->pendingTerminationTarget());
        EXPECT_FALSE(dialog->isVisible());
    }

    // Confirmed with a click, then asked again: the keyboard is back on
    // "取消", the default answer, and Space or Return cancels instead of
    // confirming a second time.
    store->requestTermination(task, task.processTree.front());
    QTest::mouseClick(dialog->confirmButton(), Qt::LeftButton);
    const auto attempted = store->terminationStatus();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        store->requestTermination(task, task.processTree.front());
        ASSERT_TRUE(dialog->isVisible());
        ASSERT_EQ(dialog->focusWidget(), dialog->cancelButton());
        EXPECT_TRUE(dialog->cancelButton()->isDefault());
        QTest::keyClick(dialog->focusWidget(), key);
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_FALSE(store->pendingTermination());
        EXPECT_EQ(store->terminationStatus(), attempted);
    }
}

} // namespace
