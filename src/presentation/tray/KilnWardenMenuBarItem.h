#pragma once

#include "dashboard/MenuBarPresentation.h"
#include "presentation/tray/MenuBarPanelPopup.h"

#include <QObject>
#include <QRect>
#include <QSystemTrayIcon>

#include <functional>

class DashboardStore;
class QMenu;

// The menu bar item of a Linux desktop: a tray icon (StatusNotifierItem over
// D-Bus where the desktop offers it, XEmbed otherwise) whose click opens the
// panel as a popup beside it, and whose context menu offers the panel's two
// actions. It follows the store once per tick: each change recomputes the
// presentation, and the icon, tooltip and an open panel change only when it
// changed. While monitoring is paused it shows that, with no figures.
//
// A desktop may have no tray, or lose it while the program runs (a panel
// restarts). Qt says so by no signal, and asking is a round trip to the X
// server, so the item asks `isTrayAvailable` at start, on every tenth tick (20 s
// at the 2 s interval) and whenever the application needs the answer now
// (checkTrayAvailability). It shows or hides the icon accordingly and says so
// through `trayAvailabilityChanged`, so that the application can offer the
// panel from the dashboard instead.
class KilnWardenMenuBarItem final : public QObject {
    Q_OBJECT

public:
    using TrayAvailability = std::function<bool()>;

    explicit KilnWardenMenuBarItem(DashboardStore &store,
                                   TrayAvailability isTrayAvailable = defaultTrayAvailability(),
                                   QObject *parent = nullptr);
    ~KilnWardenMenuBarItem() override;

    static TrayAvailability defaultTrayAvailability();

    bool isTrayAvailable() const { return m_trayAvailable; }
    const MenuBarPresentation &presentation() const { return m_presentation; }
    QSystemTrayIcon *trayIcon() const { return m_icon; }
    QMenu *contextMenu() const { return m_menu; }
    MenuBarPanelPopup *popup() const { return m_popup; }

    // Opens the panel beside `anchor` (global coordinates), e.g. under the
    // dashboard's brand block when there is no tray.
    void openPanelAt(const QRect &anchor,
                     MenuBarPanelAlignment alignment = MenuBarPanelAlignment::centred);
    void closePanel();
    // Asks the desktop now whether it has a tray.
    void checkTrayAvailability();

    // The ticks between two questions about the tray.
    static constexpr int trayCheckTicks = 10;

signals:
    void openDashboardRequested();
    void quitRequested();
    void trayAvailabilityChanged(bool available);

private:
    MenuBarPresentation currentPresentation() const;
    void refresh();
    void refreshIcon();
    void activate(QSystemTrayIcon::ActivationReason reason);

    DashboardStore &m_store;
    TrayAvailability m_isTrayAvailable;
    bool m_trayAvailable = false;
    int m_ticksSinceTrayCheck = 0;
    MenuBarPresentation m_presentation;
    QSystemTrayIcon *m_icon;
    QMenu *m_menu;
    MenuBarPanelPopup *m_popup;
};
