#include "DiagnosisTesting.h"

#include "presentation/diagnosis/DiagnosisTexts.h"
#include "presentation/diagnosis/DiagnosisWorkspace.h"
#include "presentation/diagnosis/TwoLineText.h"
#include "presentation/kit/TrendChart.h"

#include <QScrollArea>

namespace {

using namespace Qt::StringLiterals;
using LiveDiagnosis = DiagnosisStoreTest;

TEST_F(LiveDiagnosis, LabelsTheChartAndTheLowerBlocksFollowTheWindow)
{
    ingestTwice({madeUpProcess(10, 1, u"pytest"_s, 70), makeProcess(11, 10, u"python3"_s, 5)});
    const struct {
        QSize size;
        bool beside;
        int workspaceMinimum;
    } cases[] = {
        {{1000, 900}, false, 700}, // compact: scrolls, panel below the evidence
        {{1200, 700}, true, 700},  // standard and short
        {{1200, 800}, true, 0},    {{1200, 900}, true, 0}, {{1440, 900}, true, 0},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(test.size.width());
        DiagnosisWorkspace *workspace = openPage(test.size)->workspace();
        EXPECT_EQ(workspace->placesPanelBesideEvidence(), test.beside);
        // The outcome of an action is in sight without scrolling wherever the
        // window is not short.
        const auto *scroll = find<QScrollArea>(u"diagnosisWorkspaceScroll"_s);
        EXPECT_GE(scroll->widget()->minimumSizeHint().height(), test.workspaceMinimum);
        for (const char *identifier : {"endTaskButton", "recoveryVerification"}) {
            const QWidget *part = find(QLatin1String(identifier));
            const QRect at(part->mapTo(scroll->viewport(), QPoint()), part->size());
            EXPECT_TRUE(test.workspaceMinimum > 0 || scroll->viewport()->rect().contains(at));
        }
        const QWidget *evidence = find(u"diagnosisEvidence"_s);
        const QWidget *panel = find(u"processOperationPanel"_s);
        EXPECT_TRUE(test.beside ? panel->x() > evidence->x() + evidence->width()
                                : panel->y() >= evidence->y() + evidence->height());
    }
    expectHeard(m_window.get(),
                {{u"trendChart"_s, u"整机 CPU 与温度趋势，范围最近 5 分钟"_s},
                 {u"diagnosisPathSummary"_s, u"负载来源 python3，选中进程 python3，PID 11"_s},
                 {u"diagnosisScope-source"_s, u"来源：python3 合计 CPU 75% · 2 个关联进程"_s}});
    EXPECT_TRUE(showsText(m_window.get(), u"python3 › python3"_s));
    EXPECT_FALSE(find<TrendChart>(u"trendChart"_s)->content().isEmpty()); // the system's trend
}

TEST_F(LiveDiagnosis, EmptyStoreShowsTheWaitingTextsEverywhere)
{
    openPage({960, 640});
    EXPECT_TRUE(find(u"taskListState"_s)->isVisible());
    for (const char *text :
         {"正在采集进程负载", "切换到“全部来源”可以主动查找其他来源。", "正在分析当前进程负载", "—",
          "等待进程采样", "等待负载来源采样", "正在读取温度与热状态"})
        EXPECT_TRUE(showsText(m_window.get(), QString::fromUtf8(text))) << text;
    EXPECT_EQ(find<TwoLineText>(u"selectionSummary"_s)->text(),
              u"选择一个进程查看来源上下文和持续时间"_s);
    EXPECT_TRUE(find<TrendChart>(u"trendChart"_s)->content().isEmpty());

    ingestTwice({});
    QTest::mouseClick(find(u"processListScope-all"_s), Qt::LeftButton);
    EXPECT_TRUE(showsText(m_window.get(), u"暂未发现当前用户进程"_s));
    EXPECT_TRUE(showsText(m_window.get(), u"可按应用、进程、PID、安全命令或项目名称搜索。"_s));
}

TEST(DiagnosisTexts, SystemEvidenceNamesWhyTheTemperatureIsMissingAndTheAxisCountsBack)
{
    SystemMetricSample sample = makeSample(50);
    sample.thermalState = SystemThermalState::fair;
    sample.temperatureCelsius = SensorReading<double>::permissionDenied(u"EACCES"_s);
    const QString fair = systemThermalStateLabel(SystemThermalState::fair);
    EXPECT_EQ(systemScopeDetail(sample),
              u"温度 不可用 · 热状态 "_s + fair + u" · 数据源 权限受限"_s);
    sample.temperatureCelsius = SensorReading<double>::available(71.25, u"hwmon"_s);
    EXPECT_EQ(systemScopeDetail(sample), u"温度 71.3°C · 热状态 "_s + fair);
    const std::pair<double, QString> axis[] = {
        {300, u"现在"_s},   {299.5, u"现在"_s}, {310, u"现在"_s}, {270, u"-30s"_s},
        {240.5, u"-59s"_s}, {240, u"-1m"_s},    {0, u"-5m"_s}};
    for (const auto &[x, label] : axis)
        EXPECT_EQ(heatTrendAxisLabel(x), label) << x;
}

TEST_F(LiveDiagnosis, OddNamesAreCutWithAnEllipsisNotClipped)
{
    const QString rightToLeft = u"مراقب-الحرارة-"_s + QString(80, QChar(0x05D0));
    const QString longName = u"an-extremely-long-process-name-"_s + QString(200, 'x');
    ingestTwice({madeUpProcess(10, 1, rightToLeft, 70, rightToLeft + u" --run"_s),
                 madeUpProcess(11, 10, longName, 20, longName)});
    openPage({960, 640});
    auto *summary = find<TwoLineText>(u"selectionSummary"_s);
    const QStringList lines = summary->shownLines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[1].endsWith(QChar(0x2026)));
    for (const QString &line : lines)
        EXPECT_LE(summary->fontMetrics().horizontalAdvance(line), summary->width());
    m_window->grab();
}

} // namespace
