#include "presentation/diagnosis/ProcessCompositionView.h"

#include "presentation/diagnosis/ProcessTree.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"

#include <QScrollBar>
#include <QStackedLayout>

namespace {

TextLabel *headerLabel(const QString &text, int width)
{
    auto *label =
        new TextLabel(text, 10, DashboardFontWeight::medium, DashboardPalette::textTertiary);
    if (width > 0)
        label->setFixedWidth(width);
    label->setElided(true);
    return label;
}

// Whether two nodes agree on everything their own row shows; the children
// count only as being there or not.
bool sameOwnFields(const DashboardProcessNode &a, const DashboardProcessNode &b)
{
    return a.id == b.id && a.name == b.name && a.pid == b.pid && a.parentPID == b.parentPID &&
           a.cpu == b.cpu && a.memory == b.memory && a.disk == b.disk &&
           a.energyImpact == b.energyImpact && a.duration == b.duration && a.command == b.command &&
           a.project == b.project && a.isTarget == b.isTarget &&
           a.children.empty() == b.children.empty();
}

} // namespace

ProcessCompositionView::ProcessCompositionView(QWidget *parent) : QWidget(parent)
{
    setAccessibility(this, QStringLiteral("processCompositionPanel"), tr("进程组成"));
    setAccessibleRole(this, QAccessible::Grouping);

    m_tree = new ProcessTreeView;
    auto *headerRow = new QWidget;
    headerRow->setFixedHeight(26);
    m_header = row(0, {ProcessTreeColumns::toggleWidth + 4, 0, 0, 0},
                   {LayoutItem(headerLabel(tr("进程 / 安全命令"), 0), 1),
                    headerLabel(QStringLiteral("PID"), ProcessTreeColumns::pid),
                    headerLabel(QStringLiteral("CPU"), ProcessTreeColumns::cpu),
                    headerLabel(tr("内存"), ProcessTreeColumns::memory),
                    headerLabel(tr("资源影响"), ProcessTreeColumns::impact)});
    attach(headerRow, m_header);
    auto *caption = new TextLabel(
        tr("缩进表示当前采样内的 PPID 父子关系；多个顶层节点属于同一负载来源的关联进程。"), 10,
        DashboardFontWeight::regular, DashboardPalette::textTertiary);
    caption->setWordWrap(true);
    m_content = new QWidget;
    attach(m_content, column(8, {}, {headerRow, LayoutItem(m_tree, 1), caption}));

    m_empty = new QWidget;
    m_empty->setObjectName(QStringLiteral("processCompositionEmpty"));
    auto *symbol = new SymbolView(QStringLiteral("point.3.connected.trianglepath.dotted"), 26,
                                  QColor::fromRgb(DashboardPalette::textTertiary));
    symbol->setFixedSize(34, 34);
    auto *title = new TextLabel(tr("暂无进程组成"), 13, DashboardFontWeight::semibold,
                                DashboardPalette::textPrimary);
    auto *description = new TextLabel(tr("完成进程采样后显示父子关系和节点负载。"), 11,
                                      DashboardFontWeight::regular, DashboardPalette::textTertiary);
    description->setWordWrap(true);
    description->setAlignment(Qt::AlignCenter);
    attach(m_empty, column(8, {},
                           {flexible(), LayoutItem(symbol, 0, Qt::AlignHCenter),
                            LayoutItem(title, 0, Qt::AlignHCenter),
                            LayoutItem(description, 0, Qt::AlignHCenter), flexible()}));
    m_empty->setAccessibleName(title->text());

    m_stack = new QStackedLayout;
    m_stack->addWidget(m_content);
    m_stack->addWidget(m_empty);
    setLayout(m_stack);

    connect(m_tree, &ProcessTreeView::toggleRequested, this, &ProcessCompositionView::toggle);
    connect(m_tree, &ProcessTreeView::processPressed, this,
            &ProcessCompositionView::processSelected);
    connect(m_tree->verticalScrollBar(), &QScrollBar::rangeChanged, this,
            &ProcessCompositionView::followScrollBar);
    setContent(nullptr, std::nullopt);
}

