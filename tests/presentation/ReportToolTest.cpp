#include "presentation/report/ReportOptions.h"
#include "presentation/report/TextTable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include "support/MachineTicks.h"

#include <gtest/gtest.h>

namespace {

TEST(ReportOptions, ParsesOrNamesTheWrongOption)
{
    struct Row {
        QStringList arguments;
        std::optional<ReportOptions> expected;
        const char *errorFragment;
    };
    const std::vector<Row> rows = {
        {{}, ReportOptions{2, 2.0, false, false}, ""},
        {{"--samples", "5", "--interval", "0.5", "--json"}, ReportOptions{5, 0.5, true, false}, ""},
        {{"--samples=3"}, ReportOptions{3, 2.0, false, false}, ""},
        {{"--help"}, ReportOptions{2, 2.0, false, true}, ""},
        {{"--samples", "0"}, std::nullopt, "--samples"},
        {{"--samples", "two"}, std::nullopt, "--samples"},
        {{"--samples"}, std::nullopt, "--samples"},
        {{"--interval", "-1"}, std::nullopt, "--interval"},
        {{"--interval", "nan"}, std::nullopt, "--interval"},
        {{"--interval", "1e300"}, std::nullopt, "--interval"},
        {{"--interval=1e9"}, ReportOptions{2, 1e9, false, false}, ""},
        {{"--verbose"}, std::nullopt, "'--verbose'"},
        {{"--json=yes"}, std::nullopt, "'--json=yes'"},
        {{"samples"}, std::nullopt, "'samples'"},
    };
    for (const auto &row : rows) {
        const ReportOptionsResult result = parseReportOptions(row.arguments);
        SCOPED_TRACE(row.arguments.join(' ').toStdString());
        EXPECT_EQ(result.options, row.expected);
        if (!row.expected) {
            EXPECT_TRUE(result.error.contains(row.errorFragment)) << result.error.toStdString();
            EXPECT_FALSE(result.error.contains('\n'));
        }
    }
}

TEST(TextTable, WideCharactersTakeTwoCells)
{
    EXPECT_EQ(terminalWidth("CPU"), 3);
    EXPECT_EQ(terminalWidth("温度"), 4);
    TextTable table({"读数", "值"});
    table.addRow({"CPU", "5%"});
    table.addRow({"温度", "不可用"});
    EXPECT_EQ(table.render(), "读数  值\n----  ------\nCPU   5%\n温度  不可用\n");
}

struct ProcessResult {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

ProcessResult runReport(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(KW_REPORT_BINARY), arguments);
    process.waitForFinished(60000);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

TEST(ReportTool, AWrongOptionPrintsTwoLinesAndExitsTwo)
{
    const ProcessResult result = runReport({"--frobnicate"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.out.isEmpty());
    const QList<QByteArray> lines = result.err.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].contains("--frobnicate"));
    EXPECT_TRUE(lines[1].startsWith("usage:"));
}

// The report's CPU figure over its last interval against the machine's own
// ticks over that same interval, read by the test: the two agree however
// busy the machine is. A spinning child makes the figure worth checking.
TEST(ReportTool, CPUFigureIsTheMachinesOverTheSameInterval)
{
    BusyChild busy;
    MachineTickRecorder machine;
    const ProcessResult result = runReport({"--samples", "3", "--interval", "1", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    const QJsonArray samples = QJsonDocument::fromJson(result.out)["samples"].toArray();
    ASSERT_EQ(samples.size(), 3);
    EXPECT_EQ(samples[0]["cpuUsage"]["case"].toString(), "warmingUp");
    const QJsonObject last = samples[2]["cpuUsage"].toObject();
    ASSERT_EQ(last["case"].toString(), "available");
    EXPECT_EQ(last["source"].toString(), "Linux /proc/stat CPU ticks");
    const std::optional<double> measured = machine.usageBetween(samples[1]["timestamp"].toDouble(),
                                                                samples[2]["timestamp"].toDouble());
    ASSERT_TRUE(measured.has_value());
    EXPECT_NEAR(last["value"].toDouble(), *measured, 10.0);
}

TEST(ReportTool, TextModeShowsEveryReadingRow)
{
    const ProcessResult result = runReport({"--samples", "1", "--interval", "0.1"});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    const QString text = QString::fromUtf8(result.out);
    for (const char *title :
         {"CPU 使用率", "热状态", "温度", "风扇", "GPU", "磁盘", "内存", "网络"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(title))) << title;
    EXPECT_TRUE(text.contains("Linux /proc/meminfo"));
}

} // namespace
