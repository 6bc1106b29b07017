// The settings page on a real store: the live switch and the header's button
// show one value, "恢复默认设置" only ever starts monitoring, the fixed
// switches cannot change, and the clear dialog empties the log at once.

#include "presentation/settings/SettingsPage.h"
#include "presentation/PresentationTesting.h"
#include "presentation/history/EventHistoryPage.h"
#include "presentation/history/IncidentListPanel.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/settings/ClearHistoryDialog.h"
#include "presentation/settings/SettingsSwitch.h"
#include "presentation/settings/SettingsValueChip.h"
#include "presentation/shell/DashboardShell.h"
#include "support/IncidentFeed.h"

#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class SettingsPageTest : public ::testing::Test {
protected:
    void TearDown() override { feed.store().stopMonitoring(); }

    IncidentFeed feed;
};

QString switchValue(SettingsSwitch *control)
{
    return accessibleText(control, QAccessible::Value);
}

TEST_F(SettingsPageTest, LiveSwitchFollowsTheHeaderButtonAndDrivesTheStore)
{
    DashboardStore &store = feed.store();
    store.startMonitoring();
    DashboardShell shell(store, DashboardSection::settings, [] {});
    shell.resize(1440, 900);
    shell.show();
    auto *page = qobject_cast<SettingsPage *>(shell.currentPage());
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->objectName(), QStringLiteral("page-settings"));
    SettingsSwitch *live = page->monitoringSwitch();
    auto *headerButton = shell.findChild<PressableBox *>(QStringLiteral("liveMonitoringStatus"));
    ASSERT_NE(headerButton, nullptr);
    EXPECT_EQ(accessibleText(live, QAccessible::Name), QStringLiteral("启动时自动监控"));

    struct Step {
        QAbstractButton *pressed;
        bool monitoring;
    };
    const Step steps[] = {
        {nullptr, true}, {headerButton, false}, {headerButton, true}, {live, false},
        {live, true},    {live, false},         {headerButton, true},
    };
    for (const Step &step : steps) {
        if (step.pressed)
            QTest::mouseClick(step.pressed, Qt::LeftButton);
        SCOPED_TRACE(step.pressed ? step.pressed->objectName().toStdString() : "initial");
        EXPECT_EQ(store.isMonitoring(), step.monitoring);
        EXPECT_EQ(live->isChecked(), step.monitoring);
        EXPECT_EQ(switchValue(live),
                  step.monitoring ? QStringLiteral("已开启") : QStringLiteral("已关闭"));
        EXPECT_EQ(headerButton->accessibleName(),
                  step.monitoring ? QStringLiteral("监控中") : QStringLiteral("已暂停"));
    }
}

TEST_F(SettingsPageTest, RestoreDefaultsOnlyStartsMonitoring)
{
    for (const bool monitoringBefore : {true, false}) {
        SCOPED_TRACE(monitoringBefore);
        IncidentFeed local;
        local.hot(QStringLiteral("cargo"), 90.0, 88.0);
        if (monitoringBefore)
            local.store().startMonitoring();
        SettingsPage page(local.store());
        page.show();
        const std::vector<DashboardIncident> incidents = local.store().incidents();
        QTest::mouseClick(page.restoreDefaultsButton(), Qt::LeftButton);
        EXPECT_TRUE(local.store().isMonitoring());
        EXPECT_TRUE(page.monitoringSwitch()->isChecked());
        EXPECT_EQ(local.store().incidents(), incidents) << "nothing else is restored";
        local.store().stopMonitoring();
    }
}

