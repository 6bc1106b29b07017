#include "presentation/kit/TrendChart.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/kit/SystemSymbols.h"
#include "sampling/Text.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

// Between the plot and its labels.
constexpr double kLabelGap = 4.0;
// Between two neighbouring labels of one axis, below which the later is left out.
constexpr double kLabelSpacing = 6.0;
// The white ring around a mark, so it reads over its own line and area.
constexpr double kMarkRing = 1.0;
// Between the empty overlay's symbol and its text.
constexpr double kEmptySpacing = 6.0;

double markRadius(double area)
{
    return area > 0.0 && std::isfinite(area) ? std::sqrt(area / std::numbers::pi) : 0.0;
}

bool isFinite(QPointF point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

// The points a curve can be drawn through: finite, in ascending x. The caller
// passes them sorted; a stray order or a NaN must not fold the curve back.
std::vector<QPointF> drawablePoints(const std::vector<QPointF> &points)
{
    std::vector<QPointF> result;
    result.reserve(points.size());
    std::copy_if(points.begin(), points.end(), std::back_inserter(result), isFinite);
    if (!std::is_sorted(result.begin(), result.end(),
                        [](QPointF a, QPointF b) { return a.x() < b.x(); }))
        std::stable_sort(result.begin(), result.end(),
                         [](QPointF a, QPointF b) { return a.x() < b.x(); });
    return result;
}

// The share of the way from `lower` to `upper`, clamped to 0...1; a domain of
// no width maps everything to its start.
double fraction(double value, double lower, double upper)
{
    if (!(upper > lower) || !std::isfinite(value))
        return 0.0;
    return std::clamp((value - lower) / (upper - lower), 0.0, 1.0);
}

bool hasLabels(const TrendChartAxis &axis)
{
    return axis.showsLabels && !axis.labels.empty();
}

bool inDomain(const TrendChartAxis &axis, double value)
{
    return std::isfinite(value) && value >= std::min(axis.lowerBound, axis.upperBound) &&
           value <= std::max(axis.lowerBound, axis.upperBound);
}

// The labels within the axis's domain, in ascending value, the order in which
// a label that runs into its predecessor is left out.
std::vector<TrendChartAxisLabel> shownLabels(const TrendChartAxis &axis)
{
    std::vector<TrendChartAxisLabel> labels;
    std::copy_if(axis.labels.begin(), axis.labels.end(), std::back_inserter(labels),
                 [&](const TrendChartAxisLabel &label) { return inDomain(axis, label.value); });
    std::stable_sort(labels.begin(), labels.end(),
                     [](const auto &a, const auto &b) { return a.value < b.value; });
    return labels;
}

QColor withOpacity(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(std::clamp(color.alphaF() * opacity, 0.0, 1.0)));
    return color;
}

// A hairline on the pixel grid, so a grid line of width 1 stays one crisp pixel.
double crisp(double coordinate, double width)
{
    const double rounded = std::round(width);
    if (std::abs(width - rounded) > 0.01 || rounded < 1.0)
        return coordinate;
    return static_cast<int>(rounded) % 2 == 1 ? std::floor(coordinate) + 0.5
                                              : std::round(coordinate);
}

} // namespace

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
    // A series of nothing but absurd readings has nothing to draw either.
    return std::none_of(series.begin(), series.end(), [](const TrendChartSeries &s) {
        return std::any_of(s.points.begin(), s.points.end(), isFinite);
    });
}

TrendChart::TrendChart(QWidget *parent) : QWidget(parent)
{
    updateAccessibleValue();
}

void TrendChart::setContent(TrendChartContent content)
{
    if (content == m_content)
        return;
    m_content = std::move(content);
    invalidateGeometry();
    updateAccessibleValue();
    update();
}

void TrendChart::applyLayout(const DashboardLayoutMetrics &)
{
    // The labels' font follows the typography scale; the geometry notices the
    // new font when it is next asked for.
    update();
}

void TrendChart::resizeEvent(QResizeEvent *event)
{
    invalidateGeometry();
    QWidget::resizeEvent(event);
}

void TrendChart::invalidateGeometry()
{
    m_geometry.valid = false;
}

