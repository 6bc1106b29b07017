// The report tool's menu bar and incident sections, from a real short run.

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

TEST(ReportMenuBarAndIncidents, JsonCarriesTheMenuBarAndTheIncidentList)
{
    const QByteArray output = runReport(
        {QStringLiteral("--json"), QStringLiteral("--samples"), QStringLiteral("1"),
         QStringLiteral("--interval"), QStringLiteral("0.2")});
    QJsonParseError error;
    const QJsonObject report = QJsonDocument::fromJson(output, &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << output.toStdString();

    ASSERT_TRUE(report.value("incidents").isArray());
    const QJsonObject menuBar = report.value("menuBar").toObject();
    const QStringList fields = {"state",       "menuTitle",     "headline",    "durationText",
                                "symbolName",  "cpu",           "temperature", "fan",
                                "statusMessage", "primaryTask", "remainingAttentionTaskCount"};
    for (const QString &field : fields)
        EXPECT_TRUE(menuBar.contains(field)) << field.toStdString();
    const QStringList states = {"collecting", "observing", "normal", "highLoad",
                                "actionRecommended"};
    EXPECT_TRUE(states.contains(menuBar.value("state").toString()))
        << menuBar.value("state").toString().toStdString();
    // A sample arrived, so the menu bar is past collecting.
    EXPECT_NE(menuBar.value("state").toString(), "collecting");
    EXPECT_FALSE(menuBar.value("menuTitle").toString().isEmpty());

    const QStringList ids = {"cpu", "temperature", "fan"};
    for (const QString &id : ids) {
        const QJsonObject metric = menuBar.value(id).toObject();
        EXPECT_EQ(metric.value("id").toString(), id);
        EXPECT_TRUE(metric.contains("accessibilityValue")) << id.toStdString();
        EXPECT_FALSE(metric.value("value").toString().isEmpty()) << id.toStdString();
    }
}

TEST(ReportMenuBarAndIncidents, TextShowsTheMenuBarLineAndTheIncidentSection)
{
    const QString output = QString::fromUtf8(runReport(
        {QStringLiteral("--samples"), QStringLiteral("1"), QStringLiteral("--interval"),
         QStringLiteral("0.2")}));
    EXPECT_TRUE(output.contains(QStringLiteral("菜单栏："))) << output.toStdString();
    EXPECT_TRUE(output.contains(QStringLiteral("升温事件"))) << output.toStdString();
}

} // namespace
