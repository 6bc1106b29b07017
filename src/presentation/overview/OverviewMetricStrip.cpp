#include "presentation/overview/OverviewMetricStrip.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/LayoutBuilder.h"

OverviewMetricCard::OverviewMetricCard(QWidget *parent) : RoundedBox(parent)
{
    setCornerRadius(14);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_dot = new Dot(8, Qt::transparent);
    m_value =
        new TextLabel(QString(), 22, DashboardFontWeight::semibold, DashboardPalette::textPrimary);
    m_value->setMinimumScaleFactor(0.72);
    m_value->setElided(true);
    m_caption =
        new TextLabel(QString(), 12, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    m_caption->setMinimumScaleFactor(0.72);
    m_caption->setElided(true);
    // The cards share the strip evenly: the width of a figure or caption is
    // never theirs to ask, so a new figure each tick lays nothing out.
    for (TextLabel *text : {m_value, m_caption})
        text->setSizePolicy(QSizePolicy::Ignored, text->sizePolicy().verticalPolicy());
    auto *valueRow = row(8, {}, {m_dot, LayoutItem(m_value, 1)});
    valueRow->setAlignment(m_dot, Qt::AlignVCenter);
    attach(this, column(6, {16, 13, 16, 12}, {valueRow, m_caption, flexible()}));
    setAccessibleRole(this, QAccessible::StaticText);
    for (QWidget *part : {static_cast<QWidget *>(m_dot), static_cast<QWidget *>(m_value),
                          static_cast<QWidget *>(m_caption)})
        setAccessibilityHidden(part);
}

void OverviewMetricCard::setContent(const OverviewMetricCardContent &content)
{
    if (content == m_content)
        return;
    m_content = content;
    setFill(QColor::fromRgb(content.tint));
    m_dot->setColor(QColor::fromRgb(content.accent));
    m_value->setText(content.value);
    m_caption->setText(content.caption);
    setAccessibility(this, content.identifier, content.accessibleLabel());
}

OverviewMetricStrip::OverviewMetricStrip(QWidget *parent) : QWidget(parent)
{
    auto *layout = row(16, {}, {});
    for (OverviewMetricCard *&card : m_cards) {
        card = new OverviewMetricCard;
        layout->addWidget(card, 1);
    }
    attach(this, layout);
    setFixedHeight(84);
}

void OverviewMetricStrip::setCards(const std::array<OverviewMetricCardContent, 4> &cards)
{
    for (std::size_t i = 0; i < cards.size(); ++i)
        m_cards[i]->setContent(cards[i]);
}
