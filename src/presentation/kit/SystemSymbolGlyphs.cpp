#include "presentation/kit/SystemSymbolGlyphs.h"

#include <QPainterPathStroker>
#include <QPolygonF>
#include <QTransform>

#include <cmath>
#include <initializer_list>
#include <numbers>

SymbolGlyphBuilder::SymbolGlyphBuilder(double stroke) : m_stroke(stroke)
{
    m_shape.setFillRule(Qt::WindingFill);
}

QPainterPath SymbolGlyphBuilder::outline(const QPainterPath &centre, double width) const
{
    QPainterPathStroker stroker;
    stroker.setWidth(width * unitsPerDesignUnit);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    stroker.setCurveThreshold(0.05);
    const QTransform scale = QTransform::fromScale(unitsPerDesignUnit, unitsPerDesignUnit);
    return stroker.createStroke(scale.map(centre));
}

void SymbolGlyphBuilder::stroke(const QPainterPath &centre, double factor)
{
    strokeWidth(centre, m_stroke * factor);
}

void SymbolGlyphBuilder::strokeWidth(const QPainterPath &centre, double width)
{
    m_shape = m_shape.united(outline(centre, width));
}

void SymbolGlyphBuilder::fill(const QPainterPath &area)
{
    const QTransform scale = QTransform::fromScale(unitsPerDesignUnit, unitsPerDesignUnit);
    m_shape = m_shape.united(scale.map(area));
}

void SymbolGlyphBuilder::fillRounded(const QPainterPath &area, double radius)
{
    fill(area);
    strokeWidth(area, 2.0 * radius);
}

void SymbolGlyphBuilder::cut(const QPainterPath &area)
{
    const QTransform scale = QTransform::fromScale(unitsPerDesignUnit, unitsPerDesignUnit);
    m_shape = m_shape.subtracted(scale.map(area));
}

void SymbolGlyphBuilder::cutStroke(const QPainterPath &centre, double factor)
{
    m_shape = m_shape.subtracted(outline(centre, m_stroke * factor));
}