bool ProcessCompositionView::showsEmptyState() const
{
    return m_stack->currentWidget() == m_empty;
}

void ProcessCompositionView::setContent(const DashboardTask *task,
                                        const std::optional<QString> &selectedProcessID)
{
    const bool sameTask = m_task && task && m_task->id == task->id;
    // The rows read only the tree and the selection: a tick that leaves both
    // as they were has nothing to format again.
    const bool sameRows = sameTask && m_task->processTree == task->processTree &&
                          m_selectedProcessID == selectedProcessID;
    if (!sameRows) {
        // The rows kept from the last tick point into the task they came
        // from: it stays until the new rows are made.
        const std::optional<DashboardTask> retired = std::move(m_task);
        m_task = task ? std::optional<DashboardTask>(*task) : std::nullopt;
        m_selectedProcessID = selectedProcessID;
        m_expansion.follow(task);
        rebuildRows();
    }
    m_stack->setCurrentWidget(task && !task->processTree.empty() ? m_content : m_empty);
    if (!sameTask && selectedProcessID) {
        // A new source: show its chosen process, which its open ancestors
        // made visible. Within one source the user's scroll position stays.
        const int row = m_tree->treeModel()->rowOf(*selectedProcessID);
        if (row >= 0)
            m_tree->scrollTo(m_tree->treeModel()->index(row));
    }
}

void ProcessCompositionView::toggle(pid_t pid)
{
    m_expansion.toggle(pid);
    rebuildRows();
}

void ProcessCompositionView::rebuildRows()
{
    // A large tree changes a few nodes a tick: a node whose own fields stand
    // as they were keeps its formatted texts.
    const ProcessTreeModel *model = m_tree->treeModel();
    QHash<QString, int> shownAt;
    for (int i = 0; i < model->rowCount(); ++i)
        shownAt.insert(model->rowAt(i).key, i);
    std::vector<ProcessTreeRow> rows;
    QHash<QString, const DashboardProcessNode *> formattedFrom;
    if (m_task) {
        const std::vector<VisibleProcessRow> visible =
            flattenProcessTree(m_task->processTree, m_expansion.expandedPIDs());
        rows.reserve(visible.size());
        for (const VisibleProcessRow &row : visible) {
            const DashboardProcessNode &node = *row.node;
            const bool expanded = m_expansion.isExpanded(node.pid);
            const bool selected = m_selectedProcessID && *m_selectedProcessID == node.id;
            const DashboardProcessNode *before = m_formattedFrom.value(node.id);
            const int at = shownAt.value(node.id, -1);
            if (before && at >= 0 && model->rowAt(at).depth == row.depth &&
                sameOwnFields(*before, node)) {
                rows.push_back(model->rowAt(at));
                rows.back().isExpanded = expanded;
                rows.back().isSelected = selected;
            } else {
                rows.push_back(ProcessTreeRow::of(row, expanded, selected));
            }
            const auto entry = formattedFrom.find(node.id);
            if (entry == formattedFrom.end())
                formattedFrom.insert(node.id, &node);
            else
                entry.value() = nullptr;
        }
    }
    m_tree->treeModel()->setRows(std::move(rows));
    m_formattedFrom = std::move(formattedFrom);
}

void ProcessCompositionView::followScrollBar()
{
    // The header's columns stay above the rows' when a scroll bar narrows them.
    const QScrollBar *bar = m_tree->verticalScrollBar();
    const int right = bar->maximum() > bar->minimum() ? bar->sizeHint().width() : 0;
    m_header->setContentsMargins(ProcessTreeColumns::toggleWidth + 4, 0, right, 0);
}

void ProcessCompositionView::applyLayout(const DashboardLayoutMetrics &layout)
{
    m_tree->setLayoutMetrics(layout);
}
