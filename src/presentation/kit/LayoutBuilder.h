#pragma once

#include <QBoxLayout>
#include <QMargins>

#include <initializer_list>
#include <variant>

class QWidget;

// A small declarative helper for the stacks the pages are made of, so a page
// reads top to bottom like its design:
//
//   column(12, {0, 24, 0, 28}, {heading, scopeSwitch, fixed(4), list, flexible()})
//
// A convenience, not a framework: it only fills Qt box layouts.
class LayoutItem {
public:
    LayoutItem(QWidget *widget, int stretch = 0, Qt::Alignment alignment = {});
    LayoutItem(QLayout *layout, int stretch = 0);

    static LayoutItem fixed(int size);           // a fixed gap along the stack
    static LayoutItem flexible(int stretch = 1); // free space

    void addTo(QBoxLayout *layout) const;

private:
    LayoutItem() = default;
    QWidget *m_widget = nullptr;
    QLayout *m_layout = nullptr;
    int m_stretch = 0;
    Qt::Alignment m_alignment;
    int m_fixed = -1;
};

inline LayoutItem fixed(int size)
{
    return LayoutItem::fixed(size);
}
inline LayoutItem flexible(int stretch = 1)
{
    return LayoutItem::flexible(stretch);
}

QVBoxLayout *column(int spacing, QMargins margins, std::initializer_list<LayoutItem> items);
QHBoxLayout *row(int spacing, QMargins margins, std::initializer_list<LayoutItem> items);
// Installs `layout` on `widget` (replacing nothing: the widget must have none).
void attach(QWidget *widget, QLayout *layout);
