#pragma once

#include "presentation/history/EventHistoryFilter.h"
#include "presentation/kit/DashboardLayoutEnvironment.h"

#include <QWidget>

#include <vector>

class PressableBox;
class QLineEdit;
class RoundedBox;
class TextLabel;

// The row above the event list: one chip per filter, the search field and
// the range label. It holds no state of its own beyond what it shows; the
// page owns the filter and the query and hears of every change.
class EventHistoryToolbar final : public QWidget, public DashboardLayoutAware {
    Q_OBJECT

public:
    explicit EventHistoryToolbar(QWidget *parent = nullptr);

    void setFilter(EventHistoryFilter filter);
    void applyLayout(const DashboardLayoutMetrics &layout) override;

    QLineEdit *searchField() const { return m_searchField; }
    PressableBox *chip(EventHistoryFilter filter) const;

signals:
    void filterRequested(EventHistoryFilter filter);
    void queryChanged(const QString &query);

private:
    struct Chip {
        EventHistoryFilter filter;
        PressableBox *box;
        TextLabel *label;
    };
    std::vector<Chip> m_chips;
    RoundedBox *m_search;
    QLineEdit *m_searchField;
};
