#pragma once

#include "presentation/hardware/HardwareCategory.h"
#include "presentation/kit/DashboardLayoutEnvironment.h"
#include "presentation/kit/DashboardWidgets.h"

#include <array>

// The six category tabs in one capsule bar, 40 high and 604 wide (520 in a
// compact window). The selected tab is white on the accent.
class HardwareCategoryTabs final : public RoundedBox, public DashboardLayoutAware {
    Q_OBJECT

public:
    explicit HardwareCategoryTabs(QWidget *parent = nullptr);

    HardwareCategory category() const { return m_category; }
    void setCategory(HardwareCategory category);
    PressableBox *tab(HardwareCategory category) const;

    void applyLayout(const DashboardLayoutMetrics &layout) override;

signals:
    void categoryRequested(HardwareCategory category);

private:
    void refreshTabs();

    HardwareCategory m_category = HardwareCategory::temperature;
    std::array<PressableBox *, kAllHardwareCategories.size()> m_tabs{};
    std::array<TextLabel *, kAllHardwareCategories.size()> m_titles{};
};
