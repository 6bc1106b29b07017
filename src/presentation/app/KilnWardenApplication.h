#pragma once

#include "dashboard/DashboardModel.h"

#include <QObject>
#include <QSizeF>
#include <QStringList>

#include <memory>
#include <optional>

class DashboardStore;
class DashboardWindow;

// The program's composition root and what stands for an application delegate:
// it builds the one store on the concrete probes, starts monitoring, shows
// the dashboard window (creating it once), and stops monitoring when the
// application quits. It holds no diagnosis logic.
class KilnWardenApplication final : public QObject {
    Q_OBJECT

public:
    // `arguments` is the whole argument list (the program name first).
    explicit KilnWardenApplication(QStringList arguments, QObject *parent = nullptr);
    // For tests and tools: the same shell around a store built elsewhere.
    KilnWardenApplication(std::unique_ptr<DashboardStore> store, QStringList arguments,
                          QObject *parent = nullptr);
    ~KilnWardenApplication() override;

    // Starts monitoring and shows the window: what a launch does.
    void launch();
    // The one way to show the window: creates it on first use, then brings it
    // to the front with its size, place and page as the user left them.
    void showDashboardWindow();
    // Stops monitoring; connected to the application's aboutToQuit.
    void terminate();

    DashboardStore &store() const { return *m_store; }
    DashboardWindow *dashboardWindow() const { return m_window; }
    // The content size the window gets when it is first created.
    QSizeF initialWindowSize() const;

private:
    std::unique_ptr<DashboardStore> m_store;
    QStringList m_arguments;
    DashboardWindow *m_window = nullptr;
};
