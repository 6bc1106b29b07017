#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QString>

#include <span>

// The drawings behind SystemSymbols.h. Every glyph is designed in a 24-unit
// square and built into ONE filled outline: strokes are turned into their
// outlines and united with the solid areas, and knocked-out details are
// subtracted from the result. One outline paints in one pass, so a
// translucent colour never darkens where two strokes cross, and a knocked-out
// detail shows whatever lies behind the glyph.
class SymbolGlyphBuilder {
public:
    // `stroke` is the line width in design units for the weight and size.
    explicit SymbolGlyphBuilder(double stroke);

    double stroke() const { return m_stroke; }

    // Adds the outline of `centre` stroked at `factor` times the line width,
    // with round caps and joins.
    void stroke(const QPainterPath &centre, double factor = 1.0);
    // Adds the outline of `centre` stroked at an absolute width in units.
    void strokeWidth(const QPainterPath &centre, double width);
    void fill(const QPainterPath &area);
    // Fills `area` with its corners rounded by `radius` (the area grows by
    // `radius` all round, so draw it inset by that much).
    void fillRounded(const QPainterPath &area, double radius);
    void cut(const QPainterPath &area);
    void cutStroke(const QPainterPath &centre, double factor = 1.0);

    // The glyph in the builder's working units, `unitsPerDesignUnit` to one
    // design unit. Path operations flatten curves into a number of segments
    // that grows with their size, so they run on this finer grid: four units
    // keep even a round cap smooth to about 100 pixels, and the outlines
    // small enough that filling one costs about 10 microseconds at 16 pixels
    // (bench/SystemSymbolsBench.cpp).
    QPainterPath result() const { return m_shape; }
    static constexpr double unitsPerDesignUnit = 4.0;

private:
    QPainterPath outline(const QPainterPath &centre, double width) const;

    double m_stroke;
    QPainterPath m_shape;
};

using SymbolGlyphDrawing = void (*)(SymbolGlyphBuilder &);

struct SymbolGlyphEntry {
    const char *name;
    SymbolGlyphDrawing draw;
};

// Every glyph the program draws, in the stable order of systemSymbolNames().
std::span<const SymbolGlyphEntry> symbolGlyphTable();

// The glyph of an unknown name: a ring with a dot.
void drawPlaceholderGlyph(SymbolGlyphBuilder &glyph);
