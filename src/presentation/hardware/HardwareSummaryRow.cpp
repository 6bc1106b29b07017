#include "presentation/hardware/HardwareSummaryRow.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"

namespace {

void showText(TextLabel *label, const QString &text)
{
    label->setText(text);
    label->setAccessibleName(text);
}

// The status capsule: a dot of 7 and the words in the status colour, on that
// colour at 11 %.
PillLabel::Style statusStyle(QRgb color)
{
    PillLabel::Style style;
    style.fontSize = 12;
    style.weight = DashboardFontWeight::medium;
    style.dotDiameter = 7;
    style.horizontalPadding = 10;
    style.verticalPadding = 5;
    style.cornerRadius = 10;
    style.text = QColor::fromRgb(color);
    style.background = DashboardPalette::color(color, 0.11);
    return style;
}

} // namespace

HardwareSummaryRow::HardwareSummaryRow(QWidget *parent) : QWidget(parent)
{
    setFixedHeight(104);
    m_tile = new RoundedBox;
    m_tile->setFixedSize(58, 58);
    m_tile->setCornerRadius(14);
    m_symbol = new SymbolView(QString(), 23, Qt::transparent, SymbolWeight::medium);
    setAccessibilityHidden(m_symbol);
    attach(m_tile, row(0, {}, {LayoutItem(m_symbol, 1)}));

    m_title =
        new TextLabel(QString(), 12, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    setAccessibility(m_title, QStringLiteral("hardwareSummary-title"));
    m_current =
        new TextLabel(QString(), 30, DashboardFontWeight::semibold, DashboardPalette::textPrimary);
    setDashboardFont(m_current, 30, DashboardFontWeight::semibold, DashboardFontDesign::rounded);
    setAccessibility(m_current, QStringLiteral("hardwareSummary-current"));
    auto *currentBlock = column(2, {}, {flexible(), m_title, m_current, flexible()});

    m_status = new PillLabel(QString(), statusStyle(DashboardPalette::textTertiary));
    // A missing reading's reason can be longer than a narrow window leaves.
    m_status->setElidable(true);
    setAccessibility(m_status, QStringLiteral("hardwareSummary-status"));

    m_peak = makeFigure(QStringLiteral("hardwareSummary-peak"), tr("60 秒峰值"), 20);
    m_average = makeFigure(QStringLiteral("hardwareSummary-average"), tr("60 秒平均"), 20);
    m_source = makeFigure(QStringLiteral("hardwareSummary-source"), tr("数据来源"), 15);
    m_figures = row(28, {}, {m_peak.box, m_average.box, m_source.box});

    auto *line = row(18, {}, {m_tile, currentBlock, m_status, flexible(), m_figures});
    line->setAlignment(m_tile, Qt::AlignVCenter);
    line->setAlignment(m_status, Qt::AlignVCenter);
    attach(this, line);
}

HardwareSummaryRow::Figure HardwareSummaryRow::makeFigure(const QString &identifier,
                                                          const QString &label, double valueSize)
{
    Figure figure;
    figure.box = new QWidget;
    figure.box->setFixedSize(128, 62);
    setAccessibility(figure.box, identifier, label);
    figure.value = new TextLabel(QString(), valueSize, DashboardFontWeight::semibold,
                                 DashboardPalette::textPrimary);
    figure.value->setMinimumScaleFactor(0.75);
    figure.value->setElided(true);
    auto *caption =
        new TextLabel(label, 12, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    setAccessibilityHidden(caption);
    attach(figure.box, column(5, {}, {flexible(), figure.value, caption, flexible()}));
    return figure;
}

void HardwareSummaryRow::setSummary(const HardwareSummary &summary)
{
    if (m_shown && summary == m_summary)
        return;
    m_shown = true;
    m_summary = summary;
    const HardwareCategoryInfo info = hardwareCategoryInfo(summary.category);
    m_tile->setFill(DashboardPalette::color(info.tone, 0.11));
    m_symbol->setSymbol(info.symbolName);
    m_symbol->setColor(QColor::fromRgb(info.tone));
    showText(m_title, info.currentLabel);
    showText(m_current, summary.current);
    setAccessibleValue(m_current, summary.current);

    m_status->setStyle(statusStyle(summary.status.color));
    m_status->setText(summary.status.text);
    setAccessibleValue(m_status, summary.status.text);

    const std::pair<Figure *, QString> figures[] = {{&m_peak, summary.figures.peak},
                                                    {&m_average, summary.figures.average},
                                                    {&m_source, info.sourceLabel}};
    for (const auto &[figure, text] : figures) {
        figure->value->setText(text);
        setAccessibleValue(figure->box, text);
    }
}

void HardwareSummaryRow::applyLayout(const DashboardLayoutMetrics &layout)
{
    const bool compact = layout.horizontalSize == DashboardHorizontalSize::compact;
    m_figures->setSpacing(compact ? 14 : 28);
    m_peak.box->setFixedWidth(compact ? 96 : 128);
    m_average.box->setFixedWidth(compact ? 96 : 128);
    m_source.box->setFixedWidth(compact ? 150 : 184);
}
