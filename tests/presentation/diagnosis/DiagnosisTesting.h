#pragma once

// Shared by the live diagnosis page's tests: a store over a made-up
// identity reader and a recording signal sender (no process is touched),
// made-up samples fed through `ingest`, and the real window around the page.

#include "dashboard/DashboardStore.h"
#include "presentation/PresentationTesting.h"
#include "presentation/diagnosis/LiveDiagnosisPage.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/DashboardWindow.h"
#include "snapshot/DashboardSnapshot.h"

#include <memory>

// A process of the current user, as makeProcess, with its own command line
// and project.
inline ProcessMetric madeUpProcess(pid_t pid, pid_t parent, const QString &name, double cpu,
                                   const QString &command = {}, const QString &project = {})
{
    ProcessMetric process = makeProcess(pid, parent, name, cpu);
    if (!command.isEmpty())
        process.command.command = command;
    if (!project.isEmpty())
        process.command.project = project;
    return process;
}

class DiagnosisStoreTest : public ::testing::Test {
protected:
    DiagnosisStoreTest() { installDashboardAccessibility(); }
    ~DiagnosisStoreTest() override { m_window.reset(); }

    // One sample with these processes, 2 s after the last one. Ranking needs
    // two samples with processes, so `ingestTwice` is what most tests want.
    void ingest(const QList<ProcessMetric> &processes, std::optional<double> cpu = 40.0)
    {
        clock += 2.0;
        SystemMetricSample sample = makeSample(clock);
        sample.cpuUsage = readingOf(cpu);
        sample.processMetrics = processes;
        store->ingest(sample);
    }
    void ingestTwice(const QList<ProcessMetric> &processes)
    {
        ingest(processes);
        ingest(processes);
    }

    // The real window on the live diagnosis page at `size`, shown.
    LiveDiagnosisPage *openPage(QSize size = {1440, 900})
    {
        m_window = std::make_unique<DashboardWindow>(*store, DashboardSection::liveDiagnosis,
                                                     [this] { ++terminalsOpened; });
        m_window->resize(size);
        m_window->show();
        settleEvents(20);
        return qobject_cast<LiveDiagnosisPage *>(m_window->shell()->currentPage());
    }
    template <typename T = QWidget> T *find(const QString &identifier) const
    {
        return m_window ? m_window->findChild<T *>(identifier) : nullptr;
    }
    // The task whose target process has `pid`.
    const DashboardTask *taskWithTarget(pid_t pid) const
    {
        for (const DashboardTask &task : store->allTasks()) {
            if (task.targetProcess.pid == pid)
                return &task;
        }
        return nullptr;
    }
    // Waits for the outcome of a confirmed request.
    bool waitForOutcome()
    {
        return QTest::qWaitFor([&] {
            const auto status = store->terminationStatus();
            return status && status->phase != DashboardTerminationPhase::verifying;
        });
    }

    std::shared_ptr<FakeProcessIdentityReader> reader =
        std::make_shared<FakeProcessIdentityReader>();
    std::shared_ptr<RecordingSignalSender> sender = std::make_shared<RecordingSignalSender>();
    std::unique_ptr<DashboardStore> store = makeStoreForTesting(
        nullptr, 2.0, makeFakeTerminationController(reader, sender, {0.01, 0.01}));
    double clock = 1000.0;
    int terminalsOpened = 0;
    std::unique_ptr<DashboardWindow> m_window;
};
