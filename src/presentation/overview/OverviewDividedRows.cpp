#include "presentation/overview/OverviewDividedRows.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"

namespace {

QWidget *makeEmptyLabel(const QString &text)
{
    auto *box = new QWidget;
    box->setMinimumHeight(100);
    auto *symbol = new SymbolView(QStringLiteral("checkmark.circle.fill"), 13,
                                  QColor::fromRgb(DashboardPalette::success));
    symbol->setFixedSize(16, 16);
    setAccessibilityHidden(symbol);
    auto *words = new TextLabel(text, 13, DashboardFontWeight::regular, DashboardPalette::success);
    auto *line = row(6, {}, {symbol, words, flexible()});
    line->setAlignment(symbol, Qt::AlignVCenter);
    attach(box, column(0, {}, {flexible(), line, flexible()}));
    box->setAccessibleName(text);
    return box;
}

} // namespace

void OverviewDividedRows::build(QWidget *owner, const QString &heading,
                                const std::vector<QWidget *> &rows, const QString &emptyText)
{
    auto *title =
        new TextLabel(heading, 18, DashboardFontWeight::semibold, DashboardPalette::textPrimary);
    title->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    title->setFixedHeight(34);
    setAccessibleRole(title, QAccessible::Heading);
    auto *layout = column(0, {}, {title});
    m_rows = rows;
    for (std::size_t i = 0; i <= rows.size(); ++i) {
        m_dividers.push_back(new HairLine);
        layout->addWidget(m_dividers.back());
        if (i < rows.size())
            layout->addWidget(rows[i]);
    }
    m_empty = makeEmptyLabel(emptyText);
    layout->addWidget(m_empty);
    layout->addStretch(1);
    attach(owner, layout);
}

void OverviewDividedRows::show(int count)
{
    if (count == m_count)
        return;
    m_count = count;
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_rows[i]->setVisible(int(i) < count);
    for (std::size_t i = 0; i < m_dividers.size(); ++i)
        m_dividers[i]->setVisible(count > 0 && int(i) <= count);
    m_empty->setVisible(count == 0);
}
