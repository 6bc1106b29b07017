#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QWidget>

class QPainter;

// The program names its icons by system symbol names ("cpu", "fan.fill",
// "waveform.path.ecg", ...). Each name maps to a vector glyph drawn by the
// program itself, so every icon shows on a bare desktop with no icon theme.
//
// A glyph of size s is drawn to fit a box of s by s, the way a text glyph of
// that size fills its line: strokes scale with s and with the weight.

enum class SymbolWeight { regular, medium, semibold, bold };

// Every name the program uses, in a stable order.
QStringList systemSymbolNames();
bool hasSystemSymbol(const QString &name);

// Draws `name` centred in `box` (its smaller side is the glyph size). An unknown
// name draws a neutral placeholder glyph (a circle with a dot), never nothing.
void paintSystemSymbol(QPainter &painter, const QString &name, const QRectF &box,
                       const QColor &color, SymbolWeight weight = SymbolWeight::regular);

// The glyph in a transparent pixmap of `size` by `size` device-independent
// pixels, at `devicePixelRatio`.
QPixmap systemSymbolPixmap(const QString &name, double size, const QColor &color,
                           SymbolWeight weight = SymbolWeight::regular,
                           qreal devicePixelRatio = 1.0);
QIcon systemSymbolIcon(const QString &name, const QColor &color,
                       SymbolWeight weight = SymbolWeight::regular);

// A widget that shows one glyph, centred in its rectangle. Its size is the box
// it is given (setFixedSize); the glyph size is set apart, in pixels, and is
// multiplied by the dashboard typography scale when `scalesWithText` is set.
class SymbolView : public QWidget {
    Q_OBJECT

public:
    SymbolView(const QString &name, double glyphSize, const QColor &color,
               SymbolWeight weight = SymbolWeight::regular, QWidget *parent = nullptr);

    void setSymbol(const QString &name);
    void setColor(const QColor &color);
    void setScalesWithText(bool scales);
    QString symbol() const { return m_name; }
    QColor color() const { return m_color; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double effectiveGlyphSize() const;

    QString m_name;
    double m_glyphSize;
    QColor m_color;
    SymbolWeight m_weight;
    bool m_scalesWithText = true;
};
