#pragma once

#include "presentation/kit/DashboardFonts.h"

#include <QAbstractButton>
#include <QColor>
#include <QLabel>
#include <QPushButton>
#include <QRgb>
#include <QWidget>

// Small painted widgets with one job each, shared by every page. They draw
// with the palette's named colours and the dashboard fonts; none uses a style
// sheet.

// A text in a dashboard font (scaled with the window) and a palette colour.
// `elide` cuts text that does not fit with "…" at the end instead of letting
// it push the layout.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    TextLabel(const QString &text, double size, DashboardFontWeight weight, QRgb color,
              QWidget *parent = nullptr);

    void setColor(const QColor &color);
    void setElided(bool elided);
    // Lets the text shrink down to `factor` of its size when space is short,
    // before it is cut.
    void setMinimumScaleFactor(double factor);
    void setText(const QString &text);
    QString fullText() const { return m_fullText; }

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void refresh();

    QString m_fullText;
    QColor m_color;
    bool m_elided = false;
    double m_minimumScale = 1.0;
};

// A rectangle with rounded corners, a fill and an optional border, that holds
// other widgets through an ordinary layout (cards, panels, tiles, capsules).
class RoundedBox : public QWidget {
    Q_OBJECT

public:
    explicit RoundedBox(QWidget *parent = nullptr);

    void setFill(const QColor &fill);
    void setBorder(const QColor &color, double width = 1.0);
    void setCornerRadius(double radius);
    QColor fill() const { return m_fill; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_fill = Qt::transparent;
    QColor m_border = Qt::transparent;
    double m_borderWidth = 0.0;
    double m_radius = 0.0;
};

// A RoundedBox that is a button: it reacts to a press anywhere on it, shows a
// pressed state, can be focused and pressed from the keyboard, and reports the
// button role to accessibility. Children are transparent to the mouse.
class PressableBox : public QAbstractButton {
    Q_OBJECT

public:
    explicit PressableBox(QWidget *parent = nullptr);

    void setFill(const QColor &fill);
    void setPressedFill(const QColor &fill); // invalid: the fill at 82 % opacity
    void setBorder(const QColor &color, double width = 1.0);
    void setCornerRadius(double radius);
    QColor fill() const { return m_fill; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void childEvent(QChildEvent *event) override;

private:
    QColor m_fill = Qt::transparent;
    QColor m_pressedFill;
    QColor m_border = Qt::transparent;
    double m_borderWidth = 0.0;
    double m_radius = 0.0;
};

// A filled circle.
class Dot : public QWidget {
    Q_OBJECT

public:
    Dot(double diameter, const QColor &color, QWidget *parent = nullptr);
    void setColor(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_diameter;
    QColor m_color;
};

// A line of 1 pixel in the divider colour, horizontal or vertical. Decorative:
// hidden from accessibility.
class HairLine : public QWidget {
    Q_OBJECT

public:
    explicit HairLine(Qt::Orientation orientation = Qt::Horizontal, QWidget *parent = nullptr);
    void setColor(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
};

// A capsule with optional leading dot and a text: badges, tags, status pills.
class PillLabel : public QWidget {
    Q_OBJECT

public:
    struct Style {
        double fontSize = 11;
        DashboardFontWeight weight = DashboardFontWeight::medium;
        QColor text;
        QColor background;
        double horizontalPadding = 9;
        double verticalPadding = 4;
        double dotDiameter = 0; // 0: no dot; the dot has the text colour
        double dotSpacing = 6;
        double cornerRadius = -1; // negative: a capsule (half the height)
        bool operator==(const Style &) const = default;
    };

    PillLabel(const QString &text, const Style &style, QWidget *parent = nullptr);

    void setText(const QString &text);
    void setStyle(const Style &style);
    QString text() const { return m_text; }
    // Lets the pill give up width to its row and elide its words, whose whole
    // text stays the tooltip and the accessible name: for texts of any
    // length (a reading's reason) in a row that must fit its window.
    void setElidable(bool elidable);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    Style m_style;
    bool m_elidable = false;
};

// The primary action's button: white semibold 13 on the accent colour (82 %
// opacity while pressed), at least 40 high, corners of radius 11.
class DashboardPrimaryButton : public QPushButton {
    Q_OBJECT

public:
    explicit DashboardPrimaryButton(const QString &text, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

// Removes every child widget and layout item of `layout` (for rebuilding a
// small, bounded group such as a three-row list).
void clearLayout(QLayout *layout);
