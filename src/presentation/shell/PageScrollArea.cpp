#include "presentation/shell/PageScrollArea.h"

#include "presentation/kit/LayoutBuilder.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScrollArea>

#include <algorithm>

namespace {

// Holds a page's content at no less than a floor height and no less than
// what the content's layout needs. An explicit minimum height would replace
// the layout's own (which grows later with fonts and rows) and squeeze the
// fixed blocks into each other.
class PageContent final : public QWidget {
public:
    int floor = 0;

    QSize minimumSizeHint() const override
    {
        const QSize laidOut = QWidget::minimumSizeHint();
        return {laidOut.width(), std::max(floor, laidOut.height())};
    }

protected:
    bool event(QEvent *event) override
    {
        const bool handled = QWidget::event(event);
        // The content grows after it is first laid out (fonts follow the
        // window's scale, rows arrive); the scroll area only measures again
        // when asked, so it is told whenever the need changes.
        if (event->type() == QEvent::LayoutRequest) {
            const int needed = minimumSizeHint().height();
            QWidget *viewport = parentWidget();
            if (needed != m_needed && viewport && viewport->parentWidget()) {
                m_needed = needed;
                QCoreApplication::postEvent(viewport->parentWidget(),
                                            new QEvent(QEvent::LayoutRequest));
            }
        }
        return handled;
    }

private:
    int m_needed = -1;
};

} // namespace

QScrollArea *makePageScrollArea(QWidget *content)
{
    auto *holder = new PageContent;
    attach(holder, column(0, {}, {content}));
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A page either fits and stays still, or scrolls with its bar showing:
    // content that can move always has a bar to say so.
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area->setWidgetResizable(true);
    area->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    area->setWidget(holder);
    // setWidget makes the content paint the window colour; the page is white.
    area->viewport()->setAutoFillBackground(false);
    holder->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    area->setAutoFillBackground(false);
    return area;
}

void setPageScrolling(QScrollArea *area, bool isShort, int minimumHeight)
{
    auto *holder = dynamic_cast<PageContent *>(area->widget());
    if (!holder)
        return;
    holder->floor = isShort ? minimumHeight : 0;
    holder->updateGeometry();
    if (holder->layout())
        holder->layout()->invalidate();
}
