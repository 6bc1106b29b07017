#include "presentation/hardware/HardwareMonitorView.h"

#include "presentation/PresentationTesting.h"
#include "presentation/hardware/HardwareCategoryTabs.h"
#include "presentation/hardware/HardwareSensorTable.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardLayoutEnvironment.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/TrendChart.h"
#include "support/StoreTesting.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// `count` samples 2 s apart, every reading of case `readingCase`: 64 °C, CPU
// 42 %, GPU 17 %, memory 55 %, disk 3 MB/s, fan 2400 RPM.
void ingest(DashboardStore &store, int count, SensorReadingCase readingCase)
{
    for (int i = 0; i < count; ++i) {
        SystemMetricSample sample = makeSample(50'000 + 2.0 * i);
        // A little movement so that peak and average differ.
        const double wobble = (i % 2 == 0) ? 1.0 : 0.9;
        sample.temperatureCelsius = readingOf(readingCase, 64 * wobble);
        sample.cpuUsage = readingOf(readingCase, 42 * wobble);
        sample.gpuUsage = readingOf(readingCase, 17 * wobble);
        sample.memoryUsage = readingOf(
            readingCase, SystemMemoryUsage{std::uint64_t(55e8 * wobble), 10'000'000'000ULL});
        sample.diskBytesPerSecond = readingOf(readingCase, 3e6 * wobble);
        sample.fanRPM = readingOf(readingCase, 2400 * wobble);
        sample.networkThroughput = readingOf(readingCase, NetworkThroughput{1000, 1000});
        store.ingest(sample);
    }
}

QString textOf(QWidget *page, const char *identifier)
{
    auto *widget = page->findChild<QWidget *>(QString::fromLatin1(identifier));
    if (!widget)
        return QStringLiteral("<missing %1>").arg(QLatin1String(identifier));
    if (auto *label = qobject_cast<TextLabel *>(widget))
        return label->fullText();
    if (auto *pill = qobject_cast<PillLabel *>(widget))
        return pill->text();
    return accessibleText(widget, QAccessible::Value);
}

struct Shown {
    QString title, current, status, peak, average, chartTitle;
    TrendChartContent chart;
};

Shown shownOn(HardwareMonitorView &page)
{
    return {textOf(&page, "hardwareSummary-title"),   textOf(&page, "hardwareSummary-current"),
            textOf(&page, "hardwareSummary-status"),  textOf(&page, "hardwareSummary-peak"),
            textOf(&page, "hardwareSummary-average"), textOf(&page, "hardwareTrend-title"),
            page.chart()->content()};
}

class HardwareMonitorViewTest : public ::testing::Test {
    ScopedLocale m_locale;
};

} // namespace

TEST_F(HardwareMonitorViewTest, ATabPressChangesEverySummaryFigureAndTheChartTogether)
{
    auto store = makeStoreForTesting();
    ingest(*store, 41, SensorReadingCase::available);
    HardwareMonitorView page(*store);
    page.resize(1200, 800);
    page.show();
    EXPECT_EQ(page.category(), HardwareCategory::temperature);
    Shown before = shownOn(page);
    EXPECT_EQ(before.current, QStringLiteral("64.0°C"));
    for (std::size_t i = 1; i < kAllHardwareCategories.size(); ++i) {
        const HardwareCategory category = kAllHardwareCategories[i];
        const HardwareCategoryInfo info = hardwareCategoryInfo(category);
        SCOPED_TRACE(info.tabIdentifier.toStdString());
        PressableBox *tab = page.tabs()->tab(category);
        QTest::mouseClick(tab, Qt::LeftButton);
        ASSERT_EQ(page.category(), category);
        EXPECT_EQ(accessibleText(tab, QAccessible::Value), QStringLiteral("已选择"));

        const Shown after = shownOn(page);
        EXPECT_EQ(after.title, info.currentLabel);
        EXPECT_EQ(after.chartTitle, info.chartTitle);
        EXPECT_EQ(after.status, QStringLiteral("数据正常"));
        EXPECT_NE(after.current, before.current);
        EXPECT_NE(after.peak, before.peak);
        EXPECT_NE(after.average, before.average);
        ASSERT_EQ(after.chart.series.size(), 1u);
        EXPECT_EQ(after.chart.series[0].points.size(), 31u); // 60 s at 2 s
        EXPECT_EQ(after.chart.series[0].points.back().y(),
                  hardwareSeries(category, store->hardwareTrendPoints(60)).back().y());
        before = after;
    }
}

// A store with no sample, and one whose sensors cannot be read: no chart, no
// figures on any tab, and the table says why. How each case is worded is
// the texts' concern; this is the page's wiring.
TEST_F(HardwareMonitorViewTest, EmptyAndUnreadableStoresOnEveryTab)
{
    for (const bool unread : {false, true}) {
        SCOPED_TRACE(unread);
        auto store = makeStoreForTesting();
        if (unread)
            ingest(*store, 5, SensorReadingCase::permissionDenied);
        HardwareMonitorView page(*store);
        page.show();
        const QString missing = unread ? QStringLiteral("不可用") : QStringLiteral("采集中");
        for (const HardwareCategory category : kAllHardwareCategories) {
            QTest::mouseClick(page.tabs()->tab(category), Qt::LeftButton);
            const Shown shown = shownOn(page);
            EXPECT_TRUE(shown.chart.isEmpty());
            EXPECT_EQ(shown.peak, missing);
            EXPECT_EQ(shown.average, missing);
        }
        HardwareSensorTable *table = page.sensorTable();
        ASSERT_EQ(table->lineCount(), unread ? 7 : 1);
        EXPECT_EQ(table->line(0)->cells()[3], missing);
    }
}

TEST_F(HardwareMonitorViewTest, TheTableKeepsEveryLineAndThePageScrollsWhenShort)
{
    auto store = makeStoreForTesting();
    ingest(*store, 2, SensorReadingCase::available);
    // Held short, the table keeps every line.
    HardwareSensorTable table;
    table.setStatuses(store->sensorStatuses());
    table.resize(1105, 205);
    table.show();
    QApplication::processEvents();
    EXPECT_GE(table.minimumSizeHint().height(),
              table.line(table.lineCount() - 1)->y() + table.line(0)->height());
    // The page scrolls with its bar showing where its blocks do not fit, and
    // stands still where they do.
    HardwareMonitorView page(*store);
    page.setAttribute(Qt::WA_DontShowOnScreen);
    page.show();
    for (const auto &[size, scrolls] : {std::pair{QSize(1000, 700), true},
                                        {QSize(1300, 800), true}, {QSize(1300, 1200), false}}) {
        SCOPED_TRACE(size.height());
        applyDashboardLayout(&page, DashboardLayoutMetrics::forSize(size.width(), size.height()));
        page.resize(size.width() - 220, size.height() - 100);
        QApplication::processEvents();
        const QScrollBar *bar = page.scrollArea()->verticalScrollBar();
        EXPECT_EQ(bar->maximum() > 0, scrolls);
        EXPECT_EQ(bar->isVisible(), scrolls);
    }
}
