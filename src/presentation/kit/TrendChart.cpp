#include "presentation/kit/TrendChart.h"

#include "presentation/kit/DashboardFonts.h"

#include <QPainter>

#include <algorithm>

QPainterPath cardinalSplinePath(const std::vector<QPointF> &points, double tension)
{
    QPainterPath path;
    if (points.empty())
        return path;
    path.moveTo(points.front());
    const double k = (1.0 - tension) / 6.0;
    const std::size_t n = points.size();
    for (std::size_t i = 0; i + 1 < n; ++i) {
        const QPointF p0 = points[i == 0 ? 0 : i - 1];
        const QPointF p1 = points[i];
        const QPointF p2 = points[i + 1];
        const QPointF p3 = points[i + 2 < n ? i + 2 : n - 1];
        path.cubicTo(p1 + k * (p2 - p0), p2 - k * (p3 - p1), p2);
    }
    return path;
}

bool TrendChartContent::isEmpty() const
{
    return std::all_of(series.begin(), series.end(),
                       [](const TrendChartSeries &s) { return s.points.empty(); });
}

TrendChart::TrendChart(QWidget *parent) : QWidget(parent) {}

void TrendChart::setContent(TrendChartContent content)
{
    if (content == m_content)
        return;
    m_content = std::move(content);
    update();
}

QRectF TrendChart::plotRect() const
{
    return QRectF(rect());
}

QPointF TrendChart::mapToPlot(QPointF value) const
{
    const QRectF plot = plotRect();
    const auto &x = m_content.x;
    const auto &y = m_content.y;
    const double xs = x.upperBound > x.lowerBound
                          ? (value.x() - x.lowerBound) / (x.upperBound - x.lowerBound)
                          : 0.0;
    const double ys = y.upperBound > y.lowerBound
                          ? (value.y() - y.lowerBound) / (y.upperBound - y.lowerBound)
                          : 0.0;
    return {plot.left() + std::clamp(xs, 0.0, 1.0) * plot.width(),
            plot.bottom() - std::clamp(ys, 0.0, 1.0) * plot.height()};
}

QSize TrendChart::sizeHint() const
{
    return {400, 200};
}

QSize TrendChart::minimumSizeHint() const
{
    return {80, 40};
}

void TrendChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath background;
    background.addRoundedRect(plotRect(), m_content.style.plotCornerRadius,
                              m_content.style.plotCornerRadius);
    painter.fillPath(background, m_content.style.plotBackground);
    if (m_content.isEmpty()) {
        painter.setPen(m_content.style.emptyColor);
        painter.setFont(dashboardFont(this, m_content.style.emptyFontSize));
        painter.drawText(plotRect(), Qt::AlignCenter, m_content.style.emptyText);
        return;
    }
    for (const TrendChartSeries &series : m_content.series) {
        std::vector<QPointF> mapped;
        for (const QPointF &point : series.points)
            mapped.push_back(mapToPlot(point));
        painter.setPen(QPen(series.color, series.lineWidth));
        painter.drawPath(cardinalSplinePath(mapped, m_content.style.tension));
    }
}
