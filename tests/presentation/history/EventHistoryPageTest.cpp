// The event history page over real store states: what it lists and selects
// as incidents come and go, how the user filters, searches and picks a row,
// the detail's moving duration, and a log of a thousand incidents.

#include "presentation/history/EventHistoryPage.h"
#include "presentation/PresentationTesting.h"
#include "presentation/history/EventHistoryToolbar.h"
#include "presentation/history/IncidentDetailPanel.h"
#include "presentation/history/IncidentListModel.h"
#include "presentation/history/IncidentListPanel.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "support/IncidentFeed.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class EventHistoryPageTest : public ::testing::Test {
protected:
    std::unique_ptr<EventHistoryPage> makePage()
    {
        DashboardPageActions actions;
        actions.openDiagnosis = [this] { ++openedDiagnosis; };
        auto page = std::make_unique<EventHistoryPage>(feed.store(), actions);
        page->resize(1100, 700);
        page->applyLayout(DashboardLayoutMetrics::forSize(1440, 900));
        page->show();
        return page;
    }

    static void click(EventHistoryPage &page, const QUuid &id)
    {
        const std::optional<int> row = page.listModel()->rowOf(id);
        ASSERT_TRUE(row.has_value());
        QListView *view = page.listPanel()->listView();
        const QModelIndex index = page.listModel()->index(*row);
        view->scrollTo(index);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
    }

    // Where a column caption stands in the list panel.
    static int captionX(EventHistoryPage &page, const QString &caption)
    {
        for (const TextLabel *label : page.listPanel()->findChildren<TextLabel *>()) {
            if (label->fullText() == caption)
                return label->mapTo(page.listPanel(), QPoint()).x();
        }
        return -1;
    }

    IncidentFeed feed;
    int openedDiagnosis = 0;
};

TEST_F(EventHistoryPageTest, EmptyAtFirstThenSelectionFollowsTheRulesAsIncidentsArrive)
{
    auto page = makePage();
    EXPECT_TRUE(page->listPanel()->showsEmptyState());
    EXPECT_TRUE(page->detailPanel()->showsPlaceholder());
    EXPECT_EQ(page->selectedIncidentID(), std::nullopt);
    auto *search = page->findChild<QLineEdit *>(QStringLiteral("eventHistorySearch"));
    ASSERT_NE(search, nullptr);
    EXPECT_EQ(search->placeholderText(), QStringLiteral("搜索事件或进程"));
    auto *range = page->findChild<QWidget *>(QStringLiteral("eventHistoryRange"));
    ASSERT_NE(range, nullptr);
    EXPECT_EQ(accessibleText(range, QAccessible::Name), QStringLiteral("事件范围：本次会话"));

    // Chips draw their labels in their own colours: white on the accent for
    // the current filter, the secondary text colour for the others.
    const QColor darkest = darkestPixel(page->toolbar()->chip(EventHistoryFilter::highLoad));
    EXPECT_NEAR(qGray(darkest.rgb()), qGray(DashboardPalette::textSecondary), 25);

    QSignalSpy resets(page->listModel(), &QAbstractItemModel::modelReset);
    QApplication::processEvents();
    const int emptyCaptionX = captionX(*page, QStringLiteral("结果"));

    const QUuid first = feed.hot(QStringLiteral("cargo"), 90.0, 88.0);
    ASSERT_FALSE(first.isNull());
    QApplication::processEvents();
    EXPECT_EQ(captionX(*page, QStringLiteral("结果")), emptyCaptionX)
        << "the captions stand where the rows draw, before and after the first row";
    EXPECT_FALSE(page->listPanel()->isAnimating()) << "only the user's pick moves the list";
    EXPECT_EQ(page->selectedIncidentID(), first) << "a first incident is selected";
    EXPECT_FALSE(page->listPanel()->showsEmptyState());
    EXPECT_FALSE(page->detailPanel()->showsPlaceholder());

    // The open incident moves with each sample; the list is updated in place.
    feed.hot(QStringLiteral("cargo"), 95.0, 89.0);
    feed.calm();
    const QUuid newer = feed.hot(QStringLiteral("node"), 50.0, std::nullopt);
    ASSERT_NE(newer, first);
    EXPECT_EQ(page->listedIncidentIDs(), (std::vector<QUuid>{newer, first}));
    EXPECT_EQ(page->selectedIncidentID(), first) << "a newer incident leaves the selection";
    EXPECT_EQ(resets.count(), 0);

    // The temperature filter hides the newer one (no temperature read); the
    // "已解决" filter hides the open one, and the selection moves with it.
    click(*page, newer);
    EXPECT_EQ(page->selectedIncidentID(), newer);
    QTest::mouseClick(page->toolbar()->chip(EventHistoryFilter::temperature), Qt::LeftButton);
    EXPECT_EQ(page->filter(), EventHistoryFilter::temperature);
    EXPECT_EQ(page->listedIncidentIDs(), (std::vector<QUuid>{first}));
    EXPECT_EQ(page->selectedIncidentID(), first) << "a hidden selection moves to the newest";
    EXPECT_EQ(
        accessibleText(page->toolbar()->chip(EventHistoryFilter::temperature), QAccessible::Value),
        QStringLiteral("已选择"));

    QTest::mouseClick(page->toolbar()->chip(EventHistoryFilter::highLoad), Qt::LeftButton);
    EXPECT_EQ(page->listedIncidentIDs(), (std::vector<QUuid>{newer, first}));
    EXPECT_EQ(page->selectedIncidentID(), first) << "still listed: kept";

    // Clearing the log empties the page at once.
    feed.store().clearIncidents();
    EXPECT_TRUE(page->listPanel()->showsEmptyState());
    EXPECT_TRUE(page->detailPanel()->showsPlaceholder());
    EXPECT_EQ(page->selectedIncidentID(), std::nullopt);
}

