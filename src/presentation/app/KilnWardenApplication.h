#pragma once

#include "dashboard/DashboardModel.h"
#include "presentation/tray/KilnWardenMenuBarItem.h"

#include <QObject>
#include <QSizeF>
#include <QStringList>

#include <memory>
#include <optional>

class DashboardStore;
class DashboardWindow;

// The program's composition root and what stands for an application delegate:
// it builds the one store on the concrete probes, starts monitoring, shows
// the dashboard window (creating it once), hosts the menu bar item, and stops
// monitoring when the application quits. It holds no diagnosis logic.
//
// The menu bar item is a tray icon. On a desktop without a tray (or after the
// tray went away) the sidebar's brand block opens the same panel instead, and
// closing the window quits: a hidden window without a tray icon could never
// be reached again.
class KilnWardenApplication final : public QObject {
    Q_OBJECT

public:
    // `arguments` is the whole argument list (the program name first).
    explicit KilnWardenApplication(QStringList arguments, QObject *parent = nullptr);
    // For tests and tools: the same shell around a store built elsewhere.
    KilnWardenApplication(std::unique_ptr<DashboardStore> store, QStringList arguments,
                          QObject *parent = nullptr);
    ~KilnWardenApplication() override;

    // Before launch: how the menu bar item asks for the desktop's tray.
    void setTrayAvailability(KilnWardenMenuBarItem::TrayAvailability isTrayAvailable);
    // Puts up the menu bar item, starts monitoring and shows the window: what
    // a launch does.
    void launch();
    // The one way to show the window: creates it on first use, then brings it
    // to the front with its size, place and page as the user left them.
    void showDashboardWindow();
    // Stops monitoring; connected to the application's aboutToQuit.
    void terminate();

    DashboardStore &store() const { return *m_store; }
    DashboardWindow *dashboardWindow() const { return m_window; }
    // Null until launch.
    KilnWardenMenuBarItem *menuBarItem() const { return m_menuBarItem; }
    // Opens the panel under the sidebar's brand block; only without a tray.
    void openPanelFromDashboard();
    // The content size the window gets when it is first created.
    QSize initialWindowSize() const;

signals:
    // The user asked to quit (Ctrl+Q, the panel's "退出", or closing the
    // window without a tray); the event loop's owner ends it.
    void quitRequested();

private:
    void windowClosed();
    void updateBrandAffordance();

    std::unique_ptr<DashboardStore> m_store;
    QStringList m_arguments;
    DashboardWindow *m_window = nullptr;
    KilnWardenMenuBarItem *m_menuBarItem = nullptr;
    KilnWardenMenuBarItem::TrayAvailability m_isTrayAvailable =
        KilnWardenMenuBarItem::defaultTrayAvailability();
};
