#pragma once

#include "presentation/kit/DashboardWidgets.h"
#include "presentation/overview/OverviewTexts.h"

#include <array>

class Dot;
class TextLabel;

// One live number: a dot in the accent and the value over its caption, on
// the card's tint. Reads as one element: "caption value".
class OverviewMetricCard final : public RoundedBox {
    Q_OBJECT

public:
    explicit OverviewMetricCard(QWidget *parent = nullptr);

    void setContent(const OverviewMetricCardContent &content);
    const OverviewMetricCardContent &content() const { return m_content; }

private:
    OverviewMetricCardContent m_content;
    Dot *m_dot;
    TextLabel *m_value;
    TextLabel *m_caption;
};

// The four cards side by side, 84 high.
class OverviewMetricStrip final : public QWidget {
    Q_OBJECT

public:
    explicit OverviewMetricStrip(QWidget *parent = nullptr);

    void setCards(const std::array<OverviewMetricCardContent, 4> &cards);
    OverviewMetricCard *card(int index) const { return m_cards[std::size_t(index)]; }

private:
    std::array<OverviewMetricCard *, 4> m_cards{};
};
