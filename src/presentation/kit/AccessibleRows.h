#pragma once

#include <QAccessible>
#include <QModelIndex>
#include <QRect>

#include <functional>

class QAbstractItemView;

// What a painted list (a view over a model whose selection lives in the
// store, not in the view's selection model) tells a screen reader. Each row
// is an element: its name is the model's Qt::AccessibleTextRole, its
// description Qt::AccessibleDescriptionRole, its value `valueRole`; it reports
// the selected state from `selectedRole` (a bool), and its one action
// ("Press") selects it through `select`, as a click does. A row whose
// `expandableRole` is true has a chevron element, named by `toggleLabelRole`,
// with one action ("expand" or "collapse", by `expandedRole`) that runs
// `toggle`. A role of -1 is not read.
struct AccessibleRows {
    int valueRole = -1;
    int selectedRole = -1;
    int expandableRole = -1;
    int expandedRole = -1;
    int toggleLabelRole = -1;
    std::function<void(const QModelIndex &)> select;
    std::function<void(const QModelIndex &)> toggle;
    // The chevron's box in the viewport, given the row's.
    std::function<QRect(const QModelIndex &, const QRect &row)> toggleRect;
};

// Gives `view` that accessible tree. Call before the view is first shown.
void setAccessibleRows(QAbstractItemView *view, AccessibleRows rows);

// The interface for a view given rows, or null (the accessibility factory
// asks).
QAccessibleInterface *accessibleRowList(QObject *object);

// The action names of rows and chevrons.
QString expandAction();
QString collapseAction();
