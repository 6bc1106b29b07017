#include "presentation/icons/ApplicationIcon.h"

#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/KilnWardenMark.h"

#include <QImage>
#include <QPainterPath>
#include <QXmlStreamWriter>

namespace {

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

// SVG path data of a path made of moves, lines and cubic curves.
QString pathData(const QPainterPath &path)
{
    QStringList commands;
    for (int index = 0; index < path.elementCount(); ++index) {
        const QPainterPath::Element element = path.elementAt(index);
        switch (element.type) {
        case QPainterPath::MoveToElement:
            commands << QStringLiteral("M %1 %2").arg(number(element.x), number(element.y));
            break;
        case QPainterPath::LineToElement:
            commands << QStringLiteral("L %1 %2").arg(number(element.x), number(element.y));
            break;
        case QPainterPath::CurveToElement:
            if (index + 2 < path.elementCount()) {
                const QPainterPath::Element control2 = path.elementAt(index + 1);
                const QPainterPath::Element end = path.elementAt(index + 2);
                commands << QStringLiteral("C %1 %2 %3 %4 %5 %6")
                                .arg(number(element.x), number(element.y), number(control2.x),
                                     number(control2.y), number(end.x), number(end.y));
                index += 2;
            }
            break;
        case QPainterPath::CurveToDataElement:
            break;
        }
    }
    return commands.join(QLatin1Char(' '));
}

void writeStroke(QXmlStreamWriter &svg, const QPainterPath &path, const QColor &color, double width)
{
    svg.writeEmptyElement(QStringLiteral("path"));
    svg.writeAttribute(QStringLiteral("d"), pathData(path));
    svg.writeAttribute(QStringLiteral("fill"), QStringLiteral("none"));
    svg.writeAttribute(QStringLiteral("stroke"), color.name());
    svg.writeAttribute(QStringLiteral("stroke-width"), number(width));
    svg.writeAttribute(QStringLiteral("stroke-linecap"), QStringLiteral("round"));
    svg.writeAttribute(QStringLiteral("stroke-linejoin"), QStringLiteral("round"));
    svg.writeAttribute(QStringLiteral("stroke-miterlimit"), QStringLiteral("10"));
}

} // namespace

QByteArray kilnWardenApplicationIconSvg()
{
    using Geometry = KilnWardenApplicationIconGeometry;
    const KilnWardenMarkColors colors = kilnWardenMarkColors(KilnWardenMarkPalette::fullColor);
    QByteArray document;
    QXmlStreamWriter svg(&document);
    svg.setAutoFormatting(true);
    svg.writeStartDocument();
    svg.writeStartElement(QStringLiteral("svg"));
    svg.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    svg.writeAttribute(QStringLiteral("width"), QStringLiteral("512"));
    svg.writeAttribute(QStringLiteral("height"), QStringLiteral("512"));
    svg.writeAttribute(QStringLiteral("viewBox"), QStringLiteral("0 0 100 100"));

    const double inset = 100.0 * Geometry::tileInset;
    svg.writeEmptyElement(QStringLiteral("rect"));
    svg.writeAttribute(QStringLiteral("x"), number(inset));
    svg.writeAttribute(QStringLiteral("y"), number(inset));
    svg.writeAttribute(QStringLiteral("width"), number(100.0 - 2 * inset));
    svg.writeAttribute(QStringLiteral("height"), number(100.0 - 2 * inset));
    svg.writeAttribute(QStringLiteral("rx"), number(100.0 * Geometry::tileCornerRadius));
    svg.writeAttribute(QStringLiteral("fill"), QColor::fromRgb(DashboardPalette::white).name());

    // The mark's own 100-unit square, scaled into the tile's inner area.
    const double markInset = 100.0 * Geometry::markInset;
    svg.writeStartElement(QStringLiteral("g"));
    svg.writeAttribute(QStringLiteral("transform"),
                       QStringLiteral("translate(%1 %1) scale(%2)")
                           .arg(number(markInset), number((100.0 - 2 * markInset) / 100.0)));
    writeStroke(svg, KilnWardenMarkGeometry::brackets(), colors.brackets,
                KilnWardenMarkGeometry::bracketLineWidth);
    for (int segment = 0; segment < 3; ++segment) {
        writeStroke(svg, KilnWardenMarkGeometry::pulseSegment(segment),
                    segment == 1 ? colors.pulseMarked : colors.pulse,
                    KilnWardenMarkGeometry::pulseLineWidth);
    }
    for (int bar = 0; bar < 5; ++bar) {
        const QRectF rect = KilnWardenMarkGeometry::loadBar(bar);
        svg.writeEmptyElement(QStringLiteral("rect"));
        svg.writeAttribute(QStringLiteral("x"), number(rect.x()));
        svg.writeAttribute(QStringLiteral("y"), number(rect.y()));
        svg.writeAttribute(QStringLiteral("width"), number(rect.width()));
        svg.writeAttribute(QStringLiteral("height"), number(rect.height()));
        svg.writeAttribute(QStringLiteral("rx"), number(rect.width() / 2.0));
        svg.writeAttribute(
            QStringLiteral("fill"),
            (bar == KilnWardenMarkGeometry::markedBarIndex ? colors.barMarked : colors.bar).name());
    }
    svg.writeEndElement(); // g
    svg.writeEndElement(); // svg
    svg.writeEndDocument();
    return document;
}
