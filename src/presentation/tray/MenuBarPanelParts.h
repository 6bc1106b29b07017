#pragma once

#include "presentation/kit/DashboardFonts.h"

#include <QColor>
#include <QLabel>
#include <QPushButton>

// The panel's two building blocks. The panel uses the system font at fixed
// sizes (it lives outside the dashboard window, whose typography scale does
// not reach it) and colours of the desktop's appearance, so it does not use
// the dashboard's scaled TextLabel or its primary button.

// A single line of text in a fixed font and colour; optionally cut with "…"
// when it does not fit.
class MenuBarPanelLabel final : public QLabel {
    Q_OBJECT

public:
    MenuBarPanelLabel(double pixelSize, DashboardFontWeight weight,
                      DashboardFontDesign design = DashboardFontDesign::standard,
                      QWidget *parent = nullptr);

    void setColor(const QColor &color);
    QColor color() const { return m_color; }
    void setElided(bool elided);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
    bool m_elided = false;
};

// A push button drawn like the desktop's: `prominent` fills it with the accent
// colour and white text (the default action), otherwise it is bordered in the
// appearance's neutral colours.
class MenuBarPanelButton final : public QPushButton {
    Q_OBJECT

public:
    MenuBarPanelButton(const QString &text, bool prominent, QWidget *parent = nullptr);

    void setDarkAppearance(bool dark);
    bool isProminent() const { return m_prominent; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_prominent;
    bool m_dark = false;
};
