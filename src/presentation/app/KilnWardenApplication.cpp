#include "presentation/app/KilnWardenApplication.h"

#include "dashboard/DashboardStore.h"
#include "platform/PlatformFactory.h"
#include "platform/TerminalLauncher.h"
#include "presentation/app/DashboardCommandLine.h"
#include "presentation/shell/DashboardWindow.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace {

// The sampling interval of the running program, in seconds.
constexpr double kMonitoringInterval = 2.0;

std::unique_ptr<DashboardStore> makeMachineStore()
{
    // In this order: the probes and their sampler, the termination controller,
    // the monitor on the sampler, and the store on the monitor and controller.
    auto sampler = makeSystemMetricSampler();
    ProcessTerminationController controller = makeProcessTerminationController();
    LiveSystemMonitor monitor(std::move(sampler), kMonitoringInterval);
    return std::make_unique<DashboardStore>(std::move(monitor), std::move(controller));
}

} // namespace

KilnWardenApplication::KilnWardenApplication(QStringList arguments, QObject *parent)
    : KilnWardenApplication(makeMachineStore(), std::move(arguments), parent)
{
}

KilnWardenApplication::KilnWardenApplication(std::unique_ptr<DashboardStore> store,
                                             QStringList arguments, QObject *parent)
    : QObject(parent), m_store(std::move(store)), m_arguments(std::move(arguments))
{
}

KilnWardenApplication::~KilnWardenApplication()
{
    // The window reads the store: it goes first.
    delete m_window;
    m_window = nullptr;
}

void KilnWardenApplication::launch()
{
    m_store->startMonitoring();
    showDashboardWindow();
}

void KilnWardenApplication::terminate()
{
    m_store->stopMonitoring();
}

QSizeF KilnWardenApplication::initialWindowSize() const
{
    if (const std::optional<QSizeF> requested = parseDashboardSize(m_arguments))
        return *requested;
    QSizeF visible(1440, 900);
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        visible = screen->availableGeometry().size();
    return {std::min(visible.width(), 1440.0), std::min(visible.height(), 900.0)};
}

void KilnWardenApplication::showDashboardWindow()
{
    if (!m_window) {
        m_window = new DashboardWindow(*m_store, parseDashboardPage(m_arguments),
                                       [] { startUserTerminal(); });
        const QSize size = initialWindowSize().toSize();
        m_window->resize(size);
        if (const QScreen *screen = QGuiApplication::primaryScreen()) {
            const QRect available = screen->availableGeometry();
            m_window->move(available.center() - QPoint(size.width() / 2, size.height() / 2));
        }
    }
    if (m_window->isMinimized())
        m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}
