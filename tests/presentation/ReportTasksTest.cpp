#include "presentation/report/ReportTasks.h"
#include "presentation/report/ReportJson.h"
#include "presentation/report/ReportText.h"
#include "support/StoreTesting.h"

#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

SystemMetricSample sampleWith(double seconds, QList<ProcessMetric> processes)
{
    SystemMetricSample sample = makeSample(seconds);
    sample.processMetrics = std::move(processes);
    return sample;
}

QList<ProcessMetric> runnerAndIdleShell(double runnerCPU)
{
    ProcessMetric runner = makeProcess(11, 10, "pytest", runnerCPU);
    runner.command.project = QStringLiteral("kiln");
    return {makeProcess(10, 1, "bash"), runner, makeProcess(12, 10, "sleep"),
            makeProcess(20, 1, "idle")};
}

TEST(ReportTasksTest, FirstSampleExplainsWhyNothingIsRanked)
{
    auto store = makeStoreForTesting();
    const SystemMetricSample first = sampleWith(100, runnerAndIdleShell(0.0));
    store->ingest(first);
    const QString text = reportText(*store, {first});
    EXPECT_TRUE(text.contains(QStringLiteral("暂无可排序的负载来源"))) << text.toStdString();
    const QJsonObject json = reportJson(*store, {first});
    EXPECT_TRUE(json["allTasks"].toArray().isEmpty());
    EXPECT_EQ(json["selectedTaskID"].toString(), QString());
}

TEST(ReportTasksTest, TextAndJsonShowTheRankedSourcesAndTheSelection)
{
    auto store = makeStoreForTesting();
    const SystemMetricSample first = sampleWith(100, runnerAndIdleShell(0.0));
    const SystemMetricSample second = sampleWith(102, runnerAndIdleShell(97.0));
    store->ingest(first);
    store->ingest(second);

    const QString text = loadSourcesSection(*store);
    for (const char *fragment :
         {"pytest", "test", "97.0%", "30 MB", "0 B/s", "10 秒", "pytest（PID 11）",
          "pytest 正在运行测试任务。", "测试仍在持续占用资源", "high", "idle", "unknown", "low",
          "选中的任务：pytest"}) {
        EXPECT_TRUE(text.contains(QString::fromUtf8(fragment))) << fragment << "\n"
                                                                << text.toStdString();
    }
    EXPECT_TRUE(text.contains(QStringLiteral("pytest · kiln")));
    EXPECT_LT(text.indexOf(QStringLiteral("pytest")), text.indexOf(QStringLiteral("idle")));

    const QJsonObject json = reportJson(*store, {first, second});
    const QJsonArray all = json["allTasks"].toArray();
    ASSERT_EQ(all.size(), 2);
    const QJsonObject task = all[0].toObject();
    EXPECT_EQ(task["kind"].toString(), QStringLiteral("test"));
    EXPECT_EQ(task["targetProcess"]["pid"].toInt(), 11);
    EXPECT_EQ(task["relatedProcessCount"].toInt(), 3);
    EXPECT_EQ(task["diagnosis"]["confidence"].toString(), QStringLiteral("high"));
    const QJsonObject root = task["processTree"][0].toObject();
    EXPECT_EQ(root["name"].toString(), QStringLiteral("bash"));
    EXPECT_EQ(root["children"].toArray().size(), 2);
    EXPECT_TRUE(root["children"][0]["isTarget"].toBool());
    EXPECT_EQ(json["liveTasks"].toArray().size(), 2);
    EXPECT_EQ(json["liveTasks"][0].toString(), task["id"].toString());
    EXPECT_EQ(json["selectedTaskID"].toString(), task["id"].toString());
    EXPECT_EQ(json["selectedProcessID"].toString(), root["children"][0]["id"].toString());
}

} // namespace
