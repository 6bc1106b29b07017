#include "presentation/kit/DashboardFonts.h"

#include "presentation/kit/DashboardLayoutEnvironment.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>
#include <QVariant>
#include <QWidget>

namespace {

const char kFontSizeProperty[] = "kwFontSize";
const char kFontWeightProperty[] = "kwFontWeight";
const char kFontDesignProperty[] = "kwFontDesign";

// Qt's weight of each of ours, in their order.
constexpr QFont::Weight kQtWeights[] = {QFont::Normal, QFont::Medium, QFont::DemiBold, QFont::Bold};
static_assert(std::size(kQtWeights) == std::size_t(DashboardFontWeight::bold) + 1);

QFont::Weight qtWeight(DashboardFontWeight weight)
{
    return kQtWeights[static_cast<std::size_t>(weight)];
}

// Qt sizes fonts in points; the design is in device-independent pixels. The
// logical DPI of the primary screen converts one into the other (96 on most
// desktops and on the offscreen platform).
double pointsPerPixel()
{
    double dpi = 96.0;
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        const double logical = screen->logicalDotsPerInchY();
        if (logical > 1.0)
            dpi = logical;
    }
    return 72.0 / dpi;
}

double primaryDevicePixelRatio()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1.0;
}

} // namespace

QStringList dashboardFontFamilies()
{
    static const QStringList families = [] {
        QStringList result;
        const QString system = QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
        if (!system.isEmpty())
            result << system;
        for (const char *chinese : {"Noto Sans CJK SC", "Noto Sans SC", "Source Han Sans SC",
                                    "WenQuanYi Micro Hei", "Droid Sans Fallback"}) {
            const QString family = QString::fromLatin1(chinese);
            if (!result.contains(family))
                result << family;
        }
        return result;
    }();
    return families;
}

void installDashboardApplicationFont()
{
    QFont font = QGuiApplication::font();
    font.setFamilies(dashboardFontFamilies());
    QGuiApplication::setFont(font);
}

double legibleFontPixelSize(double pixelSize, double devicePixelRatio)
{
    constexpr double smallestAtOneX = 11.0;
    if (devicePixelRatio >= 2.0 || !(pixelSize < smallestAtOneX))
        return pixelSize;
    return smallestAtOneX;
}

QFont fixedDashboardFont(double pixelSize, DashboardFontWeight weight, DashboardFontDesign design)
{
    QFont font;
    font.setFamilies(dashboardFontFamilies());
    const double legible = legibleFontPixelSize(pixelSize, primaryDevicePixelRatio());
    font.setPointSizeF(std::max(1.0, legible) * pointsPerPixel());
    font.setWeight(qtWeight(weight));
    font.setStyleStrategy(QFont::PreferAntialias);
    if (design == DashboardFontDesign::monospacedDigits)
        font.setStyleHint(QFont::SansSerif, QFont::PreferMatch);
    return font;
}

QFont dashboardFont(const DashboardLayoutMetrics &layout, double size, DashboardFontWeight weight,
                    DashboardFontDesign design)
{
    return fixedDashboardFont(dashboardScaledFontSize(size, layout.typographyScale), weight,
                              design);
}

QFont dashboardFont(const QWidget *widget, double size, DashboardFontWeight weight,
                    DashboardFontDesign design)
{
    return dashboardFont(dashboardLayoutOf(widget), size, weight, design);
}

void setDashboardFont(QWidget *widget, double size, DashboardFontWeight weight,
                      DashboardFontDesign design)
{
    if (!widget)
        return;
    widget->setProperty(kFontSizeProperty, size);
    widget->setProperty(kFontWeightProperty, static_cast<int>(weight));
    widget->setProperty(kFontDesignProperty, static_cast<int>(design));
    widget->setFont(dashboardFont(widget, size, weight, design));
}

namespace dashboard_fonts_detail {
// Re-applies a remembered font request; false when the widget made none.
bool reapplyDashboardFont(QWidget *widget, const DashboardLayoutMetrics &layout)
{
    const QVariant size = widget->property(kFontSizeProperty);
    if (!size.isValid())
        return false;
    const auto weight =
        static_cast<DashboardFontWeight>(widget->property(kFontWeightProperty).toInt());
    const auto design =
        static_cast<DashboardFontDesign>(widget->property(kFontDesignProperty).toInt());
    const QFont font = dashboardFont(layout, size.toDouble(), weight, design);
    if (widget->font() != font)
        widget->setFont(font);
    return true;
}
} // namespace dashboard_fonts_detail