TEST_F(EventHistoryPageTest, ClickingARowSelectsItAndNeverDeselects)
{
    const QUuid older = feed.hot(QStringLiteral("cargo"), 90.0, 88.0);
    feed.calm();
    const QUuid newest = feed.hot(QStringLiteral("node"), 60.0, 80.0);
    auto page = makePage();
    EXPECT_EQ(page->selectedIncidentID(), newest) << "the page appears with the newest";

    const QModelIndex olderRow = page->listModel()->index(*page->listModel()->rowOf(older));
    EXPECT_FALSE(page->listPanel()->isAnimating() || page->detailPanel()->isFading());
    click(*page, older);
    EXPECT_EQ(page->selectedIncidentID(), older);
    // The pick eases the rows and fades the detail in, then all is still.
    EXPECT_TRUE(page->listPanel()->isAnimating());
    EXPECT_TRUE(page->detailPanel()->isFading());
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !page->listPanel()->isAnimating() && !page->detailPanel()->isFading(); },
        10'000));
    EXPECT_EQ(olderRow.data(IncidentListModel::AccessibleValueRole).toString(),
              QStringLiteral("已选择"));
    click(*page, older);
    EXPECT_EQ(page->selectedIncidentID(), older);
    EXPECT_EQ(page->detailPanel()->valueText(QStringLiteral("所属应用")),
              feed.store().incidents().back().application);

    page->selectIncident(QUuid::createUuid()); // not listed: nothing happens
    EXPECT_EQ(page->selectedIncidentID(), older);
}

TEST_F(EventHistoryPageTest, DetailShowsTheIncidentAndItsMovingDuration)
{
    feed.hot(QStringLiteral("cargo"), 90.0, 76.0, 0.0);
    feed.hot(QStringLiteral("cargo"), 90.0, 88.0, 30.0);
    auto page = makePage();
    const DashboardIncident &open = feed.store().incidents().front();
    ASSERT_EQ(open.status, DashboardIncidentStatus::observing);
    IncidentDetailPanel *detail = page->detailPanel();
    EXPECT_TRUE(detail->startAndDurationText().endsWith(QStringLiteral(" 开始 · 持续 30 秒")))
        << detail->startAndDurationText().toStdString();
    EXPECT_EQ(detail->valueText(QStringLiteral("目标进程")), open.detail);
    EXPECT_EQ(detail->valueText(QStringLiteral("CPU 峰值")), QStringLiteral("90%"));
    EXPECT_EQ(detail->valueText(QStringLiteral("磁盘活动")), QStringLiteral("本次事件未记录"));
    EXPECT_EQ(detail->adviceText(), open.detail) << "no action: the detail is the advice";

    feed.hot(QStringLiteral("cargo"), 90.0, 88.0, 45.0);
    EXPECT_TRUE(detail->startAndDurationText().endsWith(QStringLiteral("持续 1 分钟")));

    auto *open_button = page->findChild<QAbstractButton *>(QStringLiteral("openDiagnosisButton"));
    ASSERT_NE(open_button, nullptr);
    QTest::mouseClick(open_button, Qt::LeftButton);
    EXPECT_EQ(openedDiagnosis, 1);
}

TEST_F(EventHistoryPageTest, AThousandIncidentsListAndFilterWithoutLoss)
{
    feed.addClosedIncidents(1000);
    ASSERT_EQ(feed.store().incidents().size(), 1000u);
    auto page = makePage();
    EXPECT_EQ(page->listModel()->rowCount(), 1000);
    EXPECT_EQ(page->selectedIncidentID(), feed.store().incidents().front().id);

    QTest::mouseClick(page->toolbar()->chip(EventHistoryFilter::highLoad), Qt::LeftButton);
    // CPU 40 + i % 60: the peaks below 30 never occur, all stay.
    EXPECT_EQ(page->listModel()->rowCount(), 1000);
    auto *search = page->findChild<QLineEdit *>(QStringLiteral("eventHistorySearch"));
    search->setText(QStringLiteral("worker99"));
    // worker99 and worker990..999.
    EXPECT_EQ(page->listModel()->rowCount(), 11);
    EXPECT_EQ(page->listModel()->index(10).data(IncidentListModel::ApplicationRole).toString(),
              feed.store().incidents()[1000 - 100].application);
    // Hiding the selected newest moves the selection and the detail to the newest listed.
    search->setText(QStringLiteral("  WORKER5 "));
    EXPECT_EQ(page->listModel()->rowCount(), 111);
    EXPECT_EQ(page->detailPanel()->valueText(QStringLiteral("所属应用")),
              QStringLiteral("worker599"));
    page->grab(); // paints without trouble
}

} // namespace
