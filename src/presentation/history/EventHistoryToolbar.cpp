#include "presentation/history/EventHistoryToolbar.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/AccessibleSelection.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"

#include <QLineEdit>

EventHistoryToolbar::EventHistoryToolbar(QWidget *parent) : QWidget(parent)
{
    using namespace DashboardPalette;
    setFixedHeight(44);
    auto *bar = row(8, {}, {});

    for (EventHistoryFilter filter : kAllEventHistoryFilters) {
        auto *box = new PressableBox;
        box->setCornerRadius(12);
        box->setFixedHeight(32);
        auto *label =
            new TextLabel(eventHistoryFilterText(filter), 12, DashboardFontWeight::medium, white);
        attach(box, row(0, {14, 0, 14, 0}, {label}));
        // A button's children inherit its ButtonText role; the label's own
        // colour is its WindowText.
        label->setForegroundRole(QPalette::WindowText);
        setAccessibility(box, eventHistoryFilterIdentifier(filter), eventHistoryFilterText(filter));
        connect(box, &QAbstractButton::clicked, this,
                [this, filter] { emit filterRequested(filter); });
        bar->addWidget(box, 0, Qt::AlignVCenter);
        m_chips.push_back({filter, box, label});
    }

    m_search = new RoundedBox;
    m_search->setFill(QColor::fromRgb(controlBackground));
    m_search->setCornerRadius(10);
    m_search->setFixedHeight(34);
    auto *magnifier =
        new SymbolView(QStringLiteral("magnifyingglass"), 12, QColor::fromRgb(textTertiary));
    magnifier->setFixedSize(14, 14);
    m_searchField = new QLineEdit;
    m_searchField->setFrame(false);
    m_searchField->setPlaceholderText(tr("搜索事件或进程"));
    m_searchField->setClearButtonEnabled(false);
    setDashboardFont(m_searchField, 12);
    QPalette fieldPalette = m_searchField->palette();
    fieldPalette.setColor(QPalette::Base, Qt::transparent);
    fieldPalette.setColor(QPalette::Text, QColor::fromRgb(textPrimary));
    fieldPalette.setColor(QPalette::PlaceholderText, QColor::fromRgb(textTertiary));
    m_searchField->setPalette(fieldPalette);
    m_searchField->setObjectName(QStringLiteral("eventHistorySearch"));
    m_searchField->setAccessibleName(tr("搜索事件或进程"));
    attach(m_search,
           row(7, {12, 0, 12, 0},
               {LayoutItem(magnifier, 0, Qt::AlignVCenter), LayoutItem(m_searchField, 1)}));
    connect(m_searchField, &QLineEdit::textChanged, this, &EventHistoryToolbar::queryChanged);
    bar->addWidget(m_search, 0, Qt::AlignVCenter);

    // The range is fixed to this session: a label that looks like the menu it
    // may become, and offers nothing.
    auto *range = new RoundedBox;
    range->setFill(QColor::fromRgb(controlBackground));
    range->setCornerRadius(10);
    range->setFixedHeight(34);
    const QString rangeText = eventHistoryRangeText(EventHistoryRange::session);
    auto *rangeLabel = new TextLabel(rangeText, 12, DashboardFontWeight::regular, textSecondary);
    auto *chevron = new SymbolView(QStringLiteral("chevron.down"), 8,
                                   QColor::fromRgb(textSecondary), SymbolWeight::semibold);
    chevron->setFixedSize(10, 10);
    attach(range, row(6, {12, 0, 12, 0},
                      {LayoutItem(rangeLabel, 0, Qt::AlignVCenter),
                       LayoutItem(chevron, 0, Qt::AlignVCenter)}));
    setAccessibility(range, QStringLiteral("eventHistoryRange"), tr("事件范围：%1").arg(rangeText));
    setAccessibleRole(range, QAccessible::StaticText);
    bar->addWidget(range, 0, Qt::AlignVCenter);
    bar->addStretch(1);
    attach(this, bar);
    setFilter(EventHistoryFilter::all);
}

PressableBox *EventHistoryToolbar::chip(EventHistoryFilter filter) const
{
    for (const Chip &chip : m_chips) {
        if (chip.filter == filter)
            return chip.box;
    }
    return nullptr;
}

void EventHistoryToolbar::setFilter(EventHistoryFilter filter)
{
    using namespace DashboardPalette;
    for (const Chip &chip : m_chips) {
        const bool current = chip.filter == filter;
        chip.box->setFill(QColor::fromRgb(current ? accent : controlBackground));
        chip.label->setColor(QColor::fromRgb(current ? white : textSecondary));
        setAccessibleValue(chip.box, current ? tr("已选择") : QString());
        setAccessibleSelected(chip.box, current);
    }
}

void EventHistoryToolbar::applyLayout(const DashboardLayoutMetrics &layout)
{
    m_search->setFixedWidth(layout.horizontalSize == DashboardHorizontalSize::spacious ? 240 : 200);
}
