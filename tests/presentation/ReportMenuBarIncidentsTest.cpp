// The report's menu bar and incident sections: their JSON records, the text
// line from a store, and both in a real short run of the tool.

#include "presentation/report/ReportJson.h"
#include "presentation/report/ReportText.h"
#include "support/StoreTesting.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

QByteArray runReport(const QStringList &arguments)
{
    QProcess report;
    report.start(QStringLiteral(KW_REPORT_BINARY), arguments);
    if (!report.waitForFinished(60'000)) {
        report.kill();
        report.waitForFinished();
        ADD_FAILURE() << "the report did not finish";
        return {};
    }
    EXPECT_EQ(report.exitCode(), 0) << report.readAllStandardError().toStdString();
    return report.readAllStandardOutput();
}

TEST(ReportIncidentJson, NamesFieldsAsTheRecordAndWritesAbsentValuesAsNull)
{
    const QUuid id = QUuid::fromString(QStringLiteral("{0f8fad5b-d9cb-469f-a165-70867728950e}"));
    const DashboardIncident incident{
        .id = id,
        .startedAt = TimePoint::fromSecondsSince1970(100.0),
        .endedAt = std::nullopt,
        .application = QStringLiteral("cargo"),
        .detail = QStringLiteral("Rust 构建"),
        .peakCPU = 187.5,
        .peakTemperature = std::nullopt,
        .status = DashboardIncidentStatus::recoveredWithoutAction,
        .action = QStringLiteral("结束 cargo 构建"),
        .actionAt = TimePoint::fromSecondsSince1970(101.5),
        .points = {{TimePoint::fromSecondsSince1970(100.0), 50.0, std::nullopt, 1800.0}},
    };
    const QJsonObject expected{
        {"id", "0f8fad5b-d9cb-469f-a165-70867728950e"},
        {"startedAt", 100.0},
        {"endedAt", QJsonValue::Null},
        {"application", "cargo"},
        {"detail", "Rust 构建"},
        {"peakCPU", 187.5},
        {"peakTemperature", QJsonValue::Null},
        {"status", "recoveredWithoutAction"},
        {"action", "结束 cargo 构建"},
        {"actionAt", 101.5},
        {"points", QJsonArray{QJsonObject{{"timestamp", 100.0},
                                          {"cpu", 50.0},
                                          {"temperature", QJsonValue::Null},
                                          {"fanRPM", 1800.0}}}},
    };
    EXPECT_EQ(incidentJson(incident), expected);
}

TEST(ReportMenuBarJson, WritesStateAsCaseNameAndTheNamedTask)
{
    const MenuBarPresentationMetric fan{"fan", "风扇", "受限", QStringLiteral("权限受限")};
    MenuBarPresentation presentation;
    presentation.state = MenuBarPresentationState::actionRecommended;
    presentation.fan = fan;
    presentation.primaryTask = MenuBarPresentationTask{"vite", "42%", "3 分钟"};
    presentation.remainingAttentionTaskCount = 2;

    const QJsonObject json = menuBarPresentationJson(presentation);
    EXPECT_EQ(json.value("state").toString(), "actionRecommended");
    EXPECT_TRUE(json.value("durationText").isNull());
    EXPECT_TRUE(json.value("statusMessage").isNull());
    EXPECT_EQ(json.value("fan").toObject(), (QJsonObject{{"id", "fan"},
                                                         {"title", "风扇"},
                                                         {"value", "受限"},
                                                         {"accessibilityValue", "权限受限"}}));
    EXPECT_TRUE(json.value("cpu").toObject().value("accessibilityValue").isNull());
    EXPECT_EQ(
        json.value("primaryTask").toObject(),
        (QJsonObject{{"application", "vite"}, {"cpuText", "42%"}, {"runningDuration", "3 分钟"}}));
    EXPECT_EQ(json.value("remainingAttentionTaskCount").toInt(), 2);
}

TEST(ReportText, ShowsTheMenuBarLineAndAnEmptyIncidentLog)
{
    auto store = makeStoreForTesting();
    SystemMetricSample sample = makeSample(1000.0);
    sample.cpuUsage = SensorReading<double>::available(50.0, "test");
    sample.temperatureCelsius = SensorReading<double>::available(80.0, "test");
    sample.fanRPM = SensorReading<double>::permissionDenied("no access");
    store->ingest(sample);

    const QString text = reportText(*store, {sample});
    EXPECT_TRUE(text.contains(QStringLiteral(
        "菜单栏：负载高 · 80°；面板：负载高 · 刚刚出现 · CPU 50% · 温度 80°C · 风扇 受限\n")))
        << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral("本次运行没有升温事件。\n"))) << text.toStdString();
}

TEST(ReportTool, RealRunCarriesTheMenuBarAndTheIncidentList)
{
    const QByteArray output =
        runReport({QStringLiteral("--json"), QStringLiteral("--samples"), QStringLiteral("1"),
                   QStringLiteral("--interval"), QStringLiteral("0.2")});
    QJsonParseError error;
    const QJsonObject report = QJsonDocument::fromJson(output, &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << output.toStdString();

    EXPECT_TRUE(report.value("incidents").isArray());
    const QJsonObject menuBar = report.value("menuBar").toObject();
    const QStringList fields = {"state",
                                "menuTitle",
                                "headline",
                                "durationText",
                                "symbolName",
                                "cpu",
                                "temperature",
                                "fan",
                                "statusMessage",
                                "primaryTask",
                                "remainingAttentionTaskCount"};
    for (const QString &field : fields)
        EXPECT_TRUE(menuBar.contains(field)) << field.toStdString();
    // A sample arrived, so the menu bar is past collecting.
    const QStringList pastCollecting = {"observing", "normal", "highLoad", "actionRecommended"};
    EXPECT_TRUE(pastCollecting.contains(menuBar.value("state").toString()))
        << menuBar.value("state").toString().toStdString();

    const QString text =
        QString::fromUtf8(runReport({QStringLiteral("--samples"), QStringLiteral("1"),
                                     QStringLiteral("--interval"), QStringLiteral("0.2")}));
    EXPECT_TRUE(text.contains(QStringLiteral("菜单栏："))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("升温事件"))) << text.toStdString();
}

} // namespace
