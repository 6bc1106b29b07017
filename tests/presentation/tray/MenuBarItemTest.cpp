// The menu bar item over a real store: it follows each tick, shows or hides
// the tray icon as the desktop's tray comes and goes, offers the panel's two
// actions, and without a tray the dashboard's brand block opens the panel.

#include "presentation/app/KilnWardenApplication.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/DashboardSidebar.h"
#include "presentation/shell/DashboardWindow.h"
#include "presentation/tray/KilnWardenMenuBarItem.h"
#include "presentation/tray/KilnWardenMenuBarLabel.h"
#include "presentation/tray/KilnWardenMenuBarPanel.h"
#include "presentation/tray/MenuBarPanelPopup.h"
#include "support/StoreTesting.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

SystemMetricSample hotSample(double at)
{
    SystemMetricSample sample = makeSample(at);
    sample.thermalState = SystemThermalState::critical;
    sample.temperatureCelsius = SensorReading<double>::available(93.0, QStringLiteral("test"));
    return sample;
}

TEST(MenuBarItem, followsTheStoreEachTickAndTheDesktopTrayEveryTenth)
{
    // Monitoring, at an interval that leaves every sample to the test.
    auto store = makeStoreForTesting(nullptr, 3600.0);
    store->startMonitoring();
    bool trayPresent = false;
    int questions = 0;
    KilnWardenMenuBarItem item(*store, [&] {
        ++questions;
        return trayPresent;
    });
    QSignalSpy changes(&item, &KilnWardenMenuBarItem::trayAvailabilityChanged);
    EXPECT_EQ(item.presentation().state, MenuBarPresentationState::collecting);
    EXPECT_EQ(item.trayIcon()->toolTip(), QStringLiteral("KilnWarden"));
    EXPECT_FALSE(item.isTrayAvailable());
    EXPECT_FALSE(item.trayIcon()->isVisible());

    store->ingest(hotSample(1000.0));
    EXPECT_EQ(item.presentation(), store->menuBarPresentation());
    EXPECT_EQ(item.trayIcon()->toolTip(), QStringLiteral("KilnWarden 建议处理 · 93°"));
    EXPECT_EQ(item.popup()->panel()->presentation(), store->menuBarPresentation());

    SystemMetricSample calm = makeSample(1002.0);
    calm.temperatureCelsius = SensorReading<double>::available(51.0, QStringLiteral("test"));
    store->ingest(calm);
    EXPECT_EQ(item.trayIcon()->toolTip(), QStringLiteral("正常 · 51°"));
    EXPECT_EQ(item.popup()->panel()->presentation().state, MenuBarPresentationState::normal);

    // The tray appears, goes away and comes back while the program runs; the
    // item notices within ten ticks, asking the desktop once in them.
    double at = 1002.0;
    for (const bool present : {true, true, false, true}) {
        trayPresent = present;
        const int asked = questions;
        for (int tick = 0; tick < KilnWardenMenuBarItem::trayCheckTicks; ++tick)
            store->ingest(makeSample(at += 2.0));
        EXPECT_EQ(questions, asked + 1);
        EXPECT_EQ(item.isTrayAvailable(), present);
        EXPECT_EQ(item.trayIcon()->isVisible(), present);
    }
    QList<bool> reported; // only the changes, not the repeated presence
    for (const QList<QVariant> &change : changes)
        reported << change.first().toBool();
    EXPECT_EQ(reported, (QList<bool>{true, false, true}));

    // Paused, the item says so and shows no figure of the last sample.
    store->ingest(hotSample(at += 2.0));
    store->stopMonitoring();
    EXPECT_EQ(item.trayIcon()->toolTip(), QStringLiteral("已暂停"));
    const MenuBarPresentation &paused = item.popup()->panel()->presentation();
    EXPECT_EQ(paused.headline, QStringLiteral("已暂停"));
    EXPECT_EQ(paused.primaryTask, std::nullopt);
    for (const MenuBarPresentationMetric &metric : {paused.cpu, paused.temperature, paused.fan})
        EXPECT_EQ(metric.value, QStringLiteral("—")) << metric.id.toStdString();
    store->startMonitoring();
    store->ingest(hotSample(at += 2.0));
    EXPECT_EQ(item.trayIcon()->toolTip(), QStringLiteral("KilnWarden 建议处理 · 93°"));
    store->stopMonitoring();
}