const TrendChart::ChartGeometry &TrendChart::chartGeometry() const
{
    const QFont labelFont = dashboardFont(this, m_content.style.labelFontSize);
    ChartGeometry &g = m_geometry;
    if (g.valid && g.size == size() && g.labelFont == labelFont)
        return g;
    g.valid = true;
    g.size = size();
    g.labelFont = labelFont;

    const TrendChartAxis &x = m_content.x;
    const TrendChartAxis &y = m_content.y;
    const QFontMetricsF metrics(labelFont);
    // Room for the labels: a line under the plot, a column beside it as wide
    // as the widest label.
    const double bottom = hasLabels(x) ? std::ceil(metrics.height()) + kLabelGap : 0.0;
    double side = 0.0;
    if (hasLabels(y)) {
        double widest = 0.0;
        for (const TrendChartAxisLabel &label : y.labels)
            widest = std::max(widest, metrics.horizontalAdvance(label.text));
        side = std::ceil(widest) + kLabelGap + 2.0;
    }
    g.plot = QRectF(0.0, 0.0, std::max(0.0, width() - side), std::max(0.0, height() - bottom));

    // A mark on the last point usually sits on the plot's right edge, and a
    // value may sit on its top or bottom: keep the marks and the lines whole.
    double margin = 0.0;
    for (const TrendChartSeries &series : m_content.series) {
        margin = std::max(margin, series.lineWidth / 2.0);
        if (series.lastPointMarkArea)
            margin = std::max(margin, markRadius(*series.lastPointMarkArea) + kMarkRing);
    }
    margin = std::min(std::ceil(margin + 0.5), std::min(g.plot.width(), g.plot.height()) / 4.0);
    g.values = g.plot.adjusted(margin, margin, -margin, -margin);

    const double tension = std::isfinite(m_content.style.tension) ? m_content.style.tension : 0.5;
    g.series.clear();
    g.series.reserve(m_content.series.size());
    for (const TrendChartSeries &series : m_content.series) {
        SeriesGeometry shape;
        std::vector<QPointF> mapped = drawablePoints(series.points);
        for (QPointF &point : mapped)
            point = mapInto(g.values, point);
        if (mapped.size() >= 2) {
            shape.line = cardinalSplinePath(mapped, tension);
            if (series.area) {
                // The area's top edge is the line's own curve, closed down to
                // the base and back.
                const double base = mapInto(g.values, {x.lowerBound, series.area->baseValue}).y();
                shape.area = shape.line;
                shape.area.lineTo(mapped.back().x(), base);
                shape.area.lineTo(mapped.front().x(), base);
                shape.area.closeSubpath();
            }
        }
        if (series.lastPointMarkArea && !mapped.empty())
            shape.mark = mapped.back();
        g.series.push_back(std::move(shape));
    }
    return g;
}

QRectF TrendChart::plotRect() const
{
    return chartGeometry().plot;
}

QRectF TrendChart::valueRect() const
{
    return chartGeometry().values;
}

QPointF TrendChart::mapToPlot(QPointF value) const
{
    return mapInto(chartGeometry().values, value);
}

QPointF TrendChart::mapInto(const QRectF &values, QPointF value) const
{
    const auto &x = m_content.x;
    const auto &y = m_content.y;
    return {values.left() + fraction(value.x(), x.lowerBound, x.upperBound) * values.width(),
            values.bottom() - fraction(value.y(), y.lowerBound, y.upperBound) * values.height()};
}

QSize TrendChart::sizeHint() const
{
    return {400, 200};
}

QSize TrendChart::minimumSizeHint() const
{
    return {80, 40};
}

void TrendChart::updateAccessibleValue()
{
    if (m_content.isEmpty()) {
        setAccessibleValue(this, m_content.style.emptyText);
        return;
    }
    const QLocale locale = interfaceLocale();
    QStringList parts;
    for (const TrendChartSeries &series : m_content.series) {
        const std::vector<QPointF> points = drawablePoints(series.points);
        if (points.empty())
            continue;
        const QString value =
            locale.toString(points.back().y(), 'f', std::clamp(series.valueFractionDigits, 0, 6));
        parts.push_back(series.name.isEmpty() ? value + series.valueUnit
                                              : series.name + u' ' + value + series.valueUnit);
    }
    setAccessibleValue(this, parts.join(tr("，", "between the series of a chart's spoken value")));
}

