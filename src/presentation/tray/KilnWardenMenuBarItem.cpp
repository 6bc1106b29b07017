#include "presentation/tray/KilnWardenMenuBarItem.h"

#include "dashboard/DashboardStore.h"
#include "presentation/tray/KilnWardenMenuBarLabel.h"
#include "presentation/tray/KilnWardenMenuBarPanel.h"
#include "presentation/tray/MenuBarPanelPopup.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QPalette>

KilnWardenMenuBarItem::KilnWardenMenuBarItem(DashboardStore &store,
                                             TrayAvailability isTrayAvailable, QObject *parent)
    : QObject(parent), m_store(store), m_isTrayAvailable(std::move(isTrayAvailable)),
      m_presentation(currentPresentation())
{
    m_popup = new MenuBarPanelPopup;
    m_popup->setPresentation(m_presentation);
    // Leaving the popup closes it; the window it opens comes to the front.
    connect(m_popup->panel(), &KilnWardenMenuBarPanel::openDashboardRequested, this, [this] {
        closePanel();
        emit openDashboardRequested();
    });
    connect(m_popup->panel(), &KilnWardenMenuBarPanel::quitRequested, this, [this] {
        closePanel();
        emit quitRequested();
    });

    m_menu = new QMenu;
    m_menu->addAction(tr("打开仪表盘"), this, &KilnWardenMenuBarItem::openDashboardRequested);
    m_menu->addAction(tr("退出"), this, &KilnWardenMenuBarItem::quitRequested);

    m_icon = new QSystemTrayIcon(this);
    m_icon->setContextMenu(m_menu);
    connect(m_icon, &QSystemTrayIcon::activated, this, &KilnWardenMenuBarItem::activate);
    refreshIcon();

    connect(&m_store, &DashboardStore::changed, this, &KilnWardenMenuBarItem::refresh);
    // The icon's ink follows the desktop's palette.
    connect(m_popup, &MenuBarPanelPopup::appearanceChanged, this,
            &KilnWardenMenuBarItem::refreshIcon);
    checkTrayAvailability();
}

KilnWardenMenuBarItem::~KilnWardenMenuBarItem()
{
    delete m_popup;
    delete m_menu;
}

KilnWardenMenuBarItem::TrayAvailability KilnWardenMenuBarItem::defaultTrayAvailability()
{
    return [] { return QSystemTrayIcon::isSystemTrayAvailable(); };
}

void KilnWardenMenuBarItem::refresh()
{
    if (++m_ticksSinceTrayCheck >= trayCheckTicks)
        checkTrayAvailability();
    MenuBarPresentation presentation = currentPresentation();
    if (presentation == m_presentation)
        return;
    const bool stateChanged = presentation.state != m_presentation.state;
    m_presentation = std::move(presentation);
    if (stateChanged)
        refreshIcon();
    m_icon->setToolTip(menuBarLabelAccessibilityText(m_presentation));
    m_popup->setPresentation(m_presentation);
}

MenuBarPresentation KilnWardenMenuBarItem::currentPresentation() const
{
    // The latest sample stays in the store while monitoring is off; the tray
    // must not pass it off as the present.
    return m_store.isMonitoring() ? m_store.menuBarPresentation() : pausedMenuBarPresentation();
}

void KilnWardenMenuBarItem::checkTrayAvailability()
{
    m_ticksSinceTrayCheck = 0;
    const bool available = m_isTrayAvailable && m_isTrayAvailable();
    if (available == m_trayAvailable && m_icon->isVisible() == available)
        return;
    const bool changed = available != m_trayAvailable;
    m_trayAvailable = available;
    m_icon->setVisible(available);
    if (changed)
        emit trayAvailabilityChanged(available);
}

void KilnWardenMenuBarItem::refreshIcon()
{
    const QColor ink = QGuiApplication::palette().color(QPalette::Active, QPalette::WindowText);
    m_icon->setIcon(menuBarLabelIcon(m_presentation.state, ink));
    m_icon->setToolTip(menuBarLabelAccessibilityText(m_presentation));
}

void KilnWardenMenuBarItem::activate(QSystemTrayIcon::ActivationReason reason)
{
    if (reason != QSystemTrayIcon::Trigger && reason != QSystemTrayIcon::DoubleClick)
        return;
    if (m_popup->isVisible()) {
        closePanel();
        return;
    }
    if (reason == QSystemTrayIcon::Trigger && m_popup->closedMomentsAgo())
        return;
    // A StatusNotifierItem host does not say where the icon is; the pointer
    // is on it when it is clicked.
    QRect anchor = m_icon->geometry();
    if (!anchor.isValid() || anchor.isEmpty())
        anchor = QRect(QCursor::pos(), QSize(1, 1));
    openPanelAt(anchor);
}

void KilnWardenMenuBarItem::openPanelAt(const QRect &anchor, MenuBarPanelAlignment alignment)
{
    m_popup->setPresentation(m_presentation);
    m_popup->openAt(anchor, alignment);
}

void KilnWardenMenuBarItem::closePanel()
{
    m_popup->close();
}
