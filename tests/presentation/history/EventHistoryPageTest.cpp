// The event history page over real store states: what it lists and selects
// as incidents come and go, how the user filters, searches and picks a row,
// the detail's moving duration, and a log of a thousand incidents.

#include "presentation/history/EventHistoryPage.h"
#include "presentation/PresentationTesting.h"
#include "presentation/history/EventHistoryToolbar.h"
#include "presentation/history/IncidentDetailPanel.h"
#include "presentation/history/IncidentListModel.h"
#include "presentation/history/IncidentListPanel.h"
#include "presentation/history/IncidentTexts.h"
#include "support/IncidentFeed.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>

namespace {

using namespace Qt::StringLiterals;

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
        const QModelIndex index = page.listModel()->index(page.listModel()->rowOf(id));
        QListView *view = page.listPanel()->listView();
        view->scrollTo(index);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
    }
    static QString rowOf(const QUuid &id)
    {
        return u"incidentRow-"_s + id.toString(QUuid::WithoutBraces);
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

    QSignalSpy resets(page->listModel(), &QAbstractItemModel::modelReset);

    const QUuid first = feed.hot(u"cargo"_s, 90.0, 88.0);
    QApplication::processEvents();
    EXPECT_FALSE(page->listPanel()->isAnimating()) << "only the user's pick moves the list";
    EXPECT_EQ(page->selectedIncidentID(), first) << "a first incident is selected";
    EXPECT_FALSE(page->listPanel()->showsEmptyState() || page->detailPanel()->showsPlaceholder());

    // The open incident moves with each sample; the list is updated in place.
    feed.hot(u"cargo"_s, 95.0, 89.0);
    feed.calm();
    const QUuid newer = feed.hot(u"node"_s, 50.0, std::nullopt);
    EXPECT_EQ(page->listedIncidentIDs(), (std::vector<QUuid>{newer, first}));
    EXPECT_EQ(page->selectedIncidentID(), first) << "a newer incident leaves the selection";
    EXPECT_EQ(resets.count(), 0);

    // The temperature filter hides the newer one (no temperature read), and
    // the selection moves with it.
    click(*page, newer);
    QTest::mouseClick(page->toolbar()->chip(EventHistoryFilter::temperature), Qt::LeftButton);
    EXPECT_EQ(page->listedIncidentIDs(), (std::vector<QUuid>{first}));
    EXPECT_EQ(page->selectedIncidentID(), first) << "a hidden selection moves to the newest";
    expectHeard(page.get(), {{u"eventHistoryRange"_s, u"事件范围：本次会话"_s},
                             {u"eventHistoryFilter-temperature"_s, u"温度"_s, u"已选择"_s},
                             {rowOf(first), {}, u"已选择"_s}});

    QTest::mouseClick(page->toolbar()->chip(EventHistoryFilter::highLoad), Qt::LeftButton);
    EXPECT_EQ(page->listedIncidentIDs(), (std::vector<QUuid>{newer, first}));
    EXPECT_EQ(page->selectedIncidentID(), first) << "still listed: kept";

    // Clearing the log empties the page at once.
    feed.store().clearIncidents();
    EXPECT_TRUE(page->listPanel()->showsEmptyState() && page->detailPanel()->showsPlaceholder());
    EXPECT_EQ(page->selectedIncidentID(), std::nullopt);
}

TEST_F(EventHistoryPageTest, ClickingARowSelectsItAndNeverDeselects)
{
    const QUuid older = feed.hot(u"cargo"_s, 90.0, 88.0);
    feed.calm();
    const QUuid newest = feed.hot(u"node"_s, 60.0, 80.0);
    auto page = makePage();
    EXPECT_EQ(page->selectedIncidentID(), newest) << "the page appears with the newest";

    QSignalSpy repainted(page->listModel(), &QAbstractItemModel::dataChanged);
    EXPECT_FALSE(page->listPanel()->isAnimating() || page->detailPanel()->isFading());
    click(*page, older);
    EXPECT_EQ(page->selectedIncidentID(), older);
    int announced = 0; // rows, over the runs announced
    for (const QList<QVariant> &run : repainted)
        announced += run[1].toModelIndex().row() - run[0].toModelIndex().row() + 1;
    EXPECT_EQ(announced, 2) << "the rows that lose and gain the selection";
    // The pick eases the rows and fades the detail in, then all is still.
    EXPECT_TRUE(page->listPanel()->isAnimating() && page->detailPanel()->isFading());
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !page->listPanel()->isAnimating() && !page->detailPanel()->isFading(); },
        10'000));
    const DashboardIncident &cargo = feed.store().incidents().back();
    const QString label = u"%1，%2，cargo，%3，%4"_s.arg(
        incidentStartTimeText(cargo), incidentTitle(cargo), incidentPeakSummary(cargo),
        incidentStatusLabel(cargo.status));
    expectHeard(page.get(), {{rowOf(older), label, u"已选择"_s}, {rowOf(newest), {}, u"未选择"_s}});
    click(*page, older);
    EXPECT_EQ(page->selectedIncidentID(), older);
    EXPECT_EQ(page->detailPanel()->valueText(u"所属应用"_s),
              feed.store().incidents().back().application);

    page->selectIncident(QUuid::createUuid()); // not listed: nothing happens
    EXPECT_EQ(page->selectedIncidentID(), older);
}

TEST_F(EventHistoryPageTest, DetailShowsTheIncidentAndItsMovingDuration)
{
    feed.hot(u"cargo"_s, 90.0, 76.0, 0.0);
    feed.hot(u"cargo"_s, 90.0, 88.0, 30.0);
    auto page = makePage();
    const DashboardIncident &open = feed.store().incidents().front();
    IncidentDetailPanel *detail = page->detailPanel();
    EXPECT_TRUE(detail->startAndDurationText().endsWith(u" 开始 · 持续 30 秒"_s))
        << detail->startAndDurationText().toStdString();
    EXPECT_EQ(detail->valueText(u"目标进程"_s), open.detail);
    EXPECT_EQ(detail->valueText(u"CPU 峰值"_s), u"90%"_s);
    EXPECT_EQ(detail->valueText(u"磁盘活动"_s), u"本次事件未记录"_s);
    EXPECT_EQ(detail->adviceText(), open.detail) << "no action: the detail is the advice";

    feed.hot(u"cargo"_s, 90.0, 88.0, 45.0);
    EXPECT_TRUE(detail->startAndDurationText().endsWith(u"持续 1 分钟"_s));

    QTest::mouseClick(page->findChild<QWidget *>(u"openDiagnosisButton"_s), Qt::LeftButton);
    EXPECT_EQ(openedDiagnosis, 1);
}

TEST_F(EventHistoryPageTest, AThousandIncidentsListAndFilterWithoutLoss)
{
    feed.addClosedIncidents(1000);
    auto page = makePage();
    EXPECT_EQ(page->listModel()->rowCount(), 1000);
    EXPECT_EQ(page->selectedIncidentID(), feed.store().incidents().front().id);

    // worker99 and worker990..999, newest first.
    page->findChild<QLineEdit *>(u"eventHistorySearch"_s)->setText(u"worker99"_s);
    ASSERT_EQ(page->listModel()->rowCount(), 11);
    EXPECT_EQ(page->listModel()->rowAt(10).application,
              feed.store().incidents()[1000 - 100].application);
    page->grab(); // paints without trouble
}

} // namespace
