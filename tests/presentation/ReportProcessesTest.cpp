// The report tool's process output, over the real machine with a spinning
// child that this test starts with a secret-looking argument.

#include "support/MachineTicks.h"
#include "support/ShellChild.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

QByteArray runReport(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(KW_REPORT_BINARY), arguments);
    process.waitForFinished(60000);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

class ReportProcessesTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_project.isValid());
        m_child.emplace(m_project.path().toLocal8Bit(),
                        spinningShellArguments({"serve", "--token=abc123"}));
        ASSERT_TRUE(m_child->started());
    }

    QString projectName() const { return QFileInfo(m_project.path()).fileName(); }
    QString expectedCommand() const
    {
        return QFileInfo(QFileInfo(QStringLiteral("/bin/sh")).canonicalFilePath()).fileName() +
               QStringLiteral(" serve");
    }

    QTemporaryDir m_project{QDir::tempPath() + QStringLiteral("/kw-report-XXXXXX")};
    std::optional<ShellChild> m_child;
};

TEST_F(ReportProcessesTest, TextListsTheSpinningChildAmongTheTenBusiest)
{
    const QString text = QString::fromUtf8(runReport({"--samples", "2", "--interval", "1"}));
    EXPECT_FALSE(text.contains(QStringLiteral("abc123")));

    const qsizetype section = text.indexOf(QStringLiteral("最忙的进程"));
    ASSERT_GE(section, 0) << text.toStdString();
    // The section ends at the first blank line; other sections follow it.
    const qsizetype end = text.indexOf(QStringLiteral("\n\n"), section);
    const QStringList lines = text.mid(section, end < 0 ? -1 : end - section)
                                  .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_GE(lines.size(), 3);
    for (const char *title : {"进程", "PID", "CPU", "内存", "磁盘", "运行时长", "安全命令", "项目"})
        EXPECT_TRUE(lines[1].contains(QString::fromUtf8(title))) << title;
    const qsizetype rows = lines.size() - 3; // title, header, rule
    EXPECT_GE(rows, 1);
    EXPECT_LE(rows, 10);

    // Busiest first: the CPU column never rises down the table.
    const QRegularExpression cpuColumn(QStringLiteral(" (\\d+\\.\\d)% "));
    double previousCpu = 1e9;
    for (const QString &line : lines.mid(3)) {
        const QRegularExpressionMatch match = cpuColumn.match(line);
        ASSERT_TRUE(match.hasMatch()) << line.toStdString();
        const double cpu = match.captured(1).toDouble();
        EXPECT_LE(cpu, previousCpu) << line.toStdString();
        previousCpu = cpu;
    }

    const QString pid = QString::number(m_child->pid());
    QString childRow;
    for (const QString &line : lines.mid(3)) {
        if (line.split(QLatin1Char(' '), Qt::SkipEmptyParts).value(1) == pid)
            childRow = line;
    }
    ASSERT_FALSE(childRow.isEmpty()) << text.toStdString();
    EXPECT_TRUE(childRow.contains(expectedCommand())) << childRow.toStdString();
    EXPECT_TRUE(childRow.endsWith(projectName())) << childRow.toStdString();
}

TEST_F(ReportProcessesTest, JsonCarriesEveryProcessWithAllItsFields)
{
    const MachineTickRecorder recorder(m_child->pid());
    const QByteArray json = runReport({"--samples", "2", "--interval", "0.5", "--json"});
    EXPECT_FALSE(json.contains("abc123"));
    const QJsonArray samples = QJsonDocument::fromJson(json)[QStringLiteral("samples")].toArray();
    ASSERT_EQ(samples.size(), 2);

    for (const QJsonValue sample : samples) {
        const QJsonArray processes = sample[QStringLiteral("processMetrics")].toArray();
        EXPECT_GT(processes.size(), 1);
        QJsonObject child;
        for (const QJsonValue process : processes) {
            const QJsonObject object = process.toObject();
            EXPECT_EQ(object.keys(),
                      (QStringList{"applicationName", "applicationPath", "command", "controlGroup",
                                   "cpuPercent", "diskBytesPerSecond", "duration", "identity",
                                   "isServiceManager", "leadsTerminalSession", "name", "parentPID",
                                   "processGroupID", "residentBytes", "userID"}));
            EXPECT_EQ(object[QStringLiteral("identity")].toObject().keys(),
                      (QStringList{"executablePath", "pid", "startTime"}));
            EXPECT_EQ(object[QStringLiteral("command")].toObject().keys(),
                      (QStringList{"command", "project"}));
            if (object[QStringLiteral("identity")][QStringLiteral("pid")].toInteger() ==
                m_child->pid())
                child = object;
        }
        ASSERT_FALSE(child.isEmpty());
        EXPECT_EQ(child[QStringLiteral("command")][QStringLiteral("command")].toString(),
                  expectedCommand());
        EXPECT_EQ(child[QStringLiteral("command")][QStringLiteral("project")].toString(),
                  projectName());
        EXPECT_EQ(child[QStringLiteral("parentPID")].toInteger(), ::getpid());
        EXPECT_EQ(child[QStringLiteral("userID")].toInteger(), ::getuid());
        EXPECT_TRUE(child[QStringLiteral("applicationPath")].isNull());
        EXPECT_GT(child[QStringLiteral("residentBytes")].toInteger(), 0);
    }
    const QJsonObject lastChild = [&] {
        for (const QJsonValue process : samples[1][QStringLiteral("processMetrics")].toArray()) {
            if (process[QStringLiteral("identity")][QStringLiteral("pid")].toInteger() ==
                m_child->pid())
                return process.toObject();
        }
        return QJsonObject();
    }();
    // The child's share as its own CPU time over the report's interval says.
    const std::optional<double> measured =
        recorder.processPercentBetween(samples[0][QStringLiteral("timestamp")].toDouble(),
                                       samples[1][QStringLiteral("timestamp")].toDouble());
    ASSERT_TRUE(measured.has_value());
    EXPECT_NEAR(lastChild[QStringLiteral("cpuPercent")].toDouble(), *measured, 15.0);
}

} // namespace
