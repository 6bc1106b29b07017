// The settings page on a real store: the live switch and the header's button
// show one value, the fixed switches cannot change, and the clear dialog
// empties the log.

#include "presentation/settings/SettingsPage.h"
#include "presentation/PresentationTesting.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/settings/ClearHistoryDialog.h"
#include "presentation/settings/SettingsSwitch.h"
#include "presentation/shell/DashboardShell.h"
#include "support/IncidentFeed.h"

#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

class SettingsPageTest : public ::testing::Test {
protected:
    void TearDown() override { feed.store().stopMonitoring(); }

    IncidentFeed feed;
};

// The switch is drawn and read out as `on`.
void expectSwitch(SettingsSwitch *control, bool on)
{
    EXPECT_EQ(control->isChecked(), on);
    EXPECT_EQ(accessibleText(control, QAccessible::Value), on ? u"已开启"_s : u"已关闭"_s);
}

// "恢复默认设置" starts monitoring, keeps it on, and restores nothing else.
TEST_F(SettingsPageTest, LiveSwitchFollowsTheHeaderButtonAndRestoreDrivesTheStore)
{
    DashboardStore &store = feed.store();
    feed.hot(u"cargo"_s, 90.0, 88.0);
    const std::vector<DashboardIncident> incidents = store.incidents();
    store.startMonitoring();
    DashboardShell shell(store, DashboardSection::settings, [] {});
    shell.resize(1440, 900);
    shell.show();
    auto *page = qobject_cast<SettingsPage *>(shell.currentPage());
    ASSERT_NE(page, nullptr);
    SettingsSwitch *live = page->monitoringSwitch();
    auto *headerButton = shell.findChild<PressableBox *>(u"liveMonitoringStatus"_s);
    ASSERT_NE(headerButton, nullptr);
    EXPECT_EQ(accessibleText(live, QAccessible::Name), u"启动时自动监控"_s);

    QAbstractButton *restore = page->restoreDefaultsButton();
    // The control pressed (none at first) and whether monitoring is on after it.
    const std::pair<QAbstractButton *, bool> steps[] = {
        {nullptr, true}, {headerButton, false}, {headerButton, true}, {live, false},
        {live, true},    {restore, true},       {live, false},        {restore, true},
        {live, false},   {headerButton, true}};
    for (const auto &[pressed, monitoring] : steps) {
        if (pressed)
            QTest::mouseClick(pressed, Qt::LeftButton);
        SCOPED_TRACE(pressed ? pressed->objectName().toStdString() : "initial");
        EXPECT_EQ(store.isMonitoring(), monitoring);
        expectSwitch(live, monitoring);
        EXPECT_EQ(headerButton->accessibleName(), monitoring ? u"监控中"_s : u"已暂停"_s);
    }
    EXPECT_EQ(store.incidents(), incidents);
}

TEST_F(SettingsPageTest, FixedSwitchesHoldAndTheClearDialogCancelsOrEmptiesTheLog)
{
    feed.hot(u"cargo"_s, 90.0, 88.0);
    feed.calm();
    feed.hot(u"node"_s, 60.0, std::nullopt); // still open
    const std::vector<DashboardIncident> before = feed.store().incidents();
    ASSERT_EQ(before.size(), 2u);

    SettingsPage page(feed.store());
    page.show();
    for (const auto &[identifier, on] : {std::pair{"settingsNotificationsSwitch", false},
                                         std::pair{"settingsCurrentUserSwitch", true}}) {
        SCOPED_TRACE(identifier);
        auto *fixed = page.findChild<SettingsSwitch *>(QString::fromLatin1(identifier));
        ASSERT_NE(fixed, nullptr);
        for (int press = 0; press < 2; ++press) {
            QTest::mouseClick(fixed, Qt::LeftButton);
            expectSwitch(fixed, on);
        }
    }
    EXPECT_FALSE(feed.store().isMonitoring());
    EXPECT_FALSE(page.isConfirmingClear());

    for (const bool clear : {false, true}) {
        QTest::mouseClick(page.clearHistoryButton(), Qt::LeftButton);
        ASSERT_NE(page.clearHistoryDialog(), nullptr);
        EXPECT_TRUE(page.isConfirmingClear());
        ClearHistoryDialog *dialog = page.clearHistoryDialog();
        QTest::mouseClick(clear ? dialog->clearButton() : dialog->cancelButton(), Qt::LeftButton);
        EXPECT_FALSE(page.isConfirmingClear());
        EXPECT_EQ(feed.store().incidents(), clear ? std::vector<DashboardIncident>{} : before);
    }
}

} // namespace
