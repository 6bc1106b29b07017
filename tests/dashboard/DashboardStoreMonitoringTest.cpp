#include "support/StoreTesting.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

TEST(DashboardStoreMonitoring, StartsOnceStopsTwiceHarmlessly)
{
    auto log = std::make_shared<ProbeCallLog>();
    auto store = makeStoreForTesting(makeFakeSampler(log), 30.0);
    QSignalSpy monitoring(store.get(), &DashboardStore::isMonitoringChanged);
    EXPECT_FALSE(store->isMonitoring());

    store->startMonitoring();
    store->startMonitoring();
    EXPECT_TRUE(store->isMonitoring());
    EXPECT_EQ(monitoring.count(), 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return store->latestSystemSample().has_value(); }));
    QTest::qWait(100);
    EXPECT_EQ(log->count("process"), 1u); // one producer, one tick so far

    store->stopMonitoring();
    store->stopMonitoring();
    EXPECT_FALSE(store->isMonitoring());
    EXPECT_EQ(monitoring.count(), 2);

    store->startMonitoring(); // a later start works
    EXPECT_TRUE(store->isMonitoring());
    ASSERT_TRUE(QTest::qWaitFor([&] { return store->sampleHistory().samples().size() == 2; }));
    // The rate probe was not warmed up again after the restart.
    EXPECT_TRUE(store->latestSystemSample()->cpuUsage.isAvailable());
}

TEST(DashboardStoreNotification, OnlyRealChangesNotifyAndOnlyAfterTheWholeIngest)
{
    auto store = makeStoreForTesting();
    // Stopping a stopped store writes the value it already holds.
    QSignalSpy monitoring(store.get(), &DashboardStore::isMonitoringChanged);
    QSignalSpy anyEqualWrite(store.get(), &DashboardStore::changed);
    store->stopMonitoring();
    EXPECT_EQ(monitoring.count(), 0);
    EXPECT_EQ(anyEqualWrite.count(), 0);

    // A view reacting to the first signal already sees the whole tick.
    std::size_t historySizeSeenByView = 0;
    QObject::connect(store.get(), &DashboardStore::latestSystemSampleChanged, store.get(),
                     [&] { historySizeSeenByView = store->sampleHistory().samples().size(); });
    QSignalSpy latest(store.get(), &DashboardStore::latestSystemSampleChanged);
    QSignalSpy history(store.get(), &DashboardStore::sampleHistoryChanged);
    QSignalSpy changed(store.get(), &DashboardStore::changed);
    QSignalSpy tasks(store.get(), &DashboardStore::allTasksChanged);
    QSignalSpy incidents(store.get(), &DashboardStore::incidentsChanged);

    store->ingest(makeSample(100.0));
    EXPECT_EQ(historySizeSeenByView, 1u);
    EXPECT_EQ(latest.count(), 1);
    EXPECT_EQ(history.count(), 1);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(tasks.count(), 0);

    // An equal sample stores nothing new in `latestSystemSample`, but the
    // history still grows and says so.
    store->ingest(makeSample(100.0));
    EXPECT_EQ(latest.count(), 1);
    EXPECT_EQ(history.count(), 2);
    EXPECT_EQ(incidents.count(), 0); // an equal list is not a change
}

} // namespace
