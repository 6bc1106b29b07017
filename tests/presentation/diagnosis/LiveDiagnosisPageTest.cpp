#include "DiagnosisTesting.h"

#include "presentation/diagnosis/DiagnosisTexts.h"
#include "presentation/diagnosis/DiagnosisWorkspace.h"
#include "presentation/diagnosis/ProcessOperationPanel.h"
#include "presentation/diagnosis/SourceList.h"
#include "presentation/diagnosis/TwoLineText.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/TrendChart.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using LiveDiagnosis = DiagnosisStoreTest;

TEST_F(LiveDiagnosis, EveryIdentifierIsThereWithItsLabel)
{
    ingestTwice({madeUpProcess(10, 1, QStringLiteral("pytest"), 70),
                 makeProcess(11, 10, QStringLiteral("python3"), 5)});
    openPage();
    for (const char *identifier :
         {"page-live-diagnosis", "processListScope", "processSearch",
          "selectedSourceFilteredNotice", "clearSourceFilter", "taskListState",
          "processCompositionPanel", "diagnosisWorkspace", "diagnosisPathSummary",
          "diagnosisEvidence", "diagnosisScope-process", "diagnosisScope-source",
          "diagnosisScope-system", "trendChart", "processOperationPanel", "endTaskButton",
          "recoveryVerification", "recoveryTarget"}) {
        EXPECT_NE(find(QLatin1String(identifier)), nullptr) << identifier;
    }
    EXPECT_EQ(accessibleText(find(QStringLiteral("trendChart")), QAccessible::Name),
              QStringLiteral("整机 CPU 与温度趋势，范围最近 5 分钟"));
    EXPECT_EQ(accessibleText(find(QStringLiteral("diagnosisPathSummary")), QAccessible::Name),
              QStringLiteral("负载来源 python3，选中进程 python3，PID 11"));
    EXPECT_EQ(accessibleText(find(QStringLiteral("diagnosisScope-source")), QAccessible::Name),
              QStringLiteral("来源：python3 合计 CPU 75% · 2 个关联进程"));
    EXPECT_TRUE(showsText(m_window.get(), QStringLiteral("python3 › python3")));
}

TEST_F(LiveDiagnosis, LowerBlockArrangementAndScrollingFollowTheWindow)
{
    ingestTwice({madeUpProcess(10, 1, QStringLiteral("pytest"), 70)});
    const struct {
        QSize size;
        bool beside;
        int workspaceMinimum;
        int evidenceWidth; // 0: not fixed
    } cases[] = {
        {{1000, 900}, false, 700, 0}, // compact: scrolls, panel below the evidence
        {{1200, 700}, true, 700, 0},  // standard and short
        {{1200, 900}, true, 0, 0},
        {{1440, 900}, true, 0, 350},
    };
    for (const auto &test : cases) {
        LiveDiagnosisPage *page = openPage(test.size);
        DiagnosisWorkspace *workspace = page->workspace();
        EXPECT_EQ(workspace->placesPanelBesideEvidence(), test.beside) << test.size.width();
        EXPECT_EQ(workspace->minimumHeight(), test.workspaceMinimum) << test.size.width();
        if (test.evidenceWidth > 0) {
            EXPECT_EQ(find(QStringLiteral("diagnosisEvidence"))->width(), test.evidenceWidth);
        }
        const QWidget *evidence = find(QStringLiteral("diagnosisEvidence"));
        const QWidget *panel = find(QStringLiteral("processOperationPanel"));
        if (test.beside) {
            EXPECT_GT(panel->x(), evidence->x() + evidence->width());
        } else {
            EXPECT_GT(panel->y(), evidence->y() + evidence->height() - 1);
        }
        EXPECT_EQ(
            find(QStringLiteral("diagnosisSourceColumn"))->width(),
            static_cast<int>(DashboardLayoutMetrics::forSize(test.size.width(), test.size.height())
                                 .taskColumnWidth));
    }
}

