// The report tool as a user runs it, over the real machine with a spinning
// child that this test starts itself: a shell named pytest that leads a
// session on a terminal of its own, in a project folder of its own and with a
// secret-looking argument. Only that child is signalled.

#include "support/ShellChild.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>

#include <unistd.h>

namespace {

using namespace Qt::StringLiterals;

struct ProcessResult {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

ProcessResult runReport(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(KW_REPORT_BINARY), arguments);
    if (!process.waitForFinished(60'000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "the report did not finish";
    }
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
    EXPECT_TRUE(lines[1].startsWith("用法：kilnwarden-report "));
}

class ReportRun : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_project.isValid());
        // The kernel names a process after the file it runs: a link to the
        // shell makes the spinner a test runner.
        const QString runner = m_project.filePath(u"pytest"_s);
        ASSERT_TRUE(QFile::link(u"/bin/sh"_s, runner));
        m_child.emplace(m_project.path().toLocal8Bit(),
                        std::vector<std::string>{"pytest", "-c", "while :; do :; done",
                                                 "kw-spinner", "serve", "--token=abc123"},
                        ShellChild::Session::ownTerminal, runner.toLocal8Bit());
        ASSERT_TRUE(m_child->started());
    }

    QByteArray output(const QStringList &arguments)
    {
        const ProcessResult result = runReport(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
        EXPECT_FALSE(result.out.contains("abc123"));
        return result.out;
    }
    QString projectName() const { return QFileInfo(m_project.path()).fileName(); }
    QString expectedCommand() const
    {
        return QFileInfo(QFileInfo(u"/bin/sh"_s).canonicalFilePath()).fileName() + u" serve"_s;
    }

    QTemporaryDir m_project{QDir::tempPath() + u"/kw-report-XXXXXX"_s};
    std::optional<ShellChild> m_child;
};

TEST_F(ReportRun, TextShowsEveryReadingTheMenuBarAndTheChildAmongTheTenBusiest)
{
    const QString text = QString::fromUtf8(output({"--samples", "2", "--interval", "1"}));
    for (const char *title : {"CPU 使用率", "热状态", "温度", "风扇", "GPU", "磁盘", "内存", "网络",
                              "Linux /proc/meminfo", "菜单栏：", "升温事件"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(title))) << title;

    // The child's row among the busiest processes: its pid, then its command and project.
    QString childRow;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (line.split(QLatin1Char(' '), Qt::SkipEmptyParts).value(1) ==
            QString::number(m_child->pid()))
            childRow = line;
    }
    ASSERT_FALSE(childRow.isEmpty()) << text.toStdString();
    EXPECT_TRUE(childRow.contains(expectedCommand())) << childRow.toStdString();
    EXPECT_TRUE(childRow.endsWith(projectName())) << childRow.toStdString();
}

TEST_F(ReportRun, JsonCarriesEveryProcessTheReadingsAndTheMenuBar)
{
    const QJsonObject report =
        QJsonDocument::fromJson(output({"--samples", "2", "--interval", "1", "--json"})).object();
    const QJsonArray samples = report["samples"].toArray();
    ASSERT_EQ(samples.size(), 2);

    for (const QJsonValue sample : samples) {
        EXPECT_GT(sample["processMetrics"].toArray().size(), 1);
        for (const QJsonValue process : sample["processMetrics"].toArray())
            EXPECT_EQ(process["userID"].toInteger(), ::getuid()) << "another user's process";
    }
    EXPECT_EQ(samples[0]["cpuUsage"]["case"].toString(), "warmingUp");
    const QJsonObject cpu = samples[1]["cpuUsage"].toObject();
    EXPECT_EQ(cpu["case"].toString(), "available");
    EXPECT_EQ(cpu["source"].toString(), "Linux /proc/stat CPU ticks");

    const QJsonObject network = samples[1]["networkThroughput"].toObject();
    EXPECT_EQ(network["case"].toString(), "available");
    EXPECT_EQ(network["source"].toString(), "getifaddrs");

    EXPECT_TRUE(report.value("incidents").isArray());
    const QJsonObject menuBar = report.value("menuBar").toObject();
    // A sample arrived, so the menu bar is past collecting.
    EXPECT_TRUE((QStringList{"observing", "normal", "highLoad", "actionRecommended"})
                    .contains(menuBar.value("state").toString()));
}

} // namespace
