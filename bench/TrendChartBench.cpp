// What one repaint of a trend chart costs: two series with areas, lines and
// marks, labels and grid lines, at 900 by 300, painted into an image. Once
// with the same content (the cached curves are reused, as on an expose) and
// once with new content per repaint (as on a tick, which rebuilds the curves).

#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/TrendChart.h"

#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

TrendChartContent twoSeries(int points, double phase)
{
    using namespace DashboardPalette;
    TrendChartContent content;
    content.x.upperBound = 1800.0;
    content.x.labels = {{0, QStringLiteral("-30 分钟")},
                        {600, QStringLiteral("-20 分钟")},
                        {1200, QStringLiteral("-10 分钟")},
                        {1800, QStringLiteral("现在")}};
    content.x.showsGridLines = true;
    content.x.gridColor = color(divider);
    content.y.labels = {
        {0, QStringLiteral("0")}, {50, QStringLiteral("50")}, {100, QStringLiteral("100")}};
    content.y.showsGridLines = true;
    content.y.gridColor = color(divider, 0.8);
    content.style.labelColor = color(textTertiary);
    content.style.plotBackground = color(panelBackground);

    TrendChartSeries cpu;
    cpu.name = QStringLiteral("CPU");
    cpu.color = color(warning);
    cpu.area = TrendChartArea{0.0, 0.18, 0.01};
    cpu.lastPointMarkArea = 28.0;
    TrendChartSeries heat = cpu;
    heat.name = QStringLiteral("温度");
    heat.color = color(accent);
    heat.area = TrendChartArea{30.0, 0.1, 0.01};
    for (int i = 0; i < points; ++i) {
        const double x = 1800.0 * i / (points - 1);
        cpu.points.emplace_back(x, 50.0 + 40.0 * std::sin(x / 90.0 + phase));
        heat.points.emplace_back(x, 60.0 + 15.0 * std::sin(x / 300.0 + phase));
    }
    content.series = {cpu, heat};
    return content;
}

void repaint(TrendChart &chart, QImage &image)
{
    image.fill(Qt::white);
    QPainter painter(&image);
    chart.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
}

void BM_TrendChartRepaint(benchmark::State &state)
{
    TrendChart chart;
    chart.resize(900, 300);
    chart.setContent(twoSeries(int(state.range(0)), 0.0));
    QImage image(chart.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state)
        repaint(chart, image);
}
BENCHMARK(BM_TrendChartRepaint)->Arg(60)->Arg(361)->Unit(benchmark::kMicrosecond);

void BM_TrendChartRepaintNewContent(benchmark::State &state)
{
    TrendChart chart;
    chart.resize(900, 300);
    const TrendChartContent contents[] = {twoSeries(int(state.range(0)), 0.0),
                                          twoSeries(int(state.range(0)), 0.5)};
    QImage image(chart.size(), QImage::Format_ARGB32_Premultiplied);
    int tick = 0;
    for (auto _ : state) {
        chart.setContent(contents[tick++ % 2]);
        repaint(chart, image);
    }
}
BENCHMARK(BM_TrendChartRepaintNewContent)->Arg(60)->Arg(361)->Unit(benchmark::kMicrosecond);

} // namespace
