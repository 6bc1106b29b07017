// The report's building blocks without running the tool: its options, its
// table, its JSON records and its text over a store fed made-up samples.

#include "presentation/report/ReportJson.h"
#include "presentation/report/ReportOptions.h"
#include "presentation/report/ReportTasks.h"
#include "presentation/report/ReportText.h"
#include "presentation/report/TextTable.h"
#include "support/FixtureTable.h"
#include "support/Fixtures.h"
#include "support/StoreTesting.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

// What the report must write, kept under tests/fixtures.
QByteArray fixtureBytes(const QString &name)
{
    QFile file(fixturePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}
QJsonObject fixtureJson(const QString &name)
{
    return QJsonDocument::fromJson(fixtureBytes(u"report-json/"_s + name)).object();
}

TEST(ReportOptions, ParsesOrNamesTheWrongOption)
{
    EXPECT_EQ(parseReportOptions({}).options, (ReportOptions{2, 2.0, false, false}));
    for (const FixtureRow &row : fixtureTable(QStringLiteral("report-options"))) {
        const ReportOptionsResult result = parseReportOptions(row.text(0)->split(QLatin1Char(' ')));
        if (row.fields[1] == "error") {
            EXPECT_EQ(result.options, std::nullopt) << row.where;
            EXPECT_TRUE(result.error.contains(*row.text(2))) << result.error.toStdString();
            EXPECT_FALSE(result.error.contains('\n')) << row.where;
        } else {
            EXPECT_EQ(result.options,
                      (ReportOptions{row.fields[1].toInt(), row.fields[2].toDouble(),
                                     row.fields[3] == "1", row.fields[4] == "1"}))
                << row.where;
        }
    }
}

TEST(TextTable, WideCharactersTakeTwoCells)
{
    TextTable table({"读数", "值"});
    table.addRow({"CPU", "5%"});
    table.addRow({"温度", "不可用"});
    EXPECT_EQ(table.render(), "读数  值\n----  ------\nCPU   5%\n温度  不可用\n");
}

TEST(ReportJson, IncidentNamesFieldsAsTheRecordAndWritesAbsentValuesAsNull)
{
    const QUuid id = QUuid::fromString(u"{0f8fad5b-d9cb-469f-a165-70867728950e}"_s);
    const DashboardIncident incident{
        .id = id,
        .startedAt = TimePoint::fromSecondsSince1970(100.0),
        .endedAt = std::nullopt,
        .application = u"cargo"_s,
        .detail = u"Rust 构建"_s,
        .peakCPU = 187.5,
        .peakTemperature = std::nullopt,
        .status = DashboardIncidentStatus::recoveredWithoutAction,
        .action = u"结束 cargo 构建"_s,
        .actionAt = TimePoint::fromSecondsSince1970(101.5),
        .points = {{TimePoint::fromSecondsSince1970(100.0), 50.0, std::nullopt, 1800.0}}};
    EXPECT_EQ(incidentJson(incident), fixtureJson(u"incident.json"_s));
}

TEST(ReportJson, MenuBarWritesStateAsCaseNameAndTheNamedTask)
{
    MenuBarPresentation presentation;
    presentation.state = MenuBarPresentationState::actionRecommended;
    presentation.fan = {"fan", "风扇", "受限", u"权限受限"_s};
    presentation.primaryTask = MenuBarPresentationTask{"vite", "42%", "3 分钟"};
    presentation.remainingAttentionTaskCount = 2;
    EXPECT_EQ(menuBarPresentationJson(presentation), fixtureJson(u"menu-bar.json"_s));
}

// Twelve processes, so that the table keeps the ten busiest, busiest first.
TEST(ReportText, EveryReadingTheBusiestProcessesTheMenuBarAndAnEmptyIncidentLog)
{
    auto store = makeStoreForTesting();
    SystemMetricSample sample = makeSample(1000.0);
    sample.cpuUsage = SensorReading<double>::available(50.0, "test");
    sample.temperatureCelsius = SensorReading<double>::available(60.0, "test");
    sample.fanRPM = SensorReading<double>::permissionDenied("no access");
    for (int i = 0; i < 12; ++i)
        sample.processMetrics.append(makeProcess(100 + i, 1, u"p%1"_s.arg(i), i * 7 % 12));
    store->ingest(sample);
    EXPECT_EQ(reportText(*store, 1),
              QString::fromUtf8(fixtureBytes(u"report-text/one-sample.txt"_s)));
}

// The terminal reads the process table: a process's own texts reach it
// printable. The JSON keeps them, escaped, so a program reading it gets
// them back whole and the terminal still gets no control.
TEST(ReportText, ProcessTextsPrintAsQuestionMarksAndTheJsonEscapesThem)
{
    const QString raw = u"e\x1b]0;pwned\a\u202E9565\u2028x\u009b"_s;
    ProcessMetric process = makeProcess(9565, 1, raw, 50.0);
    process.command = {raw, raw};
    SystemMetricSample sample = makeSample(1000.0);
    sample.processMetrics = {process};
    auto store = makeStoreForTesting();
    store->ingest(sample);

    const QString text = reportText(*store, 1);
    EXPECT_TRUE(text.contains(u"e?]0;pwned??9565?x?"_s)) << text.toStdString();
    for (const char16_t forging : {u'\x1b', u'\a', u'\u202E', u'\u2028', u'\u009b'})
        EXPECT_FALSE(text.contains(QChar(forging))) << int(forging);

    const QByteArray json = compactJson(processMetricJson(process));
    for (const QChar character : QString::fromUtf8(json))
        EXPECT_TRUE(character.unicode() >= 0x20 && character.unicode() < 0x7f) << json.data();
    const QJsonObject parsed = QJsonDocument::fromJson(json).object();
    EXPECT_EQ(parsed["name"].toString(), raw);
    EXPECT_EQ(parsed["command"]["project"].toString(), raw);
}

// A test runner under an idle shell, and an idle process of its own.
SystemMetricSample runnerSample(double seconds, double runnerCPU)
{
    ProcessMetric runner = makeProcess(11, 10, "pytest", runnerCPU);
    runner.command.project = u"kiln"_s;
    SystemMetricSample sample = makeSample(seconds);
    sample.processMetrics = {makeProcess(10, 1, "bash"), runner, makeProcess(12, 10, "sleep"),
                             makeProcess(20, 1, "idle")};
    return sample;
}

TEST(ReportTasks, TextAndJsonShowTheRankedSourcesAndTheSelection)
{
    auto store = makeStoreForTesting();
    // One sample ranks nothing yet, and the text says why.
    store->ingest(runnerSample(100, 0.0));
    EXPECT_TRUE(reportText(*store, 1).contains(u"暂无可排序的负载来源"_s));
    EXPECT_TRUE(reportStateJson(*store)["allTasks"].toArray().isEmpty());
    EXPECT_EQ(reportStateJson(*store)["selectedTaskID"].toString(), QString());
    store->ingest(runnerSample(102, 97.0));

    EXPECT_EQ(loadSourcesSection(*store),
              QString::fromUtf8(fixtureBytes(u"report-text/load-sources.txt"_s)));
    EXPECT_EQ(reportStateJson(*store), fixtureJson(u"state.json"_s));
    EXPECT_EQ(sampleJson(*store->latestSystemSample()), fixtureJson(u"sample.json"_s));
}

} // namespace
