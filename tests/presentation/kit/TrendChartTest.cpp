#include "presentation/kit/TrendChart.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/TrendChartData.h"
#include "support/FixtureTable.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

// What the chart paints on a transparent canvas: a pixel has ink when it is
// not (nearly) transparent.
QImage render(TrendChart &chart)
{
    QImage image(chart.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    chart.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

bool hasInk(const QImage &image, int x, int y)
{
    return qAlpha(image.pixel(x, y)) > 8;
}

// Counts the inked pixels of `area` (in widget pixels) that `where` accepts.
int inkIn(
    const QImage &image, const QRect &area,
    const std::function<bool(int, int)> &where = [](int, int) { return true; })
{
    int count = 0;
    const QRect bounded = area.intersected(image.rect());
    for (int y = bounded.top(); y <= bounded.bottom(); ++y)
        for (int x = bounded.left(); x <= bounded.right(); ++x)
            if (where(x, y) && hasInk(image, x, y))
                ++count;
    return count;
}

// A chart with nothing but its data on a transparent plot: no labels, no grid.
TrendChartContent bareContent(std::vector<TrendChartSeries> series)
{
    TrendChartContent content;
    content.x.showsLabels = false;
    content.y.showsLabels = false;
    content.style.plotBackground = Qt::transparent;
    content.series = std::move(series);
    return content;
}

TrendChartSeries series(std::vector<QPointF> points, QColor color = Qt::blue)
{
    TrendChartSeries result;
    result.name = QStringLiteral("CPU");
    result.points = std::move(points);
    result.color = color;
    return result;
}

// The curve's shape between the points is the spline's look; that it passes
// through every value is what the chart owes its reader.
TEST(TrendChartSpline, PassesThroughEveryPoint)
{
    const std::vector<QPointF> points = {{0, 0}, {10, 20}, {20, 10}, {30, 30}};
    const QPainterPath path = cardinalSplinePath(points, 0.5);
    ASSERT_EQ(path.elementCount(), 10);
    EXPECT_TRUE(path.elementAt(0).isMoveTo());
    for (std::size_t i = 0; i < points.size(); ++i)
        EXPECT_LT(QLineF(path.elementAt(int(3 * i)), points[i]).length(), 1e-3) << i;
    // One point is only a move; none is nothing.
    const QPainterPath one = cardinalSplinePath({{3, 4}}, 0.5);
    ASSERT_EQ(one.elementCount(), 1);
    EXPECT_TRUE(one.elementAt(0).isMoveTo());
    EXPECT_TRUE(cardinalSplinePath({}, 0.5).isEmpty());
}

TEST(TrendChartDrawing, OnePointDrawsOnlyItsMark)
{
    TrendChartSeries lone = series({{50, 50}});
    lone.area = TrendChartArea{0.0, 1.0, 1.0};
    lone.lastPointMarkArea = 100.0; // radius sqrt(100 / pi), about 5.6
    TrendChart chart;
    chart.resize(300, 160);
    chart.setContent(bareContent({lone}));
    const QImage image = render(chart);

    const QPointF mark = chart.mapToPlot({50, 50});
    const double reach = std::sqrt(100.0 / M_PI) + 1.0 + 1.5; // fill, ring, antialiasing
    const auto near = [&](int x, int y) {
        return std::hypot(x + 0.5 - mark.x(), y + 0.5 - mark.y()) <= reach;
    };
    const QRect plot = chart.plotRect().toAlignedRect();
    EXPECT_GT(inkIn(image, plot, near), 60);
    EXPECT_EQ(inkIn(image, plot, [&](int x, int y) { return !near(x, y); }), 0);
    EXPECT_EQ(qBlue(image.pixel(int(mark.x()), int(mark.y()))), 255);
}

TEST(TrendChartDrawing, EmptySeriesShowTheOverlayAndValuesAreRead)
{
    TrendChartContent content = bareContent({series({}), series({{0, std::nan("")}})});
    content.style.emptyText = QStringLiteral("正在采集系统趋势…");
    content.style.emptyColor = Qt::black;
    TrendChart chart;
    chart.resize(400, 200);
    installDashboardAccessibility();
    chart.setContent(content);
    const QImage image = render(chart);

    const QPointF centre = chart.plotRect().center();
    EXPECT_GT(inkIn(image, QRect(int(centre.x()) - 60, int(centre.y()) - 10, 120, 20)), 30);
    EXPECT_EQ(inkIn(image, QRect(0, 0, 400, 60)), 0);
    EXPECT_EQ(accessibleText(&chart, QAccessible::Value), content.style.emptyText);

    // One value is data: the overlay gives way to it.
    content.series[1].points = {{0, 10}};
    chart.setContent(content);
    EXPECT_EQ(inkIn(render(chart), QRect(int(centre.x()) - 60, int(centre.y()) - 10, 120, 20)), 0);
    // With values, it reads the last value of each series.
    TrendChartSeries cpu = series({{0, 30}, {10, 42.4}});
    cpu.valueUnit = QStringLiteral("%");
    TrendChartSeries heat = series({{0, 70}, {5, 71.26}});
    heat.name = QStringLiteral("温度");
    heat.valueUnit = QStringLiteral("°C");
    heat.valueFractionDigits = 1;
    TrendChartSeries none = series({});
    none.name = QStringLiteral("风扇");
    TrendChart reading;
    reading.setContent(bareContent({cpu, heat, none}));
    EXPECT_EQ(accessibleText(&reading, QAccessible::Value), QStringLiteral("CPU 42%，温度 71.3°C"));
}

TEST(TrendChartDrawing, NothingDrawsOutsideThePlot)
{
    // Labels reserve room under and beside the plot but draw nothing visible,
    // so any ink there is a curve or mark that escaped.
    const double nan = std::nan("");
    const double inf = std::numeric_limits<double>::infinity();
    const std::vector<std::vector<QPointF>> cases = {
        {{0, 50}, {30, 120}, {60, -40}, {100, 180}}, // beyond the domain
        {{-50, 10}, {0, 100}, {2, 0}, {4, 100}, {250, 100}},
        {{0, 10}, {20, nan}, {inf, 40}, {60, -inf}, {80, 90}}, // absurd readings
        {{100, 30}, {0, 90}, {50, 10}},                        // out of order
    };
    for (const auto &points : cases) {
        TrendChartSeries wild = series(points);
        wild.area = TrendChartArea{-30.0, 1.0, 1.0};
        wild.lineWidth = 4.0;
        wild.lastPointMarkArea = 60.0;
        TrendChartContent content = bareContent({wild});
        content.x.showsLabels = true;
        content.y.showsLabels = true;
        content.x.labels = {{0, QStringLiteral("-60s")}, {100, QStringLiteral("现在")}};
        content.y.labels = {{0, QStringLiteral("0")}, {100, QStringLiteral("100")}};
        content.style.labelColor = Qt::transparent;
        TrendChart chart;
        chart.resize(300, 160);
        chart.setContent(content);
        const QImage image = render(chart);

        const QRect plot = chart.plotRect().toAlignedRect();
        ASSERT_LT(plot.bottom(), 150);
        ASSERT_LT(plot.right(), 290);
        EXPECT_GT(inkIn(image, plot), 500);
        EXPECT_EQ(inkIn(image, image.rect()), inkIn(image, plot));
        // A value beyond the domain sits on its edge.
        EXPECT_NEAR(chart.mapToPlot({30, 180}).y(), chart.valueRect().top(), 1e-6);
    }
}

// "x:y" pairs as points.
std::vector<QPointF> pointsIn(const QByteArray &field)
{
    std::vector<QPointF> points;
    for (const QByteArray &pair : field.split(' ')) {
        if (const QList<QByteArray> xy = pair.split(':'); xy.size() == 2)
            points.emplace_back(xy[0].toDouble(), xy[1].toDouble());
    }
    return points;
}

TEST(TrendChartData, SeriesKeepTheirFiniteValuesAndMarkOnlyAValuedNewestPoint)
{
    const auto valueIn = [](const QByteArray &field) {
        return field == "-" ? std::nullopt : std::optional(field.toDouble());
    };
    TrendChartContent look;
    look.series = {{.name = QStringLiteral("CPU"), .lastPointMarkArea = 36},
                   {.name = QStringLiteral("温度"), .lastPointMarkArea = 30}};
    for (const FixtureRow &row : fixtureTable(QStringLiteral("heat-trend-series"))) {
        std::vector<HeatTrendPoint> samples;
        for (const QByteArray &sample : row.fields[0].split(' ')) {
            if (const QList<QByteArray> v = sample.split(':'); v.size() == 3)
                samples.push_back({.elapsedSeconds = v[0].toDouble(),
                                   .cpu = valueIn(v[1]),
                                   .temperature = valueIn(v[2])});
        }
        const TrendChartContent content = heatTrendContent(look, samples);
        EXPECT_EQ(content.series[0].points, pointsIn(row.fields[1])) << row.where;
        EXPECT_EQ(content.series[1].points, pointsIn(row.fields[2])) << row.where;
        const QList<QByteArray> marked = row.fields[3].split(' ');
        EXPECT_EQ(content.series[0].lastPointMarkArea,
                  marked.contains("cpu") ? std::optional(36.0) : std::nullopt)
            << row.where;
        EXPECT_EQ(content.series[1].lastPointMarkArea,
                  marked.contains("temperature") ? std::optional(30.0) : std::nullopt)
            << row.where;
        EXPECT_EQ(content.isEmpty(), samples.empty()) << row.where;
    }
}

} // namespace
