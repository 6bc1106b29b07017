#include "presentation/shell/DashboardWindow.h"

#include "presentation/kit/KilnWardenMark.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/TerminationConfirmationDialog.h"
#include "presentation/shell/WindowPlacement.h"

#include <QCloseEvent>
#include <QShortcut>
#include <QTimer>
#include <QWindow>

namespace {

// A window manager frames a new window within moments of its mapping; a
// frame that comes later is the user's business, not the first placement's.
constexpr int kFramingMilliseconds = 3000;

} // namespace

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

    auto *close = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
    auto *quit = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), this);
    connect(quit, &QShortcut::activated, this, &DashboardWindow::quitRequested);
}

void DashboardWindow::fitFrameOnceInto(const QRect &available)
{
    m_fitArea = available;
    QTimer::singleShot(kFramingMilliseconds, this, [this] { m_fitArea = QRect(); });
}

void DashboardWindow::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    if (event->isAccepted())
        emit closed();
}

bool DashboardWindow::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    const QEvent::Type type = event->type();
    if (m_fitArea.isValid() && windowHandle() &&
        (type == QEvent::Move || type == QEvent::Resize || type == QEvent::Show)) {
        const QMargins frame = windowHandle()->frameMargins();
        if (!frame.isNull()) {
            const QRect area = m_fitArea;
            m_fitArea = QRect();
            const QRect fitted = fitFrameInto(geometry(), frame, area, minimumSize());
            if (fitted != geometry())
                setGeometry(fitted);
        }
    }
    return handled;
}
