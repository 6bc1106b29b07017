#include "presentation/kit/SystemSymbols.h"

#include "presentation/kit/DashboardLayoutEnvironment.h"
#include "presentation/kit/SystemSymbolGlyphs.h"

#include <QHash>
#include <QMutex>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

namespace {

// Line width in the 24-unit design square, by weight in its order.
constexpr double kWeightStrokes[] = {1.7, 2.0, 2.3, 2.6};
static_assert(std::size(kWeightStrokes) == std::size_t(SymbolWeight::bold) + 1);
static_assert(std::adjacent_find(std::begin(kWeightStrokes), std::end(kWeightStrokes),
                                 std::greater_equal<>()) == std::end(kWeightStrokes),
              "each heavier weight draws a wider line");

// Small glyphs get an optical size, as type does: below about 14 pixels a
// regular line of the design width falls under one device pixel and fades to
// grey, so lines are held near one pixel, up to 40 % wider than designed
// (beyond that a glyph's own gaps close up). Heavier weights already reach a
// pixel sooner, so at the smallest sizes the weights draw alike, as hinted
// type does. Widths are kept to a tenth of a unit so that the outline cache
// stays small.
double strokeFor(SymbolWeight weight, double devicePixelsPerUnit)
{
    constexpr double minimumPixels = 0.95;
    const double design = kWeightStrokes[static_cast<std::size_t>(weight)];
    const double wanted = std::clamp(minimumPixels / devicePixelsPerUnit, design, 1.4 * design);
    return std::round(wanted * 10.0) / 10.0;
}

// Outlines are built once per name and line width: the path operations are
// far dearer than filling the result. Painting happens on the GUI thread, but
// pixmaps may be made elsewhere, hence the lock.
QPainterPath glyphOutline(const QString &name, double stroke)
{
    static QMutex mutex;
    static QHash<QString, QPainterPath> cache;
    const auto entries = symbolGlyphTable();
    const auto entry = std::find_if(entries.begin(), entries.end(), [&](const auto &candidate) {
        return name == QLatin1String(candidate.name);
    });
    const QString key = (entry == entries.end() ? QStringLiteral("?") : name) + QLatin1Char('|') +
                        QString::number(std::lround(stroke * 10.0));
    const QMutexLocker lock(&mutex);
    const auto cached = cache.constFind(key);
    if (cached != cache.constEnd())
        return *cached;
    SymbolGlyphBuilder builder(stroke);
    if (entry == entries.end())
        drawPlaceholderGlyph(builder);
    else
        entry->draw(builder);
    return *cache.insert(key, builder.result());
}

} // namespace

QStringList systemSymbolNames()
{
    QStringList names;
    for (const SymbolGlyphEntry &entry : symbolGlyphTable())
        names.append(QLatin1String(entry.name));
    return names;
}

bool hasSystemSymbol(const QString &name)
{
    const auto entries = symbolGlyphTable();
    return std::any_of(entries.begin(), entries.end(), [&](const SymbolGlyphEntry &entry) {
        return name == QLatin1String(entry.name);
    });
}

void paintSystemSymbol(QPainter &painter, const QString &name, const QRectF &box,
                       const QColor &color, SymbolWeight weight)
{
    const double side = std::min(box.width(), box.height());
    if (!painter.isActive() || !(side > 0.0) || !std::isfinite(side) ||
        !std::isfinite(box.center().x()) || !std::isfinite(box.center().y()))
        return;
    const QTransform &device = painter.deviceTransform();
    const double deviceScale = std::sqrt(std::abs(device.determinant()));
    const double pixelsPerUnit = side / 24.0 * (deviceScale > 0.0 ? deviceScale : 1.0);
    const QPainterPath outline = glyphOutline(name, strokeFor(weight, pixelsPerUnit));
    const double scale = side / (24.0 * SymbolGlyphBuilder::unitsPerDesignUnit);
    QPointF origin(box.center().x() - side / 2.0, box.center().y() - side / 2.0);
    // On an upright painter the glyph starts on a whole device pixel, so one
    // glyph at one size has the same pixels wherever it is drawn (no blurred
    // copy in a box that happens to start half-way into a pixel).
    if (device.type() <= QTransform::TxScale && deviceScale > 0.0) {
        const QPointF onDevice = device.map(origin);
        origin = device.inverted().map(QPointF(std::round(onDevice.x()), std::round(onDevice.y())));
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(origin);
    painter.scale(scale, scale);
    painter.fillPath(outline, color);
    painter.restore();
}

QPixmap systemSymbolPixmap(const QString &name, double size, const QColor &color,
                           SymbolWeight weight, qreal devicePixelRatio)
{
    // An absurd size or ratio gives a small empty pixmap, never a huge one.
    constexpr double largestPixels = 1024.0;
    if (!(devicePixelRatio > 0.0) || !std::isfinite(devicePixelRatio))
        devicePixelRatio = 1.0;
    const double wanted = size * devicePixelRatio;
    const bool drawable = wanted > 0.0 && wanted <= largestPixels;
    const int pixels = drawable ? std::max(1, static_cast<int>(std::ceil(wanted))) : 1;
    QPixmap pixmap(pixels, pixels);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    if (!drawable)
        return pixmap;
    QPainter painter(&pixmap);
    paintSystemSymbol(painter, name, QRectF(0, 0, size, size), color, weight);
    return pixmap;
}

QIcon systemSymbolIcon(const QString &name, const QColor &color, SymbolWeight weight)
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64})
        icon.addPixmap(systemSymbolPixmap(name, size, color, weight));
    return icon;
}

SymbolView::SymbolView(const QString &name, double glyphSize, const QColor &color,
                       SymbolWeight weight, QWidget *parent)
    : QWidget(parent), m_name(name), m_glyphSize(glyphSize), m_color(color), m_weight(weight)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SymbolView::setSymbol(const QString &name)
{
    if (name == m_name)
        return;
    m_name = name;
    update();
}

void SymbolView::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

void SymbolView::setScalesWithText(bool scales)
{
    m_scalesWithText = scales;
    update();
}

double SymbolView::effectiveGlyphSize() const
{
    // A symbol set at a font size spans about 1.2 times that size, as the
    // system symbols the design was made with do beside text of that size;
    // the box a page gives the view still bounds it.
    constexpr double kSpanPerFontSize = 1.2;
    const double size = m_scalesWithText
                            ? dashboardScaledFontSize(m_glyphSize,
                                                      dashboardLayoutOf(this).typographyScale)
                            : m_glyphSize;
    return size * kSpanPerFontSize;
}

QSize SymbolView::sizeHint() const
{
    const int side = static_cast<int>(std::ceil(effectiveGlyphSize()));
    return {side, side};
}

void SymbolView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const double side = std::min({effectiveGlyphSize(), double(width()), double(height())});
    // Centred on whole pixels, so that lines on the design grid fall the same
    // way in every view of one size.
    const QRectF box(std::round((width() - side) / 2.0), std::round((height() - side) / 2.0), side,
                     side);
    paintSystemSymbol(painter, m_name, box, m_color, m_weight);
}
