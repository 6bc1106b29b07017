#include "presentation/history/IncidentRowDelegate.h"

#include "presentation/history/IncidentListModel.h"
#include "presentation/history/IncidentRowMotion.h"
#include "presentation/history/IncidentStatusPill.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/kit/DashboardPalette.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// Below this the title is cut rather than squeezed further.
constexpr int kMinimumTitleColumnWidth = 96;

} // namespace

std::array<int, kEventHistoryColumnCount> eventHistoryColumnWidths(DashboardHorizontalSize size)
{
    switch (size) {
    case DashboardHorizontalSize::compact:
        return {80, 180, 120, 80, 90};
    case DashboardHorizontalSize::standard:
        return {88, 254, 124, 92, 82};
    case DashboardHorizontalSize::spacious:
        break;
    }
    return {116, 222, 188, 104, 134};
}

std::array<int, kEventHistoryColumnCount>
fittedEventHistoryColumnWidths(DashboardHorizontalSize size, int availableWidth,
                               int leastStatusWidth)
{
    std::array<int, kEventHistoryColumnCount> widths = eventHistoryColumnWidths(size);
    if (widths[4] < leastStatusWidth) {
        const int grown = std::min(leastStatusWidth - widths[4],
                                   std::max(0, widths[1] - kMinimumTitleColumnWidth));
        widths[1] -= grown;
        widths[4] += grown;
    }
    const int total = std::accumulate(widths.begin(), widths.end(), 0);
    if (availableWidth < total)
        widths[1] = std::max(kMinimumTitleColumnWidth, widths[1] - (total - availableWidth));
    return widths;
}

std::array<int, kEventHistoryColumnCount>
eventHistoryColumnTextOffsets(const std::array<int, kEventHistoryColumnCount> &widths)
{
    std::array<int, kEventHistoryColumnCount> offsets{};
    int x = 0;
    for (int column = 0; column < kEventHistoryColumnCount; ++column) {
        offsets[std::size_t(column)] = x + (column == 0 ? kEventHistoryLeadingInset : 0);
        x += widths[std::size_t(column)];
    }
    return offsets;
}

IncidentRowDelegate::IncidentRowDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

std::array<int, kEventHistoryColumnCount> IncidentRowDelegate::columnWidths(const QWidget *view,
                                                                            int availableWidth) const
{
    const double pill =
        widestIncidentStatusPillWidth(dashboardFont(view, 11, DashboardFontWeight::medium));
    return fittedEventHistoryColumnWidths(m_size, availableWidth, int(std::ceil(pill)));
}

void IncidentRowDelegate::setHorizontalSize(DashboardHorizontalSize size)
{
    m_size = size;
}

QSize IncidentRowDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    // As wide as the view gives: the columns fit themselves into the row.
    return {1, rowHeight + 1};
}

void IncidentRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const
{
    using namespace DashboardPalette;
    const QWidget *widget = option.widget;
    const QRectF rowRect(option.rect.adjusted(0, 0, 0, -1));

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const auto *model = static_cast<const IncidentListModel *>(index.model());
    const IncidentListRow &row = model->rowAt(index.row());
    const bool selected = row.isSelected;
    const QUuid &id = row.key;
    const double selection =
        m_motion ? m_motion->selectionOpacity(id, selected) : (selected ? 1.0 : 0.0);
    if (selection > 0.0) {
        QPainterPath background;
        background.addRoundedRect(rowRect, 12, 12);
        QColor fill = QColor::fromRgb(warningBackground);
        fill.setAlphaF(float(selection));
        painter->fillPath(background, fill);
    }
    // A pressed row dims a little, as a plain button does.
    if (m_motion)
        painter->setOpacity(1.0 - 0.3 * m_motion->pressProgress(id));
    painter->fillRect(QRectF(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                      QColor::fromRgb(divider));

    const std::array<int, kEventHistoryColumnCount> widths =
        columnWidths(widget, option.rect.width());
    const std::array<int, kEventHistoryColumnCount> offsets = eventHistoryColumnTextOffsets(widths);
    const auto cell = [&](int column) {
        const double left = rowRect.left() + offsets[std::size_t(column)];
        const double columnEnd =
            rowRect.left() + std::accumulate(widths.begin(), widths.begin() + column + 1, 0);
        // A little air before the next column, so elided text never touches it.
        const double gap = column + 1 < kEventHistoryColumnCount ? 8 : 0;
        return QRectF(left, rowRect.top(), std::max(0.0, columnEnd - left - gap), rowRect.height());
    };
    const auto drawText = [&](int column, const QString &text, const QFont &font, QRgb color) {
        const QRectF area = cell(column);
        painter->setFont(font);
        painter->setPen(QColor::fromRgb(color));
        painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          QFontMetricsF(font).elidedText(text, Qt::ElideRight, area.width()));
    };

    const QFont regular = dashboardFont(widget, 13);
    drawText(0, row.startTime, regular, textSecondary);
    drawText(1, row.title, dashboardFont(widget, 13, DashboardFontWeight::medium), textPrimary);
    drawText(2, row.application, regular, textSecondary);
    drawText(3, row.peakSummary, regular, textSecondary);
    paintIncidentStatusPill(*painter, cell(4), row.status,
                            dashboardFont(widget, 11, DashboardFontWeight::medium));
    painter->restore();
}
