#include "DiagnosisTesting.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/snapshot/DashboardSnapshot.h"

#include <QTest>

ProcessMetric madeUpProcess(pid_t pid, pid_t parent, const QString &name, double cpu,
                            const QString &command, const QString &project)
{
    ProcessMetric process = makeProcess(pid, parent, name, cpu);
    if (!command.isEmpty())
        process.command.command = command;
    if (!project.isEmpty())
        process.command.project = project;
    return process;
}

QList<ProcessMetric> madeUpChain(pid_t root, int depth, const QString &name, double cpu)
{
    QList<ProcessMetric> chain;
    for (int level = 0; level < depth; ++level) {
        chain.append(makeProcess(root + level, level == 0 ? 1 : root + level - 1, name,
                                 level == depth - 1 ? cpu : 0.1));
    }
    return chain;
}

DiagnosisStoreTest::DiagnosisStoreTest()
    : store(makeStoreForTesting(nullptr, 2.0,
                                makeFakeTerminationController(reader, sender, {0.01, 0.01})))
{
    installDashboardAccessibility();
}

DiagnosisStoreTest::~DiagnosisStoreTest()
{
    m_window.reset();
}

void DiagnosisStoreTest::ingest(const QList<ProcessMetric> &processes, double cpu,
                                std::optional<double> temperature)
{
    clock += 2.0;
    SystemMetricSample sample = makeSample(clock);
    sample.cpuUsage = SensorReading<double>::available(cpu, QStringLiteral("test"));
    if (temperature) {
        sample.temperatureCelsius =
            SensorReading<double>::available(*temperature, QStringLiteral("test"));
    }
    sample.processMetrics = processes;
    store->ingest(sample);
}

void DiagnosisStoreTest::ingestTwice(const QList<ProcessMetric> &processes)
{
    ingest(processes);
    ingest(processes);
}

LiveDiagnosisPage *DiagnosisStoreTest::openPage(QSize size)
{
    m_window = std::make_unique<DashboardWindow>(*store, DashboardSection::liveDiagnosis,
                                                 [this] { ++terminalsOpened; });
    m_window->resize(size);
    m_window->show();
    settleEvents(20);
    return qobject_cast<LiveDiagnosisPage *>(m_window->shell()->currentPage());
}

const DashboardTask *DiagnosisStoreTest::taskWithTarget(pid_t pid) const
{
    for (const DashboardTask &task : store->allTasks()) {
        if (task.targetProcess.pid == pid)
            return &task;
    }
    return nullptr;
}

bool DiagnosisStoreTest::waitForOutcome()
{
    return QTest::qWaitFor(
        [&] {
            return store->terminationStatus() &&
                   store->terminationStatus()->phase != DashboardTerminationPhase::verifying;
        },
        5000);
}
