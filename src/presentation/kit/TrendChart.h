#pragma once

#include "presentation/kit/DashboardLayoutEnvironment.h"

#include <QColor>
#include <QFont>
#include <QPainterPath>
#include <QPointF>
#include <QString>
#include <QWidget>

#include <optional>
#include <vector>

// One chart widget for every trend of the dashboard: fixed x and y domains,
// per series an optional area and a line through its points with a tensioned
// cardinal spline, point marks on the last point, custom axis labels with grid
// lines, a rounded plot background, and an overlay text while there is no data.
// A gap in a series is a missing point (never a zero): the caller passes only
// the points that have a value, and the curve joins their neighbours.

// A cardinal spline through `points` (in order): each segment P1→P2 is a cubic
// Bézier with control points P1 + k·(P2 − P0) and P2 − k·(P3 − P1), where
// k = (1 − tension) / 6 and a missing neighbour at either end is the end point
// itself. One point gives a path with only a move; none gives an empty path.
QPainterPath cardinalSplinePath(const std::vector<QPointF> &points, double tension);

struct TrendChartArea {
    // The area is filled from this y value (the plot's lower bound, or a base
    // value) up to the curve.
    double baseValue = 0.0;
    // Vertical gradient of the series colour from the top of the plot to its
    // bottom (not of the area's own bounds), so equal heights look alike.
    double topOpacity = 0.18;
    double bottomOpacity = 0.01;

    bool operator==(const TrendChartArea &) const = default;
};

struct TrendChartSeries {
    QString name; // for accessibility and the mark's description
    // x ascending; only points that have a value. One point draws only its
    // mark: neither line nor area.
    std::vector<QPointF> points;
    QColor color;
    double lineWidth = 2.4;
    std::optional<TrendChartArea> area;
    // The last point's mark, as a symbol area in square pixels (a mark of
    // area A is a filled circle of diameter 2·sqrt(A/π)); absent for none.
    std::optional<double> lastPointMarkArea;
    // How the accessible value reads the last point: "<name> <value><unit>",
    // the value with this many fraction digits in the user's locale.
    QString valueUnit;
    int valueFractionDigits = 0;

    bool operator==(const TrendChartSeries &) const = default;
};

struct TrendChartAxisLabel {
    double value = 0.0;
    QString text;

    bool operator==(const TrendChartAxisLabel &) const = default;
};

struct TrendChartAxis {
    double lowerBound = 0.0;
    double upperBound = 100.0;
    // Positions of labels and grid lines; the vertical axis's labels stand
    // beside the plot at its trailing edge, the horizontal axis's under it.
    std::vector<TrendChartAxisLabel> labels;
    bool showsLabels = true;
    bool showsGridLines = false;
    QColor gridColor;
    double gridWidth = 1.0;

    bool operator==(const TrendChartAxis &) const = default;
};

struct TrendChartStyle {
    QColor labelColor;
    double labelFontSize = 10.0; // dashboard font size, scaled with the window
    QColor plotBackground;
    double plotCornerRadius = 12.0;
    QString emptyText;   // shown centred when every series is empty
    QString emptySymbol; // optional system symbol above the empty text
    double emptyFontSize = 12.0;
    double emptySymbolSize = 18.0; // glyph size, scaled with the window like a font
    QColor emptyColor;
    double tension = 0.5;

    bool operator==(const TrendChartStyle &) const = default;
};

struct TrendChartContent {
    TrendChartAxis x;
    TrendChartAxis y;
    std::vector<TrendChartSeries> series; // areas of all, then lines, then marks
    TrendChartStyle style;

    bool operator==(const TrendChartContent &) const = default;
    bool isEmpty() const;
};

// The chart repaints when its content or size changes (or the window's
// typography scale, through applyLayout); the mapped curves are kept between
// repaints. Its accessible value reads the last value of every series that has
// one ("CPU 42%，温度 71°C"), or the empty text while there is no data.
class TrendChart : public QWidget, public DashboardLayoutAware {
    Q_OBJECT

public:
    explicit TrendChart(QWidget *parent = nullptr);

    // Repaints only when the content differs from what is shown.
    void setContent(TrendChartContent content);
    const TrendChartContent &content() const { return m_content; }

    // The plot rectangle within the widget (the widget minus the axis labels):
    // the rounded background, and the bounds of everything but the labels.
    QRectF plotRect() const;
    // Values map linearly into the plot rectangle less a margin that keeps the
    // last-point marks and the line's width whole at its edges, clamped to the
    // domains' bounds.
    QRectF valueRect() const;
    QPointF mapToPlot(QPointF value) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void applyLayout(const DashboardLayoutMetrics &layout) override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct SeriesGeometry {
        QPainterPath line;
        QPainterPath area;
        std::optional<QPointF> mark;
    };
    // What one size, font and content give; rebuilt when any of them changes.
    struct ChartGeometry {
        bool valid = false;
        QSize size;
        QFont labelFont;
        QRectF plot;
        QRectF values;
        std::vector<SeriesGeometry> series;
    };

    const ChartGeometry &chartGeometry() const;
    QPointF mapInto(const QRectF &values, QPointF value) const;
    void paintEmptyOverlay(QPainter &painter, const QRectF &plot) const;
    void invalidateGeometry();
    void updateAccessibleValue();

    TrendChartContent m_content;
    mutable ChartGeometry m_geometry;
};
