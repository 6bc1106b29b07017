#include "presentation/tray/MenuBarPanelPopup.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/tray/KilnWardenMenuBarPanel.h"
#include "presentation/tray/MenuBarAppearance.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// The gap between the anchor and the panel.
constexpr int kAnchorGap = 4;
// How long after closing a press on the tray icon counts as the press that
// closed the popup (the desktop delivers it to the icon as well).
constexpr qint64 kReopenGuardMilliseconds = 300;

int clampInto(int value, int low, int high)
{
    // A panel larger than the screen keeps its top-left corner on screen.
    return std::max(low, std::min(value, high));
}

} // namespace

QPoint menuBarPanelPosition(const QRect &anchor, const QSize &panel, const QRect &available,
                            MenuBarPanelAlignment alignment)
{
    const bool below = anchor.center().y() < available.center().y();
    int y = below ? anchor.bottom() + 1 + kAnchorGap : anchor.top() - kAnchorGap - panel.height();
    int x = alignment == MenuBarPanelAlignment::leading ? anchor.left()
                                                        : anchor.center().x() - panel.width() / 2;
    x = clampInto(x, available.left(), available.right() + 1 - panel.width());
    y = clampInto(y, available.top(), available.bottom() + 1 - panel.height());
    return {x, y};
}

MenuBarPanelPopup::MenuBarPanelPopup(QWidget *parent)
    // A tool window, not a Qt::Popup: Qt leaves popups out of the
    // application's accessible windows, and a screen reader could not reach
    // the panel's buttons. Losing the focus closes it as a popup would close.
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                          Qt::NoDropShadowWindowHint)
{
    setObjectName(QStringLiteral("menuBar-popup"));
    setAccessibility(this, QStringLiteral("menuBar-popup"), QStringLiteral("KilnWarden"));
    setAccessibleRole(this, QAccessible::Window);
    setAttribute(Qt::WA_DeleteOnClose, false);
    m_panel = new KilnWardenMenuBarPanel(this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_panel);
    followAppearance();
    fitToPanel();
}

void MenuBarPanelPopup::setPresentation(const MenuBarPresentation &presentation)
{
    m_panel->setPresentation(presentation);
    fitToPanel();
}

void MenuBarPanelPopup::fitToPanel()
{
    const QSize size(KilnWardenMenuBarPanel::panelWidth, m_panel->sizeHint().height());
    if (this->size() == size)
        return;
    // The panel grows or shrinks with its content (the task box, the message
    // row); the popup keeps its top edge when it opens below its anchor.
    setFixedSize(size);
}

void MenuBarPanelPopup::followAppearance()
{
    m_panel->setDarkAppearance(isDarkAppearance(QGuiApplication::palette()));
    fitToPanel();
}

void MenuBarPanelPopup::openAt(const QRect &anchor, MenuBarPanelAlignment alignment)
{
    followAppearance();
    const QScreen *screen = QGuiApplication::screenAt(anchor.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect available = screen ? screen->availableGeometry() : QRect(anchor.topLeft(), size());
    move(menuBarPanelPosition(anchor, size(), available, alignment));
    show();
    raise();
    activateWindow();
    m_panel->setFocus(Qt::PopupFocusReason);
}

bool MenuBarPanelPopup::closedMomentsAgo() const
{
    return m_closedAt.isValid() && m_closedAt.elapsed() < kReopenGuardMilliseconds;
}

bool MenuBarPanelPopup::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::WindowDeactivate:
        close();
        break;
    case QEvent::ApplicationPaletteChange:
        followAppearance();
        emit appearanceChanged();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void MenuBarPanelPopup::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void MenuBarPanelPopup::hideEvent(QHideEvent *event)
{
    m_closedAt.start();
    QWidget::hideEvent(event);
}
