#include "presentation/kit/LayoutBuilder.h"

#include <QWidget>

LayoutItem::LayoutItem(QWidget *widget, int stretch, Qt::Alignment alignment)
    : m_widget(widget), m_stretch(stretch), m_alignment(alignment)
{
}

LayoutItem::LayoutItem(QLayout *layout, int stretch) : m_layout(layout), m_stretch(stretch) {}

LayoutItem LayoutItem::fixed(int size)
{
    LayoutItem item;
    item.m_fixed = size;
    return item;
}

LayoutItem LayoutItem::flexible(int stretch)
{
    LayoutItem item;
    item.m_stretch = stretch;
    return item;
}

void LayoutItem::addTo(QBoxLayout *layout) const
{
    if (m_widget)
        layout->addWidget(m_widget, m_stretch, m_alignment);
    else if (m_layout)
        layout->addLayout(m_layout, m_stretch);
    else if (m_fixed >= 0)
        layout->addSpacing(m_fixed);
    else
        layout->addStretch(m_stretch);
}

namespace {
template <typename Layout>
Layout *fill(Layout *layout, int spacing, QMargins margins, std::initializer_list<LayoutItem> items)
{
    layout->setSpacing(spacing);
    layout->setContentsMargins(margins);
    for (const LayoutItem &item : items)
        item.addTo(layout);
    return layout;
}
} // namespace

QVBoxLayout *column(int spacing, QMargins margins, std::initializer_list<LayoutItem> items)
{
    return fill(new QVBoxLayout, spacing, margins, items);
}

QHBoxLayout *row(int spacing, QMargins margins, std::initializer_list<LayoutItem> items)
{
    return fill(new QHBoxLayout, spacing, margins, items);
}

void attach(QWidget *widget, QLayout *layout)
{
    widget->setLayout(layout);
}
