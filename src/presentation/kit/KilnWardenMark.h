#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QWidget>

class QPainter;

enum class KilnWardenMarkPalette { fullColor, reversed, monochrome, templateTint };

// The product's mark, drawn from vector geometry at any size: four corner
// brackets around a pulse line, with small load bars under it. The geometry
// lives in a 100 by 100 square (y down) that is centred in `canvas` and scaled
// to its smaller side. `templateColor` is the one colour of the template
// palette (the tray's own tint); the other palettes ignore it.
void paintKilnWardenMark(QPainter &painter, const QRectF &canvas, KilnWardenMarkPalette palette,
                         bool showsLoadBars, const QColor &templateColor = Qt::black);

// The mark's parts as paths in the 100-unit square, for tests and for the
// build step that writes the icon files.
struct KilnWardenMarkGeometry {
    static QPainterPath brackets();
    static QPainterPath pulseSegment(int index); // 0, 1, 2
    static QRectF loadBar(int index);            // 0..4
    static constexpr int markedBarIndex = 3;
    static constexpr double bracketLineWidth = 7.0;
    static constexpr double pulseLineWidth = 6.0;
};

// The colours of the mark's parts in a palette (the template colour is the
// template palette's only one).
struct KilnWardenMarkColors {
    QColor brackets;
    QColor pulse;       // segments 1 and 3
    QColor pulseMarked; // segment 2
    QColor bar;
    QColor barMarked;
};
KilnWardenMarkColors kilnWardenMarkColors(KilnWardenMarkPalette palette,
                                          const QColor &templateColor = Qt::black);

// The application icon's layout, in fractions of its side: a white tile with
// rounded corners, slightly inset, and the full-colour mark inside it; the
// bars show from `smallestSizeWithBars` pixels up. The pixel icons and the
// icon theme's SVG are both drawn from these.
struct KilnWardenApplicationIconGeometry {
    static constexpr double tileInset = 0.04;
    static constexpr double tileCornerRadius = 0.22;
    static constexpr double markInset = 0.14;
    static constexpr int smallestSizeWithBars = 24;
};

// The application's icon: the full-colour mark with its bars on a white
// rounded tile, at the usual icon sizes.
QIcon kilnWardenApplicationIcon();
QImage kilnWardenApplicationIconImage(int pixelSize);

class KilnWardenMarkView final : public QWidget {
    Q_OBJECT

public:
    KilnWardenMarkView(KilnWardenMarkPalette palette, bool showsLoadBars,
                       QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    KilnWardenMarkPalette m_palette;
    bool m_showsLoadBars;
};
