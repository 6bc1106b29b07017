#include "presentation/overview/OverviewSystemTrend.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/TrendChart.h"
#include "presentation/overview/OverviewTrendContent.h"

namespace {

// A legend entry: a bar of 18 by 3 in the series colour, 7 before its name.
QLayout *legendEntry(QRgb tone, const QString &name)
{
    auto *bar = new RoundedBox;
    bar->setFixedSize(18, 3);
    bar->setFill(QColor::fromRgb(tone));
    bar->setCornerRadius(1.5);
    setAccessibilityHidden(bar);
    auto *text =
        new TextLabel(name, 12, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    auto *entry = row(7, {}, {bar, text});
    entry->setAlignment(bar, Qt::AlignVCenter);
    return entry;
}

} // namespace

OverviewSystemTrend::OverviewSystemTrend(QWidget *parent) : QWidget(parent)
{
    auto *title = new TextLabel(tr("系统趋势"), 18, DashboardFontWeight::semibold,
                                DashboardPalette::textPrimary);
    auto *heading = new QWidget;
    heading->setFixedHeight(34);
    attach(heading,
           row(18, {},
               {title, flexible(), legendEntry(DashboardPalette::warning, QStringLiteral("CPU")),
                legendEntry(DashboardPalette::accent, tr("温度"))}));

    m_chart = new TrendChart;
    setAccessibility(m_chart, QStringLiteral("overviewTrendChart"), tr("30 分钟系统趋势"));
    setAccessibleRole(m_chart, QAccessible::Chart);
    attach(this, column(12, {}, {heading, LayoutItem(m_chart, 1)}));
    setPoints({});
}

void OverviewSystemTrend::setPoints(const std::vector<HeatTrendPoint> &points)
{
    m_chart->setContent(overviewTrendContent(points));
}
