#include "presentation/shell/DashboardWindow.h"

#include "presentation/kit/KilnWardenMark.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/TerminationConfirmationDialog.h"

DashboardWindow::DashboardWindow(DashboardStore &store, DashboardSection initialSection,
                                 std::function<void()> openTerminal, QWidget *parent)
    : QWidget(parent)
{
    setWindowTitle(QStringLiteral("KilnWarden"));
    setWindowIcon(kilnWardenApplicationIcon());
    setObjectName(QStringLiteral("dashboardWindow"));
    setMinimumSize(960, 640);
    m_shell = new DashboardShell(store, initialSection, std::move(openTerminal));
    attach(this, column(0, {}, {LayoutItem(m_shell, 1)}));
    m_dialog = new TerminationConfirmationDialog(store, this);
}
