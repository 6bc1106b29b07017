#pragma once

#include "dashboard/DashboardModel.h"
#include "presentation/kit/DashboardLayoutEnvironment.h"

#include <QWidget>

#include <functional>

class DashboardStore;
class DashboardTaskSymbol;
class PillLabel;
class ProcessCompositionView;
class ProcessOperationPanel;
class QBoxLayout;
class QVBoxLayout;
class SymbolView;
class TextLabel;
class TrendChart;

// The chart's heading: its title on the left and the legend on the right,
// on one line where they fit; in a narrow column the legend goes under the
// title instead of being cut.
class ChartHeading final : public QWidget {
    Q_OBJECT

public:
    ChartHeading(QWidget *titles, QWidget *legend, QWidget *parent = nullptr);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    static constexpr int kGap = 12;
    bool fitsOnOneLine(int width) const;
    void arrange();

    QWidget *m_titles;
    QWidget *m_legend;
};

// One row of the evidence: a symbol, a tag and a detail text; one element
// for accessibility.
class EvidenceScopeRow final : public QWidget {
    Q_OBJECT

public:
    EvidenceScopeRow(const QString &identifier, const QString &symbol, QRgb color,
                     const QString &tag, QWidget *parent = nullptr);
    void setDetail(const QString &detail);
    QString detail() const;

private:
    QString m_tag;
    TextLabel *m_detail;
};

// The right column of the live diagnosis page: the selected path, the
// process composition, and under them the evidence with its trend chart
// beside (or, when compact, above) the operation panel. All of it shows the
// store's selection; without one it keeps its structure with waiting texts.
class DiagnosisWorkspace final : public QWidget, public DashboardLayoutAware {
    Q_OBJECT

public:
    DiagnosisWorkspace(DashboardStore &store, std::function<void()> openTerminal,
                       QWidget *parent = nullptr);

    // Re-reads the store; the page calls it once per change of the store.
    void refresh();
    void applyLayout(const DashboardLayoutMetrics &layout) override;

    ProcessCompositionView *composition() const { return m_composition; }
    ProcessOperationPanel *operationPanel() const { return m_panel; }
    TrendChart *trendChart() const { return m_chart; }
    // The lower block's arrangement: evidence beside the panel, or above it.
    bool placesPanelBesideEvidence() const;

private:
    QWidget *buildPathSummary();
    QWidget *buildProcessBlock();
    QWidget *buildEvidence();
    void refreshChart();

    DashboardStore &m_store;
    DashboardTaskSymbol *m_symbol = nullptr;
    TextLabel *m_pathTitle = nullptr;
    TextLabel *m_pathSubtitle = nullptr;
    TextLabel *m_processCPU = nullptr;
    QWidget *m_pathSummary = nullptr;
    QWidget *m_processBlock = nullptr;
    ProcessCompositionView *m_composition = nullptr;
    QWidget *m_evidence = nullptr;
    EvidenceScopeRow *m_processScope = nullptr;
    EvidenceScopeRow *m_sourceScope = nullptr;
    EvidenceScopeRow *m_systemScope = nullptr;
    TrendChart *m_chart = nullptr;
    ProcessOperationPanel *m_panel = nullptr;
    QBoxLayout *m_lower = nullptr;
};
