#pragma once

#include "presentation/hardware/HardwareCategory.h"
#include "presentation/hardware/HardwareTexts.h"
#include "presentation/kit/DashboardLayoutEnvironment.h"

#include <QWidget>

class PillLabel;
class QHBoxLayout;
class RoundedBox;
class SymbolView;
class TextLabel;

// Everything the summary row shows, for one category at one moment.
struct HardwareSummary {
    HardwareCategory category = HardwareCategory::temperature;
    QString current;
    HardwareStatusLine status;
    HardwareSeriesFigures figures;

    bool operator==(const HardwareSummary &) const = default;
};

// The category's tile, its current figure under its label, the status
// capsule, and the 60-second peak, average and source.
class HardwareSummaryRow final : public QWidget, public DashboardLayoutAware {
    Q_OBJECT

public:
    explicit HardwareSummaryRow(QWidget *parent = nullptr);

    void setSummary(const HardwareSummary &summary);
    void applyLayout(const DashboardLayoutMetrics &layout) override;

private:
    struct Figure {
        QWidget *box = nullptr;
        TextLabel *value = nullptr;
    };
    Figure makeFigure(const QString &identifier, const QString &label, double valueSize);

    HardwareSummary m_summary;
    bool m_shown = false;
    RoundedBox *m_tile;
    SymbolView *m_symbol;
    TextLabel *m_title;
    TextLabel *m_current;
    PillLabel *m_status;
    Figure m_peak;
    Figure m_average;
    Figure m_source;
    QHBoxLayout *m_figures;
};
