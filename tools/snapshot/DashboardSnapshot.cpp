#include "snapshot/DashboardSnapshot.h"

#include "presentation/shell/DashboardWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDeadlineTimer>

void settleEvents(int milliseconds)
{
    QDeadlineTimer deadline(milliseconds);
    do {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    } while (!deadline.hasExpired());
}

QImage renderDashboardSnapshot(DashboardStore &store, DashboardSection section, QSize size,
                               const QString &press)
{
    DashboardWindow window(store, section, [] {});
    window.resize(size);
    window.show();
    settleEvents();
    if (!press.isEmpty()) {
        if (auto *button = window.findChild<QAbstractButton *>(press)) {
            button->click();
            settleEvents();
        }
    }
    const QImage image = window.grab().toImage();
    window.hide();
    return image;
}
