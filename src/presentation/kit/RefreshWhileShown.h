#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QWidget;
class QWindow;

// Runs a widget's refresh on each change of its source, but only while the
// widget is on screen. A dashboard window that is closed, minimised or
// unmapped has nobody to show a page to, and rebuilding it every tick would
// still cost a layout pass for each changed text; a change that comes while it
// is off screen is remembered, and the refresh runs once when it is shown
// again, so it comes back current. A widget whose window was never shown (a
// page built for a picture or a check) follows every change.
class RefreshWhileShown final : public QObject {
    Q_OBJECT

public:
    RefreshWhileShown(QWidget *widget, std::function<void()> refresh);

    // The source changed: refreshes now, or once the widget is back on screen.
    void request();
    bool isPending() const { return m_pending; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isOffScreen() const;
    void watchWindow();
    void catchUp();

    QWidget *m_widget;
    std::function<void()> m_refresh;
    bool m_pending = false;
    bool m_unexposed = false;
    QPointer<QWindow> m_watchedWindow;
};

// Follows `signal` of `source` with `refresh` through a RefreshWhileShown
// owned by `widget`.
template <typename Source, typename Signal>
RefreshWhileShown *refreshWhileShown(QWidget *widget, const Source *source, Signal signal,
                                     std::function<void()> refresh)
{
    auto *follower = new RefreshWhileShown(widget, std::move(refresh));
    QObject::connect(source, signal, follower, &RefreshWhileShown::request);
    return follower;
}