// The tray's menu and the panel's buttons ask the same two things; a
// button also closes the panel.
TEST(MenuBarItem, menuAndPanelOfferOpenAndQuit)
{
    auto store = makeStoreForTesting();
    KilnWardenMenuBarItem item(*store, [] { return true; });
    QSignalSpy open(&item, &KilnWardenMenuBarItem::openDashboardRequested);
    QSignalSpy quit(&item, &KilnWardenMenuBarItem::quitRequested);
    const QList<QAction *> actions = item.contextMenu()->actions();
    ASSERT_EQ(actions.size(), 2);
    EXPECT_EQ(item.trayIcon()->contextMenu(), item.contextMenu());
    EXPECT_EQ(actions[0]->text(), QStringLiteral("打开仪表盘"));
    EXPECT_EQ(actions[1]->text(), QStringLiteral("退出"));
    actions[0]->trigger();
    actions[1]->trigger();
    for (const char *button : {"menuBar-open-dashboard", "menuBar-quit"}) {
        SCOPED_TRACE(button);
        item.openPanelAt(QRect(100, 0, 24, 24));
        ASSERT_TRUE(item.popup()->isVisible());
        QTest::mouseClick(item.popup()->findChild<QPushButton *>(QString::fromLatin1(button)),
                          Qt::LeftButton);
        EXPECT_FALSE(item.popup()->isVisible());
    }
    // Return opens the dashboard wherever focus is: the default button.
    item.openPanelAt(QRect(100, 0, 24, 24));
    KilnWardenMenuBarPanel *panel = item.popup()->panel();
    auto *openButton = panel->findChild<QPushButton *>(QStringLiteral("menuBar-open-dashboard"));
    EXPECT_TRUE(openButton->isDefault());
    QTest::keyClick(panel, Qt::Key_Return);
    EXPECT_EQ(open.count(), 3);
    EXPECT_EQ(quit.count(), 2);
}

TEST(MenuBarItem, withoutATrayTheBrandBlockOpensThePanel)
{
    KilnWardenApplication application(
        makeStoreForTesting(), {QStringLiteral("kilnwarden"), QStringLiteral("--dashboard-size"),
                                QStringLiteral("1200"), QStringLiteral("800")});
    application.launch();
    QApplication::processEvents();
    KilnWardenMenuBarItem *item = application.menuBarItem();
    ASSERT_NE(item, nullptr);
    // The offscreen platform has no tray, like a desktop without one.
    ASSERT_FALSE(item->isTrayAvailable());
    DashboardWindow *window = application.dashboardWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(item->popup()->isVisible());

    // A click while the window is hidden cannot reach the brand block; with
    // the window back, the brand block opens the panel under itself.
    window->hide();
    application.showDashboardWindow();
    QWidget *brand = window->shell()->sidebar()->brandBlock();
    // It is a button a keyboard reaches, that says what it does.
    EXPECT_EQ(brand->focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(brand->toolTip(), QStringLiteral("打开 KilnWarden 状态面板"));
    EXPECT_EQ(brand->accessibleName(), QStringLiteral("KilnWarden"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        brand->setFocus(Qt::TabFocusReason);
        QTest::keyClick(brand, key);
        EXPECT_TRUE(item->popup()->isVisible()) << key;
        item->closePanel();
    }
    QTest::mouseClick(brand, Qt::LeftButton);
    ASSERT_TRUE(item->popup()->isVisible());
    EXPECT_EQ(item->popup()->panel()->presentation(), application.store().menuBarPresentation());

    // "打开仪表盘" closes the panel and brings the window to the front.
    window->hide();
    QTest::mouseClick(
        item->popup()->findChild<QPushButton *>(QStringLiteral("menuBar-open-dashboard")),
        Qt::LeftButton);
    EXPECT_FALSE(item->popup()->isVisible());
    EXPECT_TRUE(window->isVisible());
    application.terminate();
}

// Closing the window hides it behind the tray icon; without one it quits, as
// nothing would lead back to a hidden window. Ctrl+W closes, Ctrl+Q quits.
TEST(MenuBarItem, closingTheWindowQuitsOnlyWithoutATray)
{
    for (const bool tray : {true, false}) {
        SCOPED_TRACE(tray);
        const int quitsOnClose = tray ? 0 : 1;
        KilnWardenApplication application(makeStoreForTesting(), {QStringLiteral("kilnwarden")});
        application.setTrayAvailability([tray] { return tray; });
        QSignalSpy quit(&application, &KilnWardenApplication::quitRequested);
        application.launch();
        DashboardWindow *window = application.dashboardWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        EXPECT_EQ(window->shell()->sidebar()->brandBlock()->focusPolicy(),
                  tray ? Qt::NoFocus : Qt::StrongFocus);
        QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
        EXPECT_FALSE(window->isVisible());
        EXPECT_EQ(quit.count(), quitsOnClose);
        EXPECT_TRUE(application.store().isMonitoring());

        application.showDashboardWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        QTest::keyClick(window, Qt::Key_Q, Qt::ControlModifier);
        EXPECT_EQ(quit.count(), quitsOnClose + 1);
        application.terminate();
    }
}

} // namespace
