#include "presentation/app/KilnWardenApplication.h"

#include "dashboard/DashboardStore.h"
#include "platform/PlatformFactory.h"
#include "platform/TerminalLauncher.h"
#include "presentation/app/DashboardCommandLine.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/DashboardSidebar.h"
#include "presentation/shell/DashboardWindow.h"
#include "presentation/shell/WindowPlacement.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLayout>
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
    // The window and the menu bar item read the store: they go first.
    delete m_menuBarItem;
    m_menuBarItem = nullptr;
    delete m_window;
    m_window = nullptr;
}

void KilnWardenApplication::setTrayAvailability(
    KilnWardenMenuBarItem::TrayAvailability isTrayAvailable)
{
    m_isTrayAvailable = std::move(isTrayAvailable);
}

void KilnWardenApplication::launch()
{
    if (!m_menuBarItem) {
        m_menuBarItem = new KilnWardenMenuBarItem(*m_store, m_isTrayAvailable);
        connect(m_menuBarItem, &KilnWardenMenuBarItem::openDashboardRequested, this,
                &KilnWardenApplication::showDashboardWindow);
        connect(m_menuBarItem, &KilnWardenMenuBarItem::quitRequested, this,
                &KilnWardenApplication::quitRequested);
        connect(m_menuBarItem, &KilnWardenMenuBarItem::trayAvailabilityChanged, this,
                [this](bool available) {
                    updateBrandAffordance();
                    // A window hidden behind a tray icon that went away would
                    // be out of reach: it comes back.
                    if (!available && m_window && !m_window->isVisible())
                        showDashboardWindow();
                });
    }
    m_store->startMonitoring();
    showDashboardWindow();
}

void KilnWardenApplication::terminate()
{
    m_store->stopMonitoring();
}

QSize KilnWardenApplication::initialWindowSize() const
{
    std::optional<QSize> available;
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        available = screen->availableGeometry().size();
    return initialDashboardContentSize(parseDashboardSize(m_arguments), available);
}

void KilnWardenApplication::windowClosed()
{
    // The item asks about the tray only now and then; a window must not hide
    // behind a tray that went away since.
    if (m_menuBarItem)
        m_menuBarItem->checkTrayAvailability();
    if (!m_menuBarItem || !m_menuBarItem->isTrayAvailable())
        emit quitRequested();
}

void KilnWardenApplication::showDashboardWindow()
{
    if (!m_window) {
        m_window = new DashboardWindow(*m_store, parseDashboardPage(m_arguments),
                                       [] { startUserTerminal(); });
        connect(m_window->shell()->sidebar(), &DashboardSidebar::brandActivated, this,
                &KilnWardenApplication::openPanelFromDashboard);
        connect(m_window, &DashboardWindow::closed, this, &KilnWardenApplication::windowClosed);
        connect(m_window, &DashboardWindow::quitRequested, this,
                &KilnWardenApplication::quitRequested);
        updateBrandAffordance();
        const QSize size = initialWindowSize();
        m_window->resize(size);
        if (const QScreen *screen = QGuiApplication::primaryScreen()) {
            const QRect available = screen->availableGeometry();
            // Centred; a window larger than the screen keeps its top-left
            // corner (and the title bar above it) on screen. QRect::center()
            // rounds down, which put a full-screen window at (-1, -1).
            const QSize room = available.size() - size;
            m_window->move(available.topLeft() +
                           QPoint(std::max(0, room.width() / 2), std::max(0, room.height() / 2)));
            // The default size fills the screen, frame included; a size the
            // user asked for is theirs.
            if (!parseDashboardSize(m_arguments))
                m_window->fitFrameOnceInto(available);
        }
    }
    if (m_window->isMinimized())
        m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void KilnWardenApplication::openPanelFromDashboard()
{
    if (!m_menuBarItem || m_menuBarItem->isTrayAvailable() || !m_window)
        return;
    const QWidget *brand = m_window->shell()->sidebar()->brandBlock();
    // Under the mark and the name, not under the block's empty margins.
    const QRect content = brand->layout() ? brand->layout()->contentsRect() : brand->rect();
    m_menuBarItem->openPanelAt(QRect(brand->mapToGlobal(content.topLeft()), content.size()),
                               MenuBarPanelAlignment::leading);
}

void KilnWardenApplication::updateBrandAffordance()
{
    if (!m_window)
        return;
    // Without a tray the brand block is the way to the panel, and looks it.
    m_window->shell()->sidebar()->setBrandOpensPanel(m_menuBarItem &&
                                                     !m_menuBarItem->isTrayAvailable());
}
