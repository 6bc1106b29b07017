#include "presentation/hardware/HardwareCategoryTabs.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/AccessibleSelection.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/LayoutBuilder.h"

HardwareCategoryTabs::HardwareCategoryTabs(QWidget *parent) : RoundedBox(parent)
{
    setFill(QColor::fromRgb(DashboardPalette::controlBackground));
    setBorder(QColor::fromRgb(DashboardPalette::divider), 1.0);
    setCornerRadius(12);
    setFixedSize(604, 40);
    auto *layout = row(4, {4, 4, 4, 4}, {});
    for (std::size_t i = 0; i < kAllHardwareCategories.size(); ++i) {
        const HardwareCategory category = kAllHardwareCategories[i];
        const HardwareCategoryInfo info = hardwareCategoryInfo(category);
        auto *tab = new PressableBox;
        tab->setCornerRadius(9);
        tab->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
        setAccessibility(tab, info.tabIdentifier, info.title);
        auto *title = new TextLabel(info.title, 13, DashboardFontWeight::medium,
                                    DashboardPalette::textSecondary);
        title->setAlignment(Qt::AlignCenter);
        attach(tab, ::row(0, {}, {LayoutItem(title, 1)}));
        connect(tab, &QAbstractButton::clicked, this, [this, category] {
            if (category != m_category)
                emit categoryRequested(category);
        });
        layout->addWidget(tab, 1);
        m_tabs[i] = tab;
        m_titles[i] = title;
    }
    attach(this, layout);
    refreshTabs();
}

PressableBox *HardwareCategoryTabs::tab(HardwareCategory category) const
{
    return m_tabs[static_cast<std::size_t>(category)];
}

void HardwareCategoryTabs::setCategory(HardwareCategory category)
{
    if (category == m_category)
        return;
    m_category = category;
    refreshTabs();
}

void HardwareCategoryTabs::applyLayout(const DashboardLayoutMetrics &layout)
{
    setFixedWidth(layout.horizontalSize == DashboardHorizontalSize::compact ? 520 : 604);
}

void HardwareCategoryTabs::refreshTabs()
{
    for (std::size_t i = 0; i < m_tabs.size(); ++i) {
        const bool selected = kAllHardwareCategories[i] == m_category;
        m_tabs[i]->setFill(selected ? QColor::fromRgb(DashboardPalette::accent)
                                    : QColor(Qt::transparent));
        m_titles[i]->setColor(
            QColor::fromRgb(selected ? DashboardPalette::white : DashboardPalette::textSecondary));
        setAccessibleValue(m_tabs[i], selected ? tr("已选择") : tr("未选择"));
        setAccessibleSelected(m_tabs[i], selected);
    }
}
