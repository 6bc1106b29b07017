#include "presentation/kit/RefreshWhileShown.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

RefreshWhileShown::RefreshWhileShown(QWidget *widget, std::function<void()> refresh)
    : QObject(widget), m_widget(widget), m_refresh(std::move(refresh))
{
    m_widget->installEventFilter(this);
    watchWindow();
}

void RefreshWhileShown::request()
{
    if (isOffScreen()) {
        m_pending = true;
        return;
    }
    m_pending = false;
    m_refresh();
}

void RefreshWhileShown::watchWindow()
{
    // A window unmapped or minimised from outside stays visible to Qt; its
    // exposure says when it is drawn again.
    QWindow *handle = m_widget->window()->windowHandle();
    if (!handle || handle == m_watchedWindow)
        return;
    if (m_watchedWindow)
        m_watchedWindow->removeEventFilter(this);
    m_watchedWindow = handle;
    m_unexposed = false;
    handle->installEventFilter(this);
}

bool RefreshWhileShown::isOffScreen() const
{
    // A window never shown is a picture or a check: it follows every change.
    if (!m_widget->window()->testAttribute(Qt::WA_WState_ExplicitShowHide))
        return false;
    return !m_widget->isVisible() || m_unexposed;
}

void RefreshWhileShown::catchUp()
{
    if (m_pending && !isOffScreen()) {
        m_pending = false;
        m_refresh();
    }
}

bool RefreshWhileShown::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_widget && event->type() == QEvent::Show) {
        watchWindow();
        // Shown, the widget is laid out and drawn once the window is
        // exposed; refreshing first keeps that pass the only one.
        if (m_pending) {
            m_pending = false;
            m_refresh();
        }
    } else if (watched == m_watchedWindow && event->type() == QEvent::Expose) {
        m_unexposed = !m_watchedWindow->isExposed();
        catchUp();
    }
    return QObject::eventFilter(watched, event);
}
