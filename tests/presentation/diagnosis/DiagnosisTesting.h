#pragma once

// Shared by the live diagnosis page's tests: a store over a made-up
// identity reader and a recording signal sender (no process is touched),
// made-up samples fed through `ingest`, and the real window around the page.

#include "dashboard/DashboardStore.h"
#include "presentation/PresentationTesting.h"
#include "presentation/diagnosis/LiveDiagnosisPage.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/shell/DashboardWindow.h"
#include "presentation/snapshot/DashboardSnapshot.h"
#include "support/StoreTesting.h"

#include <QList>

#include <gtest/gtest.h>

#include <memory>

// A process of the current user, as makeProcess, with its own command line
// and project.
ProcessMetric madeUpProcess(pid_t pid, pid_t parent, const QString &name, double cpu,
                            const QString &command = {}, const QString &project = {});

// A chain of `depth` processes under `root` (each the parent of the next),
// pids root, root + 1, ...; the last one does the work.
QList<ProcessMetric> madeUpChain(pid_t root, int depth, const QString &name, double cpu);

class DiagnosisStoreTest : public ::testing::Test {
protected:
    DiagnosisStoreTest();
    ~DiagnosisStoreTest() override;

    // One sample with these processes, 2 s after the last one. Ranking needs
    // two samples with processes, so `ingestTwice` is what most tests want.
    void ingest(const QList<ProcessMetric> &processes, double cpu = 40.0,
                std::optional<double> temperature = std::nullopt);
    void ingestTwice(const QList<ProcessMetric> &processes);

    // The real window on the live diagnosis page at `size`, shown.
    LiveDiagnosisPage *openPage(QSize size = {1440, 900});
    template <typename T = QWidget> T *find(const QString &identifier) const
    {
        return m_window ? m_window->findChild<T *>(identifier) : nullptr;
    }
    // The task whose target process has `pid`.
    const DashboardTask *taskWithTarget(pid_t pid) const;
    // Request and confirm as the dialog would, then wait for the outcome.
    bool waitForOutcome();

    std::shared_ptr<FakeProcessIdentityReader> reader =
        std::make_shared<FakeProcessIdentityReader>();
    std::shared_ptr<RecordingSignalSender> sender = std::make_shared<RecordingSignalSender>();
    std::unique_ptr<DashboardStore> store;
    double clock = 1000.0;
    int terminalsOpened = 0;
    std::unique_ptr<DashboardWindow> m_window;
};
