#pragma once

#include "presentation/shell/DashboardSection.h"

#include <QRect>
#include <QWidget>

#include <functional>

class DashboardShell;
class DashboardStore;
class TerminationConfirmationDialog;

// The dashboard's one window. Created once and kept: closing it only hides
// it, and it comes back with the same size, place and page. Ctrl+W closes it
// and Ctrl+Q asks to quit, as in every Linux desktop application; what a
// close means (hide or quit) is the application's to decide.
class DashboardWindow final : public QWidget {
    Q_OBJECT

public:
    DashboardWindow(DashboardStore &store, DashboardSection initialSection,
                    std::function<void()> openTerminal, QWidget *parent = nullptr);

    DashboardShell *shell() const { return m_shell; }
    TerminationConfirmationDialog *confirmationDialog() const { return m_dialog; }

    // Once the window manager has framed the window, shrinks and moves it so
    // that the frame, title bar included, lies inside `available`. The frame
    // is known only after the window is shown (X11 tells it after mapping).
    void fitFrameOnceInto(const QRect &available);

signals:
    void closed();
    void quitRequested();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool event(QEvent *event) override;

private:
    DashboardShell *m_shell;
    TerminationConfirmationDialog *m_dialog;
    QRect m_fitArea;
};