namespace {

// Small path vocabulary, in design units.

QPainterPath polyline(std::initializer_list<QPointF> points, bool closed = false)
{
    QPainterPath path;
    bool first = true;
    for (const QPointF &point : points) {
        if (first)
            path.moveTo(point);
        else
            path.lineTo(point);
        first = false;
    }
    if (closed)
        path.closeSubpath();
    return path;
}

QPainterPath line(QPointF from, QPointF to)
{
    return polyline({from, to});
}

QPainterPath circle(QPointF centre, double radius)
{
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return path;
}

QPainterPath ellipse(QPointF centre, double rx, double ry)
{
    QPainterPath path;
    path.addEllipse(centre, rx, ry);
    return path;
}

QPainterPath roundedRect(const QRectF &rect, double radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

QPointF onCircle(QPointF centre, double radius, double degrees)
{
    // Degrees counter-clockwise from three o'clock, as on the screen.
    const double radians = degrees * std::numbers::pi / 180.0;
    return {centre.x() + radius * std::cos(radians), centre.y() - radius * std::sin(radians)};
}

QPainterPath arc(QPointF centre, double radius, double startDegrees, double sweepDegrees)
{
    const QRectF rect(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    QPainterPath path;
    path.arcMoveTo(rect, startDegrees);
    path.arcTo(rect, startDegrees, sweepDegrees);
    return path;
}

// The union of two design-unit paths. Path operations flatten curves to a
// number of segments that depends on their size, so they run on the
// builder's finer grid and come back in design units.
QPainterPath united(const QPainterPath &first, const QPainterPath &second)
{
    const double up = SymbolGlyphBuilder::unitsPerDesignUnit;
    const QTransform toFine = QTransform::fromScale(up, up);
    const QTransform back = QTransform::fromScale(1.0 / up, 1.0 / up);
    return back.map(toFine.map(first).united(toFine.map(second)));
}

QPainterPath rotated(const QPainterPath &path, QPointF centre, double degrees)
{
    QTransform transform;
    transform.translate(centre.x(), centre.y());
    transform.rotate(degrees);
    transform.translate(-centre.x(), -centre.y());
    return transform.map(path);
}

// A gear outline: `teeth` flat-topped teeth between the root and outer radii,
// the first one pointing up.
QPainterPath gear(QPointF centre, double outer, double root, int teeth)
{
    const double pitch = 360.0 / teeth;
    const double topHalf = pitch * 0.2;
    const double rootHalf = pitch * 0.31;
    QPolygonF polygon;
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double middle = 90.0 - tooth * pitch;
        polygon << onCircle(centre, root, middle + rootHalf)
                << onCircle(centre, outer, middle + topHalf)
                << onCircle(centre, outer, middle - topHalf)
                << onCircle(centre, root, middle - rootHalf);
    }
    QPainterPath path;
    path.addPolygon(polygon);
    path.closeSubpath();
    return path;
}

// A check mark whose short arm starts at `start`, scaled by `size` (1 is the
// check of a 20-unit circle).
QPainterPath check(QPointF start, double size)
{
    return polyline({start, start + QPointF(2.9, 2.9) * size, start + QPointF(8.6, -3.1) * size});
}

// The exclamation mark knocked out of a filled warning shape: a bar from
// `top` to `bottom` and a dot below it.
void cutExclamation(SymbolGlyphBuilder &glyph, double top, double bottom, double dot)
{
    glyph.cutStroke(line({12, top}, {12, bottom}), 1.2);
    glyph.cut(circle({12, dot}, glyph.stroke() * 0.72));
}

// The three blades of a fan around its hub, as one area. Each blade is swept:
// a convex leading edge, a broad rounded tip and a hollow trailing edge, so
// the fan reads as turning rather than as a clover.
QPainterPath fanBlades()
{
    QPainterPath blade;
    blade.moveTo(10.2, 10.0);
    blade.cubicTo(8.8, 7.6, 9.2, 3.0, 12.8, 2.5);
    blade.cubicTo(15.6, 2.1, 18.2, 3.6, 17.6, 6.2);
    blade.cubicTo(17.2, 7.8, 14.8, 8.4, 14.0, 10.6);
    blade.closeSubpath();
    QPainterPath blades = circle({12, 12}, 3.2);
    for (int index = 0; index < 3; ++index)
        blades = united(blades, rotated(blade, {12, 12}, index * 120.0));
    return blades;
}

// The drawings, in the order of the table below.

void waveformPathEcg(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(polyline({{2, 12.5},
                           {6.2, 12.5},
                           {8.2, 8.6},
                           {10.6, 19},
                           {13.6, 4.2},
                           {16, 15.6},
                           {17.6, 12.5},
                           {22, 12.5}}));
}

void gaugeWithDotsNeedle50Percent(SymbolGlyphBuilder &glyph)
{
    const QPointF centre(12, 12);
    glyph.stroke(circle(centre, 9.6));
    const QPointF hub(12, 13.4);
    for (const double degrees : {205.0, 152.0, 28.0, -25.0})
        glyph.fill(circle(onCircle(hub, 6.2, degrees), glyph.stroke() * 0.62));
    glyph.stroke(line(hub, {12, 6.4}));
    glyph.fill(circle(hub, glyph.stroke() * 1.15));
}

void cpu(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(roundedRect({5, 5, 14, 14}, 2.6));
    glyph.fill(roundedRect({9, 9, 6, 6}, 1.2));
    for (const double at : {8.5, 12.0, 15.5}) {
        glyph.stroke(line({at, 5}, {at, 2.2}));
        glyph.stroke(line({at, 19}, {at, 21.8}));
        glyph.stroke(line({5, at}, {2.2, at}));
        glyph.stroke(line({19, at}, {21.8, at}));
    }
}

void clockArrowCirclepath(SymbolGlyphBuilder &glyph)
{
    const QPointF centre(13, 12);
    glyph.stroke(arc(centre, 8.5, 180, -295));
    glyph.stroke(polyline({{2.2, 9.7}, {4.5, 12.2}, {6.8, 9.7}}));
    glyph.stroke(polyline({{13, 7.4}, {13, 12}, {16.2, 14.2}}));
}

void gearshape(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(gear({12, 12}, 9.6, 7.1, 8));
    glyph.stroke(circle({12, 12}, 3.1));
}

void gearshape2(SymbolGlyphBuilder &glyph)
{
    const QPointF large(14.4, 9.6);
    const QPointF small(7.4, 16.6);
    glyph.stroke(gear(large, 7.6, 5.5, 8));
    glyph.stroke(circle(large, 2.3));
    const QPainterPath smallGear = rotated(gear(small, 5.4, 3.8, 6), small, 15);
    // Keep a gap between the two gears where they overlap.
    glyph.cut(smallGear);
    glyph.cutStroke(smallGear, 2.6);
    glyph.stroke(smallGear);
    glyph.stroke(circle(small, 1.5));
}

QPainterPath shield()
{
    QPainterPath path;
    path.moveTo(12, 2.4);
    path.cubicTo(14.6, 3.9, 17.2, 4.7, 19.6, 5.0);
    path.lineTo(19.6, 11.2);
    path.cubicTo(19.6, 16.2, 16.4, 19.6, 12, 21.6);
    path.cubicTo(7.6, 19.6, 4.4, 16.2, 4.4, 11.2);
    path.lineTo(4.4, 5.0);
    path.cubicTo(6.8, 4.7, 9.4, 3.9, 12, 2.4);
    path.closeSubpath();
    return path;
}

void checkmarkShield(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(shield());
    glyph.stroke(check({8.6, 11.8}, 0.78));
}

void checkmarkCircle(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(circle({12, 12}, 9.5));
    glyph.stroke(check({7.7, 12.2}, 1.0));
}

void checkmarkCircleFill(SymbolGlyphBuilder &glyph)
{
    glyph.fill(circle({12, 12}, 9.5 + glyph.stroke() / 2));
    glyph.cutStroke(check({7.7, 12.2}, 1.0), 1.1);
}

void hammerFill(SymbolGlyphBuilder &glyph)
{
    // Drawn upright, head at the top with its face to the right and its peen
    // tapering to the left, then laid on the diagonal and fitted to the box.
    const QPainterPath head =
        polyline({{3.8, 4.9}, {7.6, 2.6}, {19.2, 2.6}, {19.2, 8.8}, {7.6, 8.8}, {3.8, 6.5}}, true);
    const QPainterPath handle = roundedRect({10.3, 8.0, 3.4, 15.0}, 1.7);
    const QPainterPath hammer = rotated(united(head, handle), {12, 12}, 45);
    const QRectF bounds = hammer.boundingRect();
    const double scale = 19.0 / std::max(bounds.width(), bounds.height());
    QTransform fit;
    fit.translate(12, 12);
    fit.scale(scale, scale);
    fit.translate(-bounds.center().x(), -bounds.center().y());
    glyph.fillRounded(fit.map(hammer), 0.6);
}

void magnifyingglass(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(circle({10.2, 10.2}, 6.7));
    glyph.stroke(line({15.2, 15.2}, {20.4, 20.4}), 1.2);
}

void shippingboxFill(SymbolGlyphBuilder &glyph)
{
    glyph.fillRounded(
        polyline({{12, 2.9}, {19.9, 7}, {19.9, 17}, {12, 21.1}, {4.1, 17}, {4.1, 7}}, true), 0.9);
    const double seam = std::max(0.7, glyph.stroke() * 0.6);
    glyph.cutStroke(polyline({{5.4, 7.7}, {12, 11.1}, {18.6, 7.7}}), seam / glyph.stroke());
    glyph.cutStroke(line({12, 11.1}, {12, 19.8}), seam / glyph.stroke());
    // The tape across the lid.
    glyph.cutStroke(line({8.3, 5.0}, {15.0, 8.5}), seam / glyph.stroke());
}

void network(SymbolGlyphBuilder &glyph)
{
    const QPointF centre(12, 12);
    glyph.stroke(circle(centre, 9.6));
    glyph.stroke(ellipse(centre, 4.4, 9.6));
    glyph.stroke(line({12, 2.4}, {12, 21.6}));
    QPainterPath parallels;
    parallels.moveTo(3.6, 7.6);
    parallels.quadTo(12, 11.2, 20.4, 7.6);
    parallels.moveTo(2.9, 14.6);
    parallels.quadTo(12, 18.6, 21.1, 14.6);
    glyph.stroke(parallels);
}

void globe(SymbolGlyphBuilder &glyph)
{
    const QPointF centre(12, 12);
    glyph.stroke(circle(centre, 9.6));
    glyph.stroke(ellipse(centre, 4.2, 9.6));
    glyph.stroke(line({2.4, 12}, {21.6, 12}));
    glyph.stroke(line({4.4, 6.6}, {19.6, 6.6}));
    glyph.stroke(line({4.4, 17.4}, {19.6, 17.4}));
}

void terminal(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(roundedRect({2.6, 4.2, 18.8, 15.6}, 3.0));
    glyph.stroke(polyline({{6.6, 8.8}, {9.8, 12}, {6.6, 15.2}}));
    glyph.stroke(line({11.8, 15.2}, {16.8, 15.2}));
}

void thermometerMedium(SymbolGlyphBuilder &glyph)
{
    const double x = 10.2;
    QPainterPath body = roundedRect({x - 2.6, 2.4, 5.2, 14.0}, 2.6);
    body = united(body, circle({x, 17.4}, 4.2));
    glyph.stroke(body);
    glyph.fill(circle({x, 17.4}, 2.0));
    glyph.stroke(line({x, 17.4}, {x, 10.2}));
    for (const double y : {5.0, 8.4, 11.8})
        glyph.stroke(line({16.4, y}, {19.2, y}));
}

void fan(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(fanBlades());
    glyph.stroke(circle({12, 12}, 1.4));
}

void fanFill(SymbolGlyphBuilder &glyph)
{
    glyph.fillRounded(fanBlades(), glyph.stroke() / 2);
    glyph.cutStroke(circle({12, 12}, 2.6), 0.75);
}

void memorychip(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(roundedRect({2.6, 6.6, 18.8, 10.8}, 2.0));
    glyph.fill(roundedRect({6.2, 10.0, 4.6, 4.0}, 0.8));
    glyph.fill(roundedRect({13.2, 10.0, 4.6, 4.0}, 0.8));
    for (const double x : {6.5, 10.2, 13.8, 17.5}) {
        glyph.stroke(line({x, 6.6}, {x, 3.6}));
        glyph.stroke(line({x, 17.4}, {x, 20.4}));
    }
}

void externaldrive(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(roundedRect({2.6, 5.6, 18.8, 12.8}, 3.6));
    glyph.stroke(line({2.6, 13.4}, {21.4, 13.4}));
    glyph.fill(circle({17.4, 15.9}, glyph.stroke() * 0.62));
}

void internaldrive(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(roundedRect({2.6, 6.2, 18.8, 11.6}, 1.6));
    glyph.stroke(line({2.6, 12.8}, {21.4, 12.8}));
    glyph.stroke(line({5.8, 15.3}, {9.8, 15.3}));
    glyph.fill(circle({18.0, 15.3}, glyph.stroke() * 0.62));
}

void squareStack3dUp(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(polyline({{12, 2.8}, {20.8, 7.4}, {12, 12}, {3.2, 7.4}}, true));
    glyph.stroke(polyline({{3.2, 11.8}, {12, 16.4}, {20.8, 11.8}}));
    glyph.stroke(polyline({{3.2, 16.2}, {12, 20.8}, {20.8, 16.2}}));
}

void eye(SymbolGlyphBuilder &glyph)
{
    QPainterPath lids;
    lids.moveTo(2, 12);
    lids.cubicTo(4.6, 7.6, 8.0, 5.4, 12, 5.4);
    lids.cubicTo(16.0, 5.4, 19.4, 7.6, 22, 12);
    lids.cubicTo(19.4, 16.4, 16.0, 18.6, 12, 18.6);
    lids.cubicTo(8.0, 18.6, 4.6, 16.4, 2, 12);
    lids.closeSubpath();
    glyph.stroke(lids);
    glyph.fill(circle({12, 12}, 3.4));
}

void exclamationmarkTriangleFill(SymbolGlyphBuilder &glyph)
{
    glyph.fillRounded(polyline({{12, 4.3}, {20.6, 19.3}, {3.4, 19.3}}, true), 1.6);
    cutExclamation(glyph, 9.2, 13.4, 16.6);
}

void exclamationmarkOctagonFill(SymbolGlyphBuilder &glyph)
{
    QPolygonF octagon;
    for (int corner = 0; corner < 8; ++corner)
        octagon << onCircle({12, 12}, 9.2, 22.5 + corner * 45.0);
    QPainterPath path;
    path.addPolygon(octagon);
    path.closeSubpath();
    glyph.fillRounded(path, 1.4);
    cutExclamation(glyph, 6.8, 12.6, 16.6);
}

void chevronDown(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(polyline({{5.2, 8.6}, {12, 15.4}, {18.8, 8.6}}), 1.3);
}

void chevronRight(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(polyline({{8.6, 5.2}, {15.4, 12}, {8.6, 18.8}}), 1.3);
}

void point3ConnectedTrianglepathDotted(SymbolGlyphBuilder &glyph)
{
    const QPointF nodes[] = {{12, 4.8}, {19.3, 18.4}, {4.7, 18.4}};
    const double nodeRadius = 2.4;
    for (int index = 0; index < 3; ++index) {
        const QPointF from = nodes[index];
        const QPointF to = nodes[(index + 1) % 3];
        const QPointF step = to - from;
        const double length = std::hypot(step.x(), step.y());
        // Three dots, evenly between the rims of the two nodes.
        const double clear = nodeRadius + 2.0;
        for (int dot = 1; dot <= 3; ++dot) {
            const double at = clear + (length - 2 * clear) * (dot - 1) / 2.0;
            glyph.fill(circle(from + step * (at / length), glyph.stroke() * 0.62));
        }
    }
    for (const QPointF &node : nodes)
        glyph.fill(circle(node, nodeRadius));
}

void clockBadgeCheckmark(SymbolGlyphBuilder &glyph)
{
    const QPointF clock(10.6, 10.6);
    glyph.stroke(circle(clock, 8.2));
    glyph.stroke(polyline({{10.6, 6.0}, {10.6, 10.6}, {13.4, 12.4}}));
    const QPointF badge(17.4, 17.4);
    const double radius = 5.0;
    glyph.cut(circle(badge, radius + 1.4));
    glyph.fill(circle(badge, radius));
    glyph.cutStroke(check(badge + QPointF(-2.6, 0.1), 0.5), 0.85);
}

void listBulletClipboard(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(roundedRect({4.6, 4.2, 14.8, 17.6}, 2.6));
    glyph.cut(roundedRect({7.6, 1.0, 8.8, 6.4}, 2.0));
    glyph.fill(roundedRect({8.6, 2.0, 6.8, 4.4}, 1.4));
    for (const double y : {10.6, 14.0, 17.4}) {
        glyph.fill(circle({8.4, y}, glyph.stroke() * 0.62));
        glyph.stroke(line({11.2, y}, {16.0, y}));
    }
}

constexpr SymbolGlyphEntry glyphTable[] = {
    {"waveform.path.ecg", waveformPathEcg},
    {"gauge.with.dots.needle.50percent", gaugeWithDotsNeedle50Percent},
    {"cpu", cpu},
    {"clock.arrow.circlepath", clockArrowCirclepath},
    {"gearshape", gearshape},
    {"gearshape.2", gearshape2},
    {"checkmark.shield", checkmarkShield},
    {"checkmark.circle", checkmarkCircle},
    {"checkmark.circle.fill", checkmarkCircleFill},
    {"hammer.fill", hammerFill},
    {"magnifyingglass", magnifyingglass},
    {"shippingbox.fill", shippingboxFill},
    {"network", network},
    {"globe", globe},
    {"terminal", terminal},
    {"thermometer.medium", thermometerMedium},
    {"fan", fan},
    {"fan.fill", fanFill},
    {"memorychip", memorychip},
    {"externaldrive", externaldrive},
    {"internaldrive", internaldrive},
    {"square.stack.3d.up", squareStack3dUp},
    {"eye", eye},
    {"exclamationmark.triangle.fill", exclamationmarkTriangleFill},
    {"exclamationmark.octagon.fill", exclamationmarkOctagonFill},
    {"chevron.down", chevronDown},
    {"chevron.right", chevronRight},
    {"point.3.connected.trianglepath.dotted", point3ConnectedTrianglepathDotted},
    {"clock.badge.checkmark", clockBadgeCheckmark},
    {"list.bullet.clipboard", listBulletClipboard},
};

} // namespace

std::span<const SymbolGlyphEntry> symbolGlyphTable()
{
    return glyphTable;
}

void drawPlaceholderGlyph(SymbolGlyphBuilder &glyph)
{
    glyph.stroke(circle({12, 12}, 9.0));
    glyph.fill(circle({12, 12}, glyph.stroke()));
}
