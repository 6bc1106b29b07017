// The frame as a user meets it: sections, the header's status line and
// monitoring switch, and the question before a process is ended.

#include "presentation/shell/DashboardShell.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/shell/DashboardPageHeader.h"
#include "presentation/shell/DashboardSidebar.h"
#include "presentation/shell/DashboardStatusLine.h"
#include "presentation/shell/DashboardWindow.h"
#include "presentation/shell/TerminationConfirmationDialog.h"
#include "support/StoreTesting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

template <typename T = QWidget> T *find(QWidget *root, const QString &identifier)
{
    T *found = root->findChild<T *>(identifier);
    EXPECT_NE(found, nullptr) << identifier.toStdString();
    return found;
}

void settle()
{
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

// Two samples of a build (so rates and ranking have run) with one child.
void ingestBuild(DashboardStore &store, double cpu = 80.0)
{
    for (int tick = 0; tick < 2; ++tick) {
        SystemMetricSample sample = makeSample(1000.0 + 2 * tick);
        sample.processMetrics = {makeProcess(500, 1, QStringLiteral("ninja"), cpu),
                                 makeProcess(501, 500, QStringLiteral("clang"), cpu / 2)};
        store.ingest(sample);
    }
}

TEST(DashboardShell, SidebarSwitchesPagesAndKeepsSettingsApart)
{
    auto store = makeStoreForTesting();
    DashboardWindow window(*store, DashboardSection::overview, [] {});
    window.resize(1440, 900);
    window.show();
    settle();
    DashboardShell *shell = window.shell();
    EXPECT_EQ(shell->currentPage()->objectName(), QStringLiteral("page-overview"));

    const struct {
        const char *row;
        const char *page;
        DashboardSection section;
    } rows[] = {
        {"sidebar-live-diagnosis", "page-live-diagnosis", DashboardSection::liveDiagnosis},
        {"sidebar-hardware-monitor", "page-hardware-monitor", DashboardSection::hardwareMonitor},
        {"sidebar-event-history", "page-event-history", DashboardSection::eventHistory},
        {"settingsButton", "page-settings", DashboardSection::settings},
        {"sidebar-overview", "page-overview", DashboardSection::overview},
    };
    for (const auto &row : rows) {
        auto *button = find<QAbstractButton>(&window, QString::fromLatin1(row.row));
        QTest::mouseClick(button, Qt::LeftButton);
        settle();
        EXPECT_EQ(shell->selectedSection(), row.section);
        EXPECT_EQ(shell->currentPage()->objectName(), QString::fromLatin1(row.page));
        EXPECT_EQ(accessibleText(button, QAccessible::Value), QStringLiteral("已选择"));
    }

    // Pressing the section already shown keeps its page: nothing is rebuilt.
    DashboardPage *page = shell->currentPage();
    QTest::mouseClick(find<QAbstractButton>(&window, QStringLiteral("sidebar-overview")),
                      Qt::LeftButton);
    settle();
    EXPECT_EQ(shell->currentPage(), page);

    // Settings stays at the bottom, below the four sections.
    auto *settings = find<QWidget>(&window, QStringLiteral("settingsButton"));
    auto *history = find<QWidget>(&window, QStringLiteral("sidebar-event-history"));
    EXPECT_GT(settings->mapTo(&window, QPoint()).y(), history->mapTo(&window, QPoint()).y() + 200);
}

TEST(DashboardShell, NarrowWindowShowsSymbolsOnly)
{
    auto store = makeStoreForTesting();
    DashboardWindow window(*store, DashboardSection::overview, [] {});
    window.resize(1000, 700);
    window.show();
    settle();
    EXPECT_EQ(window.shell()->sidebar()->width(), 76);
    EXPECT_EQ(window.shell()->header()->height(), 100);
    auto *row = find<QWidget>(&window, QStringLiteral("sidebar-hardware-monitor"));
    EXPECT_EQ(row->toolTip(), QStringLiteral("硬件监控"));
    // No text of the sidebar is visible, in any row or the brand block.
    for (TextLabel *label : window.shell()->sidebar()->findChildren<TextLabel *>())
        EXPECT_FALSE(label->isVisible()) << label->fullText().toStdString();
    EXPECT_TRUE(find<QWidget>(&window, QStringLiteral("settingsButton"))->isVisible());

    window.resize(1440, 900);
    settle();
    EXPECT_EQ(window.shell()->sidebar()->width(), 240);
    EXPECT_EQ(window.shell()->header()->height(), 116);
}

TEST(DashboardShell, StatusLineBySection)
{
    auto store = makeStoreForTesting();
    EXPECT_EQ(dashboardStatusLine(DashboardSection::overview, *store),
              QStringLiteral("最新采样：等待首次采样 · 设备整体状态正常"));
    EXPECT_EQ(dashboardStatusLine(DashboardSection::hardwareMonitor, *store),
              QStringLiteral("来自 Linux hwmon 传感器 · 采样间隔 2 秒 · 本机处理"));
    EXPECT_EQ(dashboardStatusLine(DashboardSection::eventHistory, *store),
              QStringLiteral("共记录 0 个事件 · 数据仅保存在本次会话"));
    EXPECT_EQ(dashboardStatusLine(DashboardSection::settings, *store),
              QStringLiteral("配置与诊断数据仅在本机处理"));

    SystemMetricSample sample = makeSample(1000.0);
    sample.temperatureCelsius =
        SensorReading<double>::available(61.0, QStringLiteral("Linux hwmon CPU sensors"));
    store->ingest(sample);
    const QString time = numericDateTimeText(sample.timestamp);
    EXPECT_FALSE(time.isEmpty());
    EXPECT_EQ(
        dashboardStatusLine(DashboardSection::liveDiagnosis, *store),
        QStringLiteral("最新采样：%1 · 定位当前用户进程，并解释可能影响温度的持续负载").arg(time));
    EXPECT_EQ(dashboardStatusLine(DashboardSection::hardwareMonitor, *store),
              QStringLiteral("来自 Linux hwmon CPU sensors · 采样间隔 2 秒 · 本机处理"));

    ingestBuild(*store);
    ASSERT_EQ(store->liveTasks().size(), 1u);
    EXPECT_TRUE(dashboardStatusLine(DashboardSection::overview, *store)
                    .endsWith(QStringLiteral(" · 1 个进程需要关注")));
}

class ConfirmationDialogTest : public testing::Test {
protected:
    void SetUp() override
    {
        store = makeStoreForTesting();
        ingestBuild(*store);
        window = std::make_unique<DashboardWindow>(*store, DashboardSection::overview, [] {});
        window->resize(1200, 800);
        window->show();
        settle();
        const DashboardTask &task = store->allTasks().front();
        store->requestTermination(task, task.processTree.front());
        settle();
        dialog = window->confirmationDialog();
    }

    std::unique_ptr<DashboardStore> store;
    std::unique_ptr<DashboardWindow> window;
    TerminationConfirmationDialog *dialog = nullptr;
};

TEST_F(ConfirmationDialogTest, AsksTheStoresQuestionAndEveryDismissalClearsTheRequest)
{
    ASSERT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("结束 ninja（PID 500）？"));
    EXPECT_EQ(dialog->confirmButton()->text(), QStringLiteral("结束进程"));
    EXPECT_EQ(dialog->cancelButton()->objectName(), QStringLiteral("cancelTerminationButton"));
    EXPECT_EQ(dialog->accessibleDescription(), store->pendingTermination()->confirmationMessage());

    QTest::mouseClick(dialog->cancelButton(), Qt::LeftButton);
    EXPECT_FALSE(store->pendingTermination());
    EXPECT_FALSE(store->pendingTerminationTarget());
    EXPECT_FALSE(dialog->isVisible());

    // Escape, as any other way of closing the dialog.
    const DashboardTask &task = store->allTasks().front();
    store->requestTermination(task, task.processTree.front());
    settle();
    ASSERT_TRUE(dialog->isVisible());
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_FALSE(store->pendingTermination());
    EXPECT_FALSE(store->pendingTerminationTarget());
}

} // namespace
