#include "presentation/shell/PageScrollArea.h"

#include <QLayout>
#include <QScrollArea>

#include <algorithm>

QScrollArea *makePageScrollArea(QWidget *content)
{
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidgetResizable(true);
    area->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    area->setWidget(content);
    // setWidget makes the content paint the window colour; the page is white.
    area->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    area->setAutoFillBackground(false);
    return area;
}

void setPageScrolling(QScrollArea *area, bool isShort, int minimumHeight)
{
    area->setVerticalScrollBarPolicy(isShort ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    QWidget *content = area->widget();
    if (!content)
        return;
    // An explicit minimum replaces the layout's own; keep the larger, so the
    // fixed blocks are never squeezed into each other.
    const int laidOut = content->layout() ? content->layout()->minimumSize().height() : 0;
    content->setMinimumHeight(isShort ? std::max(minimumHeight, laidOut) : 0);
}
