#pragma once

#include "presentation/kit/DashboardLayoutMetrics.h"

#include <QStyledItemDelegate>

#include <array>

// The event list's columns: "时间", "事件", "进程", "峰值", "结果". Their widths
// depend on the size class; in the standard and spacious classes they add up
// to the list's column width exactly.
inline constexpr int kEventHistoryColumnCount = 5;
std::array<int, kEventHistoryColumnCount> eventHistoryColumnWidths(DashboardHorizontalSize size);
// The first column's text keeps this distance from the row's rounded edge;
// the header's captions sit at the same places as the rows' texts.
inline constexpr int kEventHistoryLeadingInset = 12;
// The widths fitted into `availableWidth`: a scroll bar that takes room from
// the list is taken from the "事件" column, so the status pill keeps its own.
// The last column grows to `leastStatusWidth` (a language's longer status
// words), also at the "事件" column's cost.
std::array<int, kEventHistoryColumnCount>
fittedEventHistoryColumnWidths(DashboardHorizontalSize size, int availableWidth,
                               int leastStatusWidth = 0);
// The x of each column's text within a row of those widths.
std::array<int, kEventHistoryColumnCount>
eventHistoryColumnTextOffsets(const std::array<int, kEventHistoryColumnCount> &widths);

class IncidentRowMotion;

// Paints one incident row of IncidentListModel: the start time, the title in
// medium weight, the application, the peak summary and the status pill, on
// the selection's warm background when selected (as far as the motion has
// brought it in or out), dimmed while pressed, with a divider below. Rows are
// 64 high plus the divider.
class IncidentRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    static constexpr int rowHeight = 64;

    explicit IncidentRowDelegate(QObject *parent = nullptr);

    void setHorizontalSize(DashboardHorizontalSize size);
    DashboardHorizontalSize horizontalSize() const { return m_size; }
    void setMotion(const IncidentRowMotion *motion) { m_motion = motion; }
    // The columns of a row `availableWidth` wide in `view`, wide enough for
    // every status pill in the view's font.
    std::array<int, kEventHistoryColumnCount> columnWidths(const QWidget *view,
                                                           int availableWidth) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    DashboardHorizontalSize m_size = DashboardHorizontalSize::spacious;
    const IncidentRowMotion *m_motion = nullptr;
};
