#include "presentation/diagnosis/DiagnosisWorkspace.h"

#include "dashboard/DashboardStore.h"
#include "presentation/diagnosis/DiagnosisTexts.h"
#include "presentation/diagnosis/DiagnosisTrendContent.h"
#include "presentation/diagnosis/ProcessCompositionView.h"
#include "presentation/diagnosis/ProcessOperationPanel.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardTaskSymbol.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"
#include "presentation/kit/TrendChart.h"

#include <QEvent>

namespace {

// A legend entry: a bar 20 by 3 in the series colour, 6 before its text.
QWidget *legendEntry(QRgb color, const QString &text)
{
    auto *bar = new RoundedBox;
    bar->setFill(QColor::fromRgb(color));
    bar->setCornerRadius(1.5);
    bar->setFixedSize(20, 3);
    auto *label =
        new TextLabel(text, 10, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    auto *entry = new QWidget;
    attach(entry, row(6, {}, {LayoutItem(bar, 0, Qt::AlignVCenter), label}));
    return entry;
}

// The process block: it takes the height the column has left, up to its
// maximum. It asks for no more than its least (the heading and the tree's
// least), since a scroll area sizes the column by what its parts ask for and
// the block would then push the operation panel below the fold.
class ShrinkingBlock final : public QWidget {
public:
    QSize sizeHint() const override
    {
        return {QWidget::sizeHint().width(), minimumSizeHint().height()};
    }
    bool hasHeightForWidth() const override { return false; }
};

} // namespace

ChartHeading::ChartHeading(QWidget *titles, QWidget *legend, QWidget *parent)
    : QWidget(parent), m_titles(titles), m_legend(legend)
{
    titles->setParent(this);
    legend->setParent(this);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

bool ChartHeading::fitsOnOneLine(int width) const
{
    return m_titles->sizeHint().width() + kGap + m_legend->sizeHint().width() <= width;
}

int ChartHeading::heightForWidth(int width) const
{
    const int titles = m_titles->sizeHint().height();
    const int legend = m_legend->sizeHint().height();
    return fitsOnOneLine(width) ? std::max(titles, legend) : titles + 4 + legend;
}

QSize ChartHeading::sizeHint() const
{
    const QSize titles = m_titles->sizeHint();
    const QSize legend = m_legend->sizeHint();
    return {titles.width() + kGap + legend.width(), std::max(titles.height(), legend.height())};
}

QSize ChartHeading::minimumSizeHint() const
{
    return {std::max(m_titles->minimumSizeHint().width(), m_legend->minimumSizeHint().width()),
            heightForWidth(0)};
}

bool ChartHeading::event(QEvent *event)
{
    // The parts' sizes change with the typography scale after construction.
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        arrange();
    }
    return QWidget::event(event);
}

void ChartHeading::resizeEvent(QResizeEvent *)
{
    arrange();
}

void ChartHeading::arrange()
{
    const QSize titles = m_titles->sizeHint();
    const QSize legend = m_legend->sizeHint();
    if (fitsOnOneLine(width())) {
        const int line = std::max(titles.height(), legend.height());
        m_titles->setGeometry(0, line - titles.height(), titles.width(), titles.height());
        m_legend->setGeometry(width() - legend.width(), line - legend.height(), legend.width(),
                              legend.height());
    } else {
        m_titles->setGeometry(0, 0, std::min(width(), titles.width()), titles.height());
        m_legend->setGeometry(0, titles.height() + 4, std::min(width(), legend.width()),
                              legend.height());
    }
    const int wanted = heightForWidth(width());
    if (height() != wanted)
        setFixedHeight(wanted);
}

EvidenceScopeRow::EvidenceScopeRow(const QString &identifier, const QString &symbol, QRgb color,
                                   const QString &tag, QWidget *parent)
    : QWidget(parent), m_tag(tag)
{
    setAccessibility(this, identifier);
    setFixedHeight(28);
    auto *glyph = new SymbolView(symbol, 16, QColor::fromRgb(color));
    glyph->setFixedSize(18, 18);
    auto *pill = new PillLabel(tag, {10, DashboardFontWeight::semibold, QColor::fromRgb(color),
                                     DashboardPalette::color(color, 0.12), 5, 2, 0, 6, 4});
    m_detail =
        new TextLabel(QString(), 11, DashboardFontWeight::regular, DashboardPalette::textPrimary);
    m_detail->setElided(true);
    attach(this, row(10, {}, {glyph, pill, LayoutItem(m_detail, 1)}));
}

void EvidenceScopeRow::setDetail(const QString &detail)
{
    m_detail->setText(detail);
    m_detail->setToolTip(detail);
    setAccessibleName(tr("%1：%2").arg(m_tag, detail));
}

QString EvidenceScopeRow::detail() const
{
    return m_detail->fullText();
}

DiagnosisWorkspace::DiagnosisWorkspace(DashboardStore &store, std::function<void()> openTerminal,
                                       QWidget *parent)
    : QWidget(parent), m_store(store)
{
    setAccessibility(this, QStringLiteral("diagnosisWorkspace"), tr("诊断工作区"));
    setAccessibleRole(this, QAccessible::Grouping);

    m_pathSummary = buildPathSummary();
    m_processBlock = buildProcessBlock();
    m_evidence = buildEvidence();
    m_panel = new ProcessOperationPanel(store, std::move(openTerminal));

    auto *lowerBlock = new QWidget;
    m_lower = new QBoxLayout(QBoxLayout::LeftToRight);
    m_lower->setContentsMargins(0, 0, 0, 0);
    m_lower->addWidget(m_evidence, 1, Qt::AlignTop);
    m_lower->addWidget(m_panel, 1, Qt::AlignTop);
    attach(lowerBlock, column(0, {}, {new HairLine, fixed(16), m_lower}));

    // The operation panel (end button, phase message, verification) never
    // falls below the fold for want of room: the process block gives up
    // height first, down to a few rows, and only then does the column scroll.
    attach(this,
           column(18, {}, {m_pathSummary, LayoutItem(m_processBlock, 1), lowerBlock, flexible(0)}));
    connect(m_composition, &ProcessCompositionView::processSelected, this,
            [this](const QString &nodeID) { m_store.selectProcess(nodeID); });
    refresh();
}

QWidget *DiagnosisWorkspace::buildPathSummary()
{
    auto *summary = new QWidget;
    setAccessibility(summary, QStringLiteral("diagnosisPathSummary"));
    summary->setFixedHeight(88);
    m_symbol = new DashboardTaskSymbol(QStringLiteral("waveform.path.ecg"), 48);
    m_pathTitle =
        new TextLabel(QString(), 15, DashboardFontWeight::bold, DashboardPalette::textPrimary);
    m_pathTitle->setElided(true);
    m_pathSubtitle =
        new TextLabel(QString(), 10, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    m_pathSubtitle->setElided(true);
    m_processCPU =
        new TextLabel(QString(), 22, DashboardFontWeight::semibold, DashboardPalette::danger);
    m_processCPU->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *caption = new TextLabel(tr("选中进程 CPU"), 10, DashboardFontWeight::regular,
                                  DashboardPalette::textTertiary);
    caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *texts = column(5, {}, {flexible(), m_pathTitle, m_pathSubtitle, flexible()});
    auto *figure = column(4, {},
                          {flexible(), LayoutItem(m_processCPU, 0, Qt::AlignRight),
                           LayoutItem(caption, 0, Qt::AlignRight), flexible()});
    attach(summary, column(0, {},
                           {LayoutItem(row(14, {},
                                           {LayoutItem(m_symbol, 0, Qt::AlignVCenter),
                                            LayoutItem(texts, 1), figure}),
                                       1),
                            fixed(16), new HairLine}));
    return summary;
}

QWidget *DiagnosisWorkspace::buildProcessBlock()
{
    auto *block = new ShrinkingBlock;
    block->setObjectName(QStringLiteral("diagnosisProcessBlock"));
    auto *title = new TextLabel(tr("进程组成"), 13, DashboardFontWeight::semibold,
                                DashboardPalette::textPrimary);
    auto *hint = new TextLabel(tr("选择来源内任意进程，查看证据、影响和可用操作"), 10,
                               DashboardFontWeight::regular, DashboardPalette::textTertiary);
    hint->setElided(true);
    auto *heading = row(8, {}, {title, LayoutItem(hint, 1)});
    heading->setAlignment(hint, Qt::AlignBottom);
    heading->setAlignment(title, Qt::AlignBottom);
    m_composition = new ProcessCompositionView;
    attach(block, column(10, {}, {heading, LayoutItem(m_composition, 1)}));
    return block;
}

QWidget *DiagnosisWorkspace::buildEvidence()
{
    auto *evidence = new QWidget;
    setAccessibility(evidence, QStringLiteral("diagnosisEvidence"), tr("证据"));
    setAccessibleRole(evidence, QAccessible::Grouping);
    auto *heading =
        new TextLabel(tr("证据"), 13, DashboardFontWeight::semibold, DashboardPalette::textPrimary);
    m_processScope = new EvidenceScopeRow(QStringLiteral("diagnosisScope-process"),
                                          QStringLiteral("waveform.path.ecg"),
                                          DashboardPalette::warning, tr("进程"));
    m_sourceScope = new EvidenceScopeRow(QStringLiteral("diagnosisScope-source"),
                                         QStringLiteral("clock.arrow.circlepath"),
                                         DashboardPalette::accent, tr("来源"));
    m_systemScope = new EvidenceScopeRow(QStringLiteral("diagnosisScope-system"),
                                         QStringLiteral("thermometer.medium"),
                                         DashboardPalette::success, tr("系统"));

    auto *chartTitle = new TextLabel(tr("整机 CPU 与温度"), 12, DashboardFontWeight::semibold,
                                     DashboardPalette::textPrimary);
    auto *chartRange = new TextLabel(tr("最近 5 分钟"), 9, DashboardFontWeight::medium,
                                     DashboardPalette::textTertiary);
    auto *legend = new QWidget;
    attach(legend, row(12, {},
                       {legendEntry(DashboardPalette::danger, tr("系统 CPU")),
                        legendEntry(DashboardPalette::warning, tr("温度"))}));
    auto *titles = new QWidget;
    auto *titleRow = row(8, {}, {chartTitle, chartRange});
    titleRow->setAlignment(chartTitle, Qt::AlignBottom);
    titleRow->setAlignment(chartRange, Qt::AlignBottom);
    attach(titles, titleRow);
    auto *chartHeading = new ChartHeading(titles, legend);

    m_chart = new TrendChart;
    setAccessibility(m_chart, QStringLiteral("trendChart"),
                     tr("整机 CPU 与温度趋势，范围最近 5 分钟"));
    m_chart->setFixedHeight(62);
    auto *note = new TextLabel(tr("整机趋势用于验证操作前后的总体变化，不代表单个进程的历史曲线。"),
                               9, DashboardFontWeight::regular, DashboardPalette::textTertiary);
    note->setWordWrap(true);

    attach(evidence, column(8, {},
                            {heading, m_processScope, m_sourceScope, m_systemScope, new HairLine,
                             chartHeading, m_chart, note}));
    return evidence;
}

bool DiagnosisWorkspace::placesPanelBesideEvidence() const
{
    return m_lower->direction() == QBoxLayout::LeftToRight;
}

void DiagnosisWorkspace::applyLayout(const DashboardLayoutMetrics &layout)
{
    switch (layout.horizontalSize) {
    case DashboardHorizontalSize::compact:
        m_lower->setDirection(QBoxLayout::TopToBottom);
        m_lower->setSpacing(16);
        m_evidence->setMinimumWidth(0);
        m_evidence->setMaximumWidth(QWIDGETSIZE_MAX);
        break;
    case DashboardHorizontalSize::standard:
        m_lower->setDirection(QBoxLayout::LeftToRight);
        m_lower->setSpacing(24);
        m_evidence->setMinimumWidth(0);
        m_evidence->setMaximumWidth(QWIDGETSIZE_MAX);
        m_lower->setStretchFactor(m_evidence, 1);
        break;
    case DashboardHorizontalSize::spacious:
        m_lower->setDirection(QBoxLayout::LeftToRight);
        m_lower->setSpacing(24);
        m_evidence->setFixedWidth(350);
        m_lower->setStretchFactor(m_evidence, 0);
        break;
    }
    // Where the column scrolls anyway (compact, short) the block keeps its
    // full height; elsewhere it gives up height before the panel would.
    const int blockHeight = static_cast<int>(layout.diagnosisChartHeight);
    const bool scrolls =
        layout.isShort || layout.horizontalSize == DashboardHorizontalSize::compact;
    m_processBlock->setMinimumHeight(scrolls ? blockHeight : 0);
    m_processBlock->setMaximumHeight(blockHeight);
}

void DiagnosisWorkspace::refresh()
{
    const DashboardTask *task = m_store.selectedTask();
    const std::optional<DashboardProcessNode> selected =
        task ? m_store.selectedProcess() : std::nullopt;
    const DashboardProcessNode *process = selected ? &*selected : nullptr;

    m_symbol->setSymbolName(task ? task->symbolName : QStringLiteral("waveform.path.ecg"));
    m_pathTitle->setText(pathSummaryTitle(task, process));
    m_pathSubtitle->setText(pathSummarySubtitle(task, process));
    m_processCPU->setText(process ? wholePercentText(process->cpu) : QStringLiteral("—"));
    m_pathSummary->setAccessibleName(pathSummaryAccessibleLabel(task, process));

    m_composition->setContent(task, m_store.selectedProcessID());

    m_processScope->setDetail(processScopeDetail(process));
    m_sourceScope->setDetail(sourceScopeDetail(task));
    m_systemScope->setDetail(systemScopeDetail(m_store.latestSystemSample()));
    refreshChart();

    m_panel->refresh(task, process);
}

void DiagnosisWorkspace::refreshChart()
{
    m_chart->setContent(
        diagnosisTrendContent(m_store.heatTrendPoints(kDiagnosisTrendWindowSeconds)));
}
