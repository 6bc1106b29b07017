#pragma once

#include "presentation/kit/DashboardFonts.h"

#include <QColor>
#include <QWidget>

// A text that wraps to at most two lines and cuts the second with "…" when
// it runs longer, so a long or right-to-left name never spills out of its
// box or is cut mid-glyph.
class TwoLineText final : public QWidget {
    Q_OBJECT

public:
    TwoLineText(double size, QRgb color, QWidget *parent = nullptr);

    void setText(const QString &text);
    QString text() const { return m_text; }
    // The lines as drawn at the current width (for tests).
    QStringList shownLines() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    QColor m_color;
};