TEST_F(LiveDiagnosis, EmptyStoreShowsTheWaitingTextsEverywhere)
{
    openPage({960, 640});
    EXPECT_TRUE(find(QStringLiteral("taskListState"))->isVisible());
    for (const char *text : {"正在采集进程负载", "切换到“全部来源”可以主动查找其他来源。",
                             "正在分析当前进程负载", "—", "等待进程采样", "等待负载来源采样",
                             "正在读取温度与热状态", "选择进程后显示结束操作的影响范围。"})
        EXPECT_TRUE(showsText(m_window.get(), QString::fromUtf8(text))) << text;
    EXPECT_EQ(find<TwoLineText>(QStringLiteral("selectionSummary"))->text(),
              QStringLiteral("选择一个进程查看来源上下文和持续时间"));
    auto *end = find(QStringLiteral("endTaskButton"));
    EXPECT_FALSE(end->isEnabled());
    EXPECT_EQ(accessibleText(end, QAccessible::Value), QStringLiteral("不可结束"));
    EXPECT_TRUE(find<TrendChart>(QStringLiteral("trendChart"))->content().isEmpty());

    ingestTwice({});
    QTest::mouseClick(find(QStringLiteral("processListScope-all")), Qt::LeftButton);
    EXPECT_TRUE(showsText(m_window.get(), QStringLiteral("暂未发现当前用户进程")));
    EXPECT_TRUE(
        showsText(m_window.get(), QStringLiteral("可按应用、进程、PID、安全命令或项目名称搜索。")));
}

TEST_F(LiveDiagnosis, SystemEvidenceNamesWhyTheTemperatureIsMissing)
{
    SystemMetricSample sample = makeSample(50);
    sample.thermalState = SystemThermalState::fair;
    sample.temperatureCelsius = SensorReading<double>::permissionDenied(QStringLiteral("EACCES"));
    EXPECT_EQ(systemScopeDetail(sample), QStringLiteral("温度 不可用 · 热状态 ") +
                                             systemThermalStateLabel(SystemThermalState::fair) +
                                             QStringLiteral(" · 数据源 权限受限"));
    sample.temperatureCelsius = SensorReading<double>::available(71.25, QStringLiteral("hwmon"));
    EXPECT_EQ(systemScopeDetail(sample), QStringLiteral("温度 71.3°C · 热状态 ") +
                                             systemThermalStateLabel(SystemThermalState::fair));
    const struct {
        double x;
        QString label;
    } axis[] = {{300, QStringLiteral("现在")},   {299.5, QStringLiteral("现在")},
                {310, QStringLiteral("现在")},   {270, QStringLiteral("-30s")},
                {240.5, QStringLiteral("-59s")}, {240, QStringLiteral("-1m")},
                {0, QStringLiteral("-5m")}};
    for (const auto &test : axis)
        EXPECT_EQ(heatTrendAxisLabel(test.x), test.label) << test.x;
}

TEST_F(LiveDiagnosis, FiveHundredSourcesStayAListOfPaintedRows)
{
    QList<ProcessMetric> processes;
    for (pid_t pid = 2000; pid < 2500; ++pid)
        processes.append(madeUpProcess(pid, 1, QStringLiteral("tool%1").arg(pid), 1 + pid % 7));
    ingestTwice(processes);
    LiveDiagnosisPage *page = openPage();
    QTest::mouseClick(find(QStringLiteral("processListScope-all")), Qt::LeftButton);
    EXPECT_EQ(page->sourceList()->sourceModel()->rowCount(), 500);
    EXPECT_TRUE(showsText(m_window.get(), QStringLiteral("500 个来源 · 500 个进程")));
    // The scroll position holds across a tick.
    settleEvents(20);
    page->sourceList()->verticalScrollBar()->setValue(4000);
    ASSERT_EQ(page->sourceList()->verticalScrollBar()->value(), 4000);
    processes[10].cpuPercent = 50;
    ingest(processes);
    EXPECT_EQ(page->sourceList()->verticalScrollBar()->value(), 4000);
    page->sourceList()->grab();
}

TEST_F(LiveDiagnosis, OddNamesAreCutWithAnEllipsisNotClipped)
{
    const QString rightToLeft = QStringLiteral("مراقب-الحرارة-") + QString(80, QChar(0x05D0));
    const QString longName = QStringLiteral("an-extremely-long-process-name-") + QString(200, 'x');
    ingestTwice({madeUpProcess(10, 1, rightToLeft, 70, rightToLeft + QStringLiteral(" --run")),
                 madeUpProcess(11, 10, longName, 20, longName)});
    LiveDiagnosisPage *page = openPage({960, 640});
    auto *summary = find<TwoLineText>(QStringLiteral("selectionSummary"));
    const QStringList lines = summary->shownLines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[1].endsWith(QChar(0x2026)));
    for (const QString &line : lines)
        EXPECT_LE(summary->fontMetrics().horizontalAdvance(line), summary->width());
    // Typed text with blanks only filters nothing.
    page->setQuery(QStringLiteral("   \n"));
    EXPECT_EQ(page->sourceList()->sourceModel()->rowCount(), 1);
    EXPECT_FALSE(find(QStringLiteral("selectedSourceFilteredNotice"))->isVisible());
    m_window->grab();
}

} // namespace
