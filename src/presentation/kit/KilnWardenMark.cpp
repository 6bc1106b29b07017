#include "presentation/kit/KilnWardenMark.h"

#include "presentation/kit/DashboardPalette.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

struct Curve {
    QPointF end, control1, control2;
};

QColor bracketColor(KilnWardenMarkPalette palette, const QColor &templateColor)
{
    switch (palette) {
    case KilnWardenMarkPalette::fullColor:
    case KilnWardenMarkPalette::monochrome:
        return QColor::fromRgb(DashboardPalette::brandInk);
    case KilnWardenMarkPalette::reversed:
        return Qt::white;
    case KilnWardenMarkPalette::templateTint:
        break;
    }
    return templateColor;
}

// Colour of pulse segments 1 and 3 and of the ordinary bars (`marked` false),
// or of segment 2 and the marked bar (`marked` true).
QColor accentColor(KilnWardenMarkPalette palette, bool marked, const QColor &templateColor)
{
    switch (palette) {
    case KilnWardenMarkPalette::fullColor:
    case KilnWardenMarkPalette::reversed:
        return QColor::fromRgb(marked ? DashboardPalette::brandOrange : DashboardPalette::accent);
    case KilnWardenMarkPalette::monochrome:
        return QColor::fromRgb(DashboardPalette::brandInk);
    case KilnWardenMarkPalette::templateTint:
        break;
    }
    return templateColor;
}

} // namespace

KilnWardenMarkColors kilnWardenMarkColors(KilnWardenMarkPalette palette,
                                          const QColor &templateColor)
{
    return {bracketColor(palette, templateColor), accentColor(palette, false, templateColor),
            accentColor(palette, true, templateColor), accentColor(palette, false, templateColor),
            accentColor(palette, true, templateColor)};
}

QPainterPath KilnWardenMarkGeometry::brackets()
{
    struct Corner {
        QPointF move, line;
        Curve curve;
        QPointF lineAfter;
    };
    static const Corner corners[] = {
        {{24, 10}, {15, 10}, {{10, 15}, {12, 10}, {10, 12}}, {10, 25}},
        {{76, 10}, {85, 10}, {{90, 15}, {88, 10}, {90, 12}}, {90, 25}},
        {{10, 75}, {10, 85}, {{15, 90}, {10, 88}, {12, 90}}, {24, 90}},
        {{76, 90}, {85, 90}, {{90, 85}, {88, 90}, {90, 88}}, {90, 75}},
    };
    QPainterPath path;
    for (const Corner &corner : corners) {
        path.moveTo(corner.move);
        path.lineTo(corner.line);
        path.cubicTo(corner.curve.control1, corner.curve.control2, corner.curve.end);
        path.lineTo(corner.lineAfter);
    }
    return path;
}

QPainterPath KilnWardenMarkGeometry::pulseSegment(int index)
{
    struct Segment {
        QPointF move;
        std::vector<Curve> curves;
    };
    static const Segment segments[] = {
        {{15, 57},
         {{{26, 52}, {21, 57}, {21, 52}},
          {{34, 60}, {30, 52}, {30, 60}},
          {{45, 49}, {39, 60}, {40, 49}},
          {{54, 57}, {50, 49}, {50, 57}}}},
        {{54, 57}, {{{65, 31}, {59, 57}, {59, 31}}, {{77, 55}, {71, 31}, {72, 55}}}},
        {{77, 55}, {{{86, 46}, {81, 55}, {82, 46}}, {{90, 56}, {89, 46}, {89, 56}}}},
    };
    QPainterPath path;
    if (index < 0 || index > 2)
        return path;
    const Segment &segment = segments[index];
    path.moveTo(segment.move);
    for (const Curve &curve : segment.curves)
        path.cubicTo(curve.control1, curve.control2, curve.end);
    return path;
}

QRectF KilnWardenMarkGeometry::loadBar(int index)
{
    static const QRectF bars[] = {
        {27, 69, 6, 9}, {41, 65, 6, 13}, {55, 68, 6, 10}, {69, 62, 6, 16}, {83, 68, 6, 10},
    };
    if (index < 0 || index > 4)
        return {};
    return bars[index];
}

void paintKilnWardenMark(QPainter &painter, const QRectF &canvas, KilnWardenMarkPalette palette,
                         bool showsLoadBars, const QColor &templateColor)
{
    const double side = std::min(canvas.width(), canvas.height());
    if (!(side > 0.0))
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(canvas.left() + (canvas.width() - side) * 0.5,
                      canvas.top() + (canvas.height() - side) * 0.5);
    painter.scale(side / 100.0, side / 100.0);
    painter.setBrush(Qt::NoBrush);

    QPen bracketPen(bracketColor(palette, templateColor), KilnWardenMarkGeometry::bracketLineWidth,
                    Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    bracketPen.setMiterLimit(10.0);
    painter.setPen(bracketPen);
    painter.drawPath(KilnWardenMarkGeometry::brackets());

    for (int segment = 0; segment < 3; ++segment) {
        QPen pulsePen(accentColor(palette, segment == 1, templateColor),
                      KilnWardenMarkGeometry::pulseLineWidth, Qt::SolidLine, Qt::RoundCap,
                      Qt::RoundJoin);
        pulsePen.setMiterLimit(10.0);
        painter.setPen(pulsePen);
        painter.drawPath(KilnWardenMarkGeometry::pulseSegment(segment));
    }

    if (showsLoadBars) {
        painter.setPen(Qt::NoPen);
        for (int bar = 0; bar < 5; ++bar) {
            const QRectF rect = KilnWardenMarkGeometry::loadBar(bar);
            painter.setBrush(
                accentColor(palette, bar == KilnWardenMarkGeometry::markedBarIndex, templateColor));
            painter.drawRoundedRect(rect, rect.width() / 2.0, rect.width() / 2.0);
        }
    }
    painter.restore();
}

QImage kilnWardenApplicationIconImage(int pixelSize)
{
    const int size = std::max(1, pixelSize);
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    using Geometry = KilnWardenApplicationIconGeometry;
    // A tile keeps the dark brackets legible on dark panels and menus.
    const double inset = size * Geometry::tileInset;
    const QRectF tile(inset, inset, size - 2 * inset, size - 2 * inset);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(DashboardPalette::white));
    painter.drawRoundedRect(tile, size * Geometry::tileCornerRadius,
                            size * Geometry::tileCornerRadius);
    const double markInset = size * Geometry::markInset;
    paintKilnWardenMark(painter,
                        QRectF(markInset, markInset, size - 2 * markInset, size - 2 * markInset),
                        KilnWardenMarkPalette::fullColor, size >= Geometry::smallestSizeWithBars);
    return image;
}

QIcon kilnWardenApplicationIcon()
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(QPixmap::fromImage(kilnWardenApplicationIconImage(size)));
    return icon;
}

KilnWardenMarkView::KilnWardenMarkView(KilnWardenMarkPalette palette, bool showsLoadBars,
                                       QWidget *parent)
    : QWidget(parent), m_palette(palette), m_showsLoadBars(showsLoadBars)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void KilnWardenMarkView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintKilnWardenMark(painter, QRectF(rect()), m_palette, m_showsLoadBars,
                        palette().color(QPalette::WindowText));
}
