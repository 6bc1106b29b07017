#pragma once

#include "presentation/kit/DashboardLayoutMetrics.h"

#include <QFont>

class QWidget;

enum class DashboardFontWeight { regular, medium, semibold, bold };
// `rounded` and `monospacedDigits` ask for the system's rounded face and for
// digits of equal width where the font has them; otherwise the plain face.
enum class DashboardFontDesign { standard, rounded, monospacedDigits };

// The system font with a Chinese fallback, so that Chinese never renders as
// boxes: the desktop's own family first, then Noto Sans CJK SC (Debian's
// fonts-noto-cjk) and the other common Simplified Chinese families.
QStringList dashboardFontFamilies();
// Makes the families above the application's default font. Once, at start.
void installDashboardApplicationFont();

// No text is smaller than 11 px on a screen whose device pixel ratio is below
// 2: the small sizes assume a 2x display, and at 1x Chinese text below 11 px
// loses strokes. Layouts make room for the difference.
double legibleFontPixelSize(double pixelSize, double devicePixelRatio);

// A font of `pixelSize` device-independent pixels (raised to the legible size
// on the primary screen) (sizes are designed in
// pixels, so a half size stays a half size on every screen) with no scaling.
// The tray panel uses this directly.
QFont fixedDashboardFont(double pixelSize,
                         DashboardFontWeight weight = DashboardFontWeight::regular,
                         DashboardFontDesign design = DashboardFontDesign::standard);
// A dashboard font: `size` times the window's typography scale, to the half
// point (dashboardScaledFontSize).
QFont dashboardFont(const DashboardLayoutMetrics &layout, double size,
                    DashboardFontWeight weight = DashboardFontWeight::regular,
                    DashboardFontDesign design = DashboardFontDesign::standard);
// The same, with the metrics of the window that `widget` is in (the defaults
// outside any dashboard window).
QFont dashboardFont(const QWidget *widget, double size,
                    DashboardFontWeight weight = DashboardFontWeight::regular,
                    DashboardFontDesign design = DashboardFontDesign::standard);

// Gives `widget` a dashboard font and remembers the request, so that the font
// follows the typography scale when the window is resized (the shell re-applies
// it to every widget that asked, see applyDashboardLayout).
void setDashboardFont(QWidget *widget, double size,
                      DashboardFontWeight weight = DashboardFontWeight::regular,
                      DashboardFontDesign design = DashboardFontDesign::standard);
