#pragma once

#include "presentation/kit/DashboardWidgets.h"

#include <QString>
#include <QWidget>

#include <vector>

// What the two lists share: the heading, 34 high with the title at its top;
// the rows, each between two hairlines; and in their place, when there are
// none, the empty label: the success check and the words, centred in a box
// at least 100 high.
class OverviewDividedRows {
public:
    // Lays the heading, `rows` and the empty label out on `owner`.
    void build(QWidget *owner, const QString &heading, const std::vector<QWidget *> &rows,
               const QString &emptyText);
    // Shows the first `count` rows, or the empty label for none.
    void show(int count);

    int count() const { return m_count; }
    QWidget *emptyLabel() const { return m_empty; }

private:
    std::vector<QWidget *> m_rows;
    std::vector<HairLine *> m_dividers;
    QWidget *m_empty = nullptr;
    int m_count = -1;
};
