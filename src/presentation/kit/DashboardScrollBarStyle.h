#pragma once

#include <QProxyStyle>

// The dashboard's scroll bars: a thin rounded thumb in the palette's grey on
// a clear track, no arrow buttons, whatever the desktop's style or colour
// scheme. Everything else is the desktop style's own.
class DashboardScrollBarStyle final : public QProxyStyle {
    Q_OBJECT

public:
    static constexpr int kThickness = 10;

    using QProxyStyle::QProxyStyle;

    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                         SubControl subControl, const QWidget *widget = nullptr) const override;
    SubControl hitTestComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                     const QPoint &position,
                                     const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget = nullptr) const override;
};

// Makes the style above the application's, over the desktop's. Once, at start.
void installDashboardScrollBarStyle();