TEST_F(SettingsPageTest, FixedSwitchesStayAsTheyAre)
{
    SettingsPage page(feed.store());
    page.show();
    for (const auto &[identifier, on] : {std::pair{"settingsNotificationsSwitch", false},
                                         std::pair{"settingsCurrentUserSwitch", true}}) {
        SCOPED_TRACE(identifier);
        auto *fixed = page.findChild<SettingsSwitch *>(QString::fromLatin1(identifier));
        ASSERT_NE(fixed, nullptr);
        for (int press = 0; press < 2; ++press) {
            QTest::mouseClick(fixed, Qt::LeftButton);
            EXPECT_EQ(fixed->isChecked(), on);
            EXPECT_EQ(switchValue(fixed), on ? QStringLiteral("已开启") : QStringLiteral("已关闭"));
        }
    }
    EXPECT_FALSE(feed.store().isMonitoring());
}

TEST_F(SettingsPageTest, GroupsRowsAndTextsInOrder)
{
    SettingsPage page(feed.store());
    QStringList chips;
    for (SettingsValueChip *chip : page.findChildren<SettingsValueChip *>())
        chips << chip->text();
    EXPECT_EQ(chips, (QStringList{QStringLiteral("2 秒"), QStringLiteral("自动"),
                                  QStringLiteral("本次会话"), QStringLiteral("浅色")}));
    QStringList texts;
    for (TextLabel *label : page.findChildren<TextLabel *>())
        texts << label->fullText();
    for (const char *expected :
         {"偏好设置", "所有诊断记录仅保存在这台电脑。", "保持界面与桌面系统体验一致。",
          "KilnWarden 1.0 · Linux", "清除事件历史", "恢复默认设置"})
        EXPECT_TRUE(texts.contains(QString::fromUtf8(expected))) << expected;
    EXPECT_FALSE(texts.join(QString()).contains(QStringLiteral("Mac")));

    page.resize(1000, 900);
    page.show();
    EXPECT_LT(colorDistance(darkestPixel(page.clearHistoryButton()),
                            QColor::fromRgb(DashboardPalette::danger)),
              60);
    EXPECT_LT(colorDistance(darkestPixel(page.restoreDefaultsButton()),
                            QColor::fromRgb(DashboardPalette::accent)),
              60);
}

TEST_F(SettingsPageTest, ClearDialogCancelsOrEmptiesTheLogAtOnce)
{
    feed.hot(QStringLiteral("cargo"), 90.0, 88.0);
    feed.calm();
    feed.hot(QStringLiteral("node"), 60.0, std::nullopt); // still open
    const std::vector<DashboardIncident> before = feed.store().incidents();
    ASSERT_EQ(before.size(), 2u);

    SettingsPage page(feed.store());
    page.show();
    DashboardPageActions actions;
    EventHistoryPage history(feed.store(), actions);
    history.show();
    EXPECT_FALSE(page.isConfirmingClear());

    QTest::mouseClick(page.clearHistoryButton(), Qt::LeftButton);
    ASSERT_NE(page.clearHistoryDialog(), nullptr);
    EXPECT_TRUE(page.isConfirmingClear());
    QTest::mouseClick(page.clearHistoryDialog()->cancelButton(), Qt::LeftButton);
    EXPECT_FALSE(page.isConfirmingClear());
    EXPECT_EQ(feed.store().incidents(), before);

    QTest::mouseClick(page.clearHistoryButton(), Qt::LeftButton);
    EXPECT_TRUE(page.isConfirmingClear());
    QTest::mouseClick(page.clearHistoryDialog()->clearButton(), Qt::LeftButton);
    EXPECT_FALSE(page.isConfirmingClear());
    EXPECT_TRUE(feed.store().incidents().empty());
    EXPECT_TRUE(history.listPanel()->showsEmptyState());
    EXPECT_EQ(history.selectedIncidentID(), std::nullopt);

    // The open incident went with the rest; the next hot sample starts anew.
    const QUuid next = feed.hot(QStringLiteral("node"), 60.0, std::nullopt);
    ASSERT_EQ(feed.store().incidents().size(), 1u);
    EXPECT_NE(next, before.front().id);
    EXPECT_EQ(history.selectedIncidentID(), next);
}

} // namespace
