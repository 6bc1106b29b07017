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
#include <QLocale>
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
    QString title, current, status, peak, average, source, chartTitle;
    TrendChartContent chart;
};

Shown shownOn(HardwareMonitorView &page)
{
    return {textOf(&page, "hardwareSummary-title"),   textOf(&page, "hardwareSummary-current"),
            textOf(&page, "hardwareSummary-status"),  textOf(&page, "hardwareSummary-peak"),
            textOf(&page, "hardwareSummary-average"), textOf(&page, "hardwareSummary-source"),
            textOf(&page, "hardwareTrend-title"),     page.chart()->content()};
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

    const char *const expectedSources[] = {"Linux hwmon",   "/proc/stat",      "GPU sysfs / NVML",
                                           "/proc/meminfo", "/proc/diskstats", "Linux hwmon"};
    Shown before = shownOn(page);
    EXPECT_EQ(before.current, QStringLiteral("64.0°C"));
    for (std::size_t i = 1; i < kAllHardwareCategories.size(); ++i) {
        const HardwareCategory category = kAllHardwareCategories[i];
        const HardwareCategoryInfo info = hardwareCategoryInfo(category);
        PressableBox *tab = page.tabs()->tab(category);
        ASSERT_EQ(tab->objectName(), info.tabIdentifier);
        QTest::mouseClick(tab, Qt::LeftButton);
        ASSERT_EQ(page.category(), category);
        EXPECT_EQ(accessibleText(tab, QAccessible::Value), QStringLiteral("已选择"));

        const Shown after = shownOn(page);
        const std::string name = info.tabIdentifier.toStdString();
        EXPECT_EQ(after.title, info.currentLabel) << name;
        EXPECT_EQ(after.chartTitle, info.chartTitle) << name;
        EXPECT_EQ(after.source, QLatin1String(expectedSources[i])) << name;
        EXPECT_EQ(after.status, QStringLiteral("数据正常")) << name;
        EXPECT_NE(after.current, before.current) << name;
        EXPECT_NE(after.peak, before.peak) << name;
        EXPECT_NE(after.average, before.average) << name;
        ASSERT_EQ(after.chart.series.size(), 1u);
        EXPECT_EQ(after.chart.series[0].points.size(), 31u) << name; // 60 s at 2 s
        EXPECT_EQ(after.chart.series[0].points.back().y(),
                  hardwareSeries(category, store->hardwareTrendPoints(60)).back().y())
            << name;
        before = after;
    }
    EXPECT_EQ(before.current, QStringLiteral("2,400 RPM"));
}

// Every tab over a store with no sample, and over readings of each case that
// is not a value: no chart, no figures, and the table says why.
TEST_F(HardwareMonitorViewTest, EmptyAndUnreadableStoresOnEveryTab)
{
    // How the store words each case is its own test's concern: one unread
    // case and the warm-up show the page's wiring.
    const std::optional<SensorReadingCase> cases[] = {
        std::nullopt, SensorReadingCase::permissionDenied, SensorReadingCase::warmingUp};
    for (const auto &readingCase : cases) {
        auto store = makeStoreForTesting();
        if (readingCase)
            ingest(*store, 5, *readingCase);
        SCOPED_TRACE(readingCase ? sensorReadingCaseName(*readingCase).toStdString() : "empty");
        HardwareMonitorView page(*store);
        page.resize(1100, 800);
        page.show();
        for (const HardwareCategory category : kAllHardwareCategories) {
            QTest::mouseClick(page.tabs()->tab(category), Qt::LeftButton);
            const Shown shown = shownOn(page);
            EXPECT_TRUE(shown.chart.isEmpty());
            // A sensor that cannot be read is not shown as still starting.
            const QString missing = readingCase == SensorReadingCase::permissionDenied
                                        ? QStringLiteral("不可用")
                                        : QStringLiteral("采集中");
            EXPECT_EQ(shown.peak, missing);
            EXPECT_EQ(shown.average, missing);
            EXPECT_EQ(shown.status, hardwareStatusLine(category, store->latestSystemSample()).text);
        }
        HardwareSensorTable *table = page.sensorTable();
        if (!readingCase) {
            ASSERT_EQ(table->lineCount(), 1);
            EXPECT_EQ(table->line(0)->cells(),
                      (std::array<QString, 4>{QStringLiteral("本机传感器"),
                                              QStringLiteral("正在建立数据源连接"),
                                              QStringLiteral("采集中"), QStringLiteral("采集中")}));
            continue;
        }
        ASSERT_EQ(table->lineCount(), 7);
        const QString unread = readingCase == SensorReadingCase::warmingUp
                                   ? QStringLiteral("采集中")
                                   : QStringLiteral("不可用");
        for (int row = 0; row < 6; ++row)
            EXPECT_EQ(table->line(row)->cells()[3], unread);
        EXPECT_EQ(table->line(6)->cells()[3], QStringLiteral("正常"));
    }
}

TEST_F(HardwareMonitorViewTest, TableCellsTabBarAndScrollingFollowTheWidth)
{
    auto store = makeStoreForTesting();
    ingest(*store, 2, SensorReadingCase::available);
    HardwareSensorTable table;
    table.setStatuses(store->sensorStatuses());
    table.resize(800, 400);
    table.show();
    QApplication::processEvents();
    for (HardwareSensorTableLine *line : {table.header(), table.line(0)}) {
        const std::array<QRect, 4> cells = line->cellGeometries();
        const int lefts[] = {0, 368, 552, 680};
        for (std::size_t i = 0; i < cells.size(); ++i)
            EXPECT_EQ(cells[i].left(), lefts[i]) << "column " << i;
        EXPECT_LE(cells[3].right(), 800);
    }
    EXPECT_EQ(table.line(0)->cells()[1], QStringLiteral("处理器"));
    // Held short, the table keeps every line and one set of columns; a
    // width just over the 1100 rule is where two computations would differ.
    table.resize(1105, 205);
    QApplication::processEvents();
    EXPECT_GE(table.minimumSizeHint().height(),
              table.line(table.lineCount() - 1)->y() + table.line(0)->height());
    const auto columnsOf = [](const HardwareSensorTableLine *line) {
        std::vector<std::pair<int, int>> columns;
        for (const QRect &cell : line->cellGeometries())
            columns.emplace_back(cell.left(), cell.width());
        return columns;
    };
    for (int row = 0; row < table.lineCount(); ++row)
        EXPECT_EQ(columnsOf(table.line(row)), columnsOf(table.header())) << row;
    // The page's tab bar follows the window; the page scrolls with its bar
    // showing where its blocks do not fit, and stands still where they do.
    HardwareMonitorView page(*store);
    page.setAttribute(Qt::WA_DontShowOnScreen);
    page.show();
    const struct {
        QSize size;
        int tabs;
        bool scrolls;
    } cases[] = {{{1000, 700}, 520, true}, {{1300, 800}, 604, true}, {{1300, 1200}, 604, false}};
    for (const auto &test : cases) {
        SCOPED_TRACE(test.size.height());
        applyDashboardLayout(
            &page, DashboardLayoutMetrics::forSize(test.size.width(), test.size.height()));
        page.resize(test.size.width() - 220, test.size.height() - 100);
        QApplication::processEvents();
        EXPECT_EQ(page.tabs()->width(), test.tabs);
        const QScrollBar *bar = page.scrollArea()->verticalScrollBar();
        EXPECT_EQ(bar->maximum() > 0, test.scrolls);
        EXPECT_EQ(bar->isVisible(), test.scrolls);
    }
}
