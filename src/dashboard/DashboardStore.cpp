// The store's frame: construction, the held-back notification, and the
// monitoring loop that feeds `ingest`.

#include "dashboard/DashboardStore.h"

#include "process/TaskAssembly.h"

#include <QMetaMethod>
#include <QMetaObject>

DashboardStore::DashboardStore(LiveSystemMonitor monitor,
                               ProcessTerminationController terminationController, QObject *parent)
    : QObject(parent), m_monitor(std::move(monitor)),
      m_terminationController(std::move(terminationController))
{
}

DashboardStore::~DashboardStore()
{
    // Producer threads call back into this object; end them before it goes.
    if (m_monitoringStream)
        m_monitoringStream->terminate();
    for (auto &stream : m_retiredStreams)
        stream->terminate();
    m_monitoringStream.reset();
    m_retiredStreams.clear();
}

DashboardStore::NotificationBatch::NotificationBatch(DashboardStore &store) : m_store(store)
{
    ++m_store.m_batchDepth;
}

DashboardStore::NotificationBatch::~NotificationBatch()
{
    if (--m_store.m_batchDepth == 0)
        m_store.emitPending();
}

void DashboardStore::markChanged(FieldSignal notify)
{
    const int index =
        QMetaMethod::fromSignal(notify).methodIndex() - staticMetaObject.methodOffset();
    Q_ASSERT(index >= 0 && std::size_t(index) < m_pending.size());
    m_pending.set(std::size_t(index));
    if (m_batchDepth == 0)
        emitPending();
}

void DashboardStore::emitPending()
{
    if (m_pending.none())
        return;
    const auto pending = m_pending;
    m_pending.reset();
    for (std::size_t index = 0; index < pending.size(); ++index) {
        if (pending.test(index))
            staticMetaObject.method(staticMetaObject.methodOffset() + int(index))
                .invoke(this, Qt::DirectConnection);
    }
    emit changed();
}

void DashboardStore::startMonitoring()
{
    if (m_monitoringStream)
        return;
    NotificationBatch batch(*this);
    pruneRetiredStreams();
    write(m_isMonitoring, true, &DashboardStore::isMonitoringChanged);
    const quint64 generation = ++m_streamGeneration;
    // Runs on the producer thread: hand the store's thread a queued call. If
    // the store is gone by then, Qt drops the call with the store's events.
    m_monitoringStream = m_monitor.samples([this, generation] {
        QMetaObject::invokeMethod(
            this, [this, generation] { drainStream(generation); }, Qt::QueuedConnection);
    });
}

void DashboardStore::stopMonitoring()
{
    NotificationBatch batch(*this);
    if (m_monitoringStream) {
        m_monitoringStream->terminate();
        m_retiredStreams.push_back(std::move(m_monitoringStream));
        ++m_streamGeneration; // deliveries already queued are dropped
    }
    pruneRetiredStreams();
    // A stopped store holds what it shows and nothing it would only reuse.
    forgetIngestMemos();
    write(m_isMonitoring, false, &DashboardStore::isMonitoringChanged);
}

void DashboardStore::pruneRetiredStreams()
{
    std::erase_if(m_retiredStreams, [](const auto &stream) { return stream->isFinished(); });
}

void DashboardStore::drainStream(quint64 generation)
{
    // The loop: take what the producer queued and ingest it sample by sample.
    // A delivery of a stream that was stopped meanwhile is dropped here.
    if (generation != m_streamGeneration || !m_monitoringStream)
        return;
    for (const SystemMetricSample &sample : m_monitoringStream->takeAll()) {
        if (generation != m_streamGeneration || !m_monitoringStream)
            return;
        ingest(sample);
    }
}