void TrendChart::paintEvent(QPaintEvent *)
{
    const ChartGeometry &g = chartGeometry();
    if (g.plot.width() <= 0.0 || g.plot.height() <= 0.0)
        return;
    const TrendChartStyle &style = m_content.style;
    const TrendChartAxis &x = m_content.x;
    const TrendChartAxis &y = m_content.y;

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);

    QPainterPath background;
    background.addRoundedRect(g.plot, style.plotCornerRadius, style.plotCornerRadius);
    painter.fillPath(background, style.plotBackground);

    painter.save();
    painter.setClipRect(g.plot);
    painter.setClipPath(background, Qt::IntersectClip);

    // Grid lines run across the whole plot, behind the data.
    if (x.showsGridLines && x.gridWidth > 0.0) {
        painter.setPen(QPen(x.gridColor, x.gridWidth, Qt::SolidLine, Qt::FlatCap));
        for (const TrendChartAxisLabel &label : x.labels) {
            if (!inDomain(x, label.value))
                continue;
            const double at =
                crisp(mapInto(g.values, {label.value, y.lowerBound}).x(), x.gridWidth);
            painter.drawLine(QPointF(at, g.plot.top()), QPointF(at, g.plot.bottom()));
        }
    }
    if (y.showsGridLines && y.gridWidth > 0.0) {
        painter.setPen(QPen(y.gridColor, y.gridWidth, Qt::SolidLine, Qt::FlatCap));
        for (const TrendChartAxisLabel &label : y.labels) {
            if (!inDomain(y, label.value))
                continue;
            const double at =
                crisp(mapInto(g.values, {x.lowerBound, label.value}).y(), y.gridWidth);
            painter.drawLine(QPointF(g.plot.left(), at), QPointF(g.plot.right(), at));
        }
    }

    // Areas of every series first, then the lines over them, then the marks
    // over everything, so that no area veils another series' line.
    for (std::size_t i = 0; i < m_content.series.size(); ++i) {
        const TrendChartSeries &series = m_content.series[i];
        const QPainterPath &area = g.series[i].area;
        if (!series.area || area.isEmpty())
            continue;
        QLinearGradient gradient(0.0, g.plot.top(), 0.0, g.plot.bottom());
        gradient.setColorAt(0.0, withOpacity(series.color, series.area->topOpacity));
        gradient.setColorAt(1.0, withOpacity(series.color, series.area->bottomOpacity));
        painter.fillPath(area, gradient);
    }
    painter.setBrush(Qt::NoBrush);
    for (std::size_t i = 0; i < m_content.series.size(); ++i) {
        const TrendChartSeries &series = m_content.series[i];
        const QPainterPath &line = g.series[i].line;
        if (line.isEmpty() || !(series.lineWidth > 0.0))
            continue;
        painter.setPen(
            QPen(series.color, series.lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        painter.drawPath(line);
    }
    painter.restore();

    // The marks stay whole where the rounded corners would bite into them.
    painter.save();
    painter.setClipRect(g.plot);
    painter.setPen(Qt::NoPen);
    for (std::size_t i = 0; i < m_content.series.size(); ++i) {
        const TrendChartSeries &series = m_content.series[i];
        if (!g.series[i].mark || !series.lastPointMarkArea)
            continue;
        const double radius = markRadius(*series.lastPointMarkArea);
        if (radius <= 0.0)
            continue;
        const QPointF centre = *g.series[i].mark;
        painter.setBrush(QColor(Qt::white));
        painter.drawEllipse(centre, radius + kMarkRing, radius + kMarkRing);
        painter.setBrush(series.color);
        painter.drawEllipse(centre, radius, radius);
    }
    painter.restore();

    // Labels: each centred on its position but kept beside the plot, and left
    // out where it would run into the one before it.
    painter.setFont(g.labelFont);
    painter.setPen(style.labelColor);
    const QFontMetricsF metrics(g.labelFont);
    const double lineHeight = std::ceil(metrics.height());
    if (hasLabels(x)) {
        double end = -1e9;
        for (const TrendChartAxisLabel &label : shownLabels(x)) {
            const double textWidth = std::ceil(metrics.horizontalAdvance(label.text));
            const double centre = mapInto(g.values, {label.value, y.lowerBound}).x();
            const double left = std::clamp(centre - textWidth / 2.0, g.plot.left(),
                                           std::max(g.plot.left(), g.plot.right() - textWidth));
            if (left < end + kLabelSpacing)
                continue;
            end = left + textWidth;
            painter.drawText(QRectF(left, g.plot.bottom() + kLabelGap, textWidth, lineHeight),
                             Qt::AlignLeft | Qt::AlignVCenter, label.text);
        }
    }
    if (hasLabels(y)) {
        const double columnWidth = width() - g.plot.right();
        const double left = g.plot.right() + kLabelGap;
        // From the bottom up, so the lower bound's label is the one that stays.
        double top = 1e9;
        for (const TrendChartAxisLabel &label : shownLabels(y)) {
            const double centre = mapInto(g.values, {x.lowerBound, label.value}).y();
            const double at =
                std::clamp(centre - lineHeight / 2.0, 0.0, std::max(0.0, height() - lineHeight));
            if (at + lineHeight > top - 1.0)
                continue;
            top = at;
            painter.drawText(QRectF(left, at, columnWidth - kLabelGap, lineHeight),
                             Qt::AlignLeft | Qt::AlignVCenter, label.text);
        }
    }

    if (m_content.isEmpty())
        paintEmptyOverlay(painter, g.plot);
}

void TrendChart::paintEmptyOverlay(QPainter &painter, const QRectF &plot) const
{
    const TrendChartStyle &style = m_content.style;
    const QFont font = dashboardFont(this, style.emptyFontSize);
    const QFontMetricsF metrics(font);
    const double textHeight = std::ceil(metrics.height());
    const double symbolSize =
        style.emptySymbol.isEmpty()
            ? 0.0
            : dashboardScaledFontSize(style.emptySymbolSize,
                                      dashboardLayoutOf(this).typographyScale);
    const double spacing = symbolSize > 0.0 ? kEmptySpacing : 0.0;
    double top = plot.center().y() - (symbolSize + spacing + textHeight) / 2.0;
    if (symbolSize > 0.0) {
        paintSystemSymbol(painter, style.emptySymbol,
                          QRectF(plot.center().x() - symbolSize / 2.0, top, symbolSize, symbolSize),
                          style.emptyColor);
        top += symbolSize + spacing;
    }
    painter.setFont(font);
    painter.setPen(style.emptyColor);
    const QRectF line(plot.left(), top, plot.width(), textHeight);
    painter.drawText(line, Qt::AlignCenter,
                     metrics.elidedText(style.emptyText, Qt::ElideRight, plot.width() - 8.0));
}
