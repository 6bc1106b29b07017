#pragma once

#include "dashboard/DashboardModel.h"

#include <QWidget>

#include <functional>

class DashboardShell;
class DashboardStore;
class TerminationConfirmationDialog;

// The dashboard's one window. Created once and kept: closing it only hides
// it, and it comes back with the same size, place and page.
class DashboardWindow final : public QWidget {
    Q_OBJECT

public:
    DashboardWindow(DashboardStore &store, DashboardSection initialSection,
                    std::function<void()> openTerminal, QWidget *parent = nullptr);

    DashboardShell *shell() const { return m_shell; }
    TerminationConfirmationDialog *confirmationDialog() const { return m_dialog; }

private:
    DashboardShell *m_shell;
    TerminationConfirmationDialog *m_dialog;
};
