#include "presentation/diagnosis/LiveDiagnosisPage.h"

#include "dashboard/DashboardStore.h"
#include "presentation/diagnosis/DiagnosisTexts.h"
#include "presentation/diagnosis/DiagnosisWorkspace.h"
#include "presentation/diagnosis/SourceList.h"
#include "presentation/diagnosis/TwoLineText.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/AccessibleSelection.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/RefreshWhileShown.h"
#include "presentation/kit/SystemSymbols.h"
#include "presentation/shell/PageScrollArea.h"

#include <QLineEdit>
#include <QScrollArea>
#include <QStackedWidget>

namespace {

constexpr ProcessListScope kScopes[] = {ProcessListScope::attention, ProcessListScope::all};

TextLabel *captionLabel(const QString &text, Qt::Alignment alignment)
{
    auto *label =
        new TextLabel(text, 10, DashboardFontWeight::medium, DashboardPalette::textTertiary);
    label->setAlignment(alignment | Qt::AlignVCenter);
    label->setElided(true);
    return label;
}

} // namespace

LiveDiagnosisPage::LiveDiagnosisPage(DashboardStore &store, const DashboardPageActions &actions,
                                     QWidget *parent)
    : DashboardPage(DashboardSection::liveDiagnosis, parent), m_store(store)
{
    m_leftColumn = buildLeftColumn();
    m_workspace = new DiagnosisWorkspace(store, actions.openTerminal);
    m_scroll = makePageScrollArea(m_workspace);
    m_scroll->setObjectName(QStringLiteral("diagnosisWorkspaceScroll"));
    // The bar's room is kept whether or not it shows, so the column never
    // moves sideways when a longer text makes it scroll.
    m_scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);

    m_frame = row(24, {32, 0, 32, 28}, {m_leftColumn, LayoutItem(m_scroll, 1)});
    attach(this, m_frame);

    refreshWhileShown(this, &m_store, &DashboardStore::changed, [this] { refresh(); });
    connect(m_list, &SourceListView::taskPressed, this,
            [this](const QString &taskID) { m_store.selectTask(taskID); });
    connect(m_search, &QLineEdit::textChanged, this, &LiveDiagnosisPage::refreshSources);
    refresh();
}

QWidget *LiveDiagnosisPage::buildLeftColumn()
{
    auto *column_ = new QWidget;
    column_->setObjectName(QStringLiteral("diagnosisSourceColumn"));

    m_headingTitle =
        new TextLabel(QString(), 13, DashboardFontWeight::semibold, DashboardPalette::textPrimary);
    m_headingCount =
        new TextLabel(QString(), 10, DashboardFontWeight::regular, DashboardPalette::textTertiary);
    m_headingCount->setElided(true);
    auto *heading = new QWidget;
    heading->setFixedHeight(24);
    auto *headingRow = row(8, {}, {m_headingTitle, LayoutItem(m_headingCount, 1)});
    headingRow->setAlignment(m_headingTitle, Qt::AlignBottom);
    headingRow->setAlignment(m_headingCount, Qt::AlignBottom);
    attach(heading, headingRow);

    m_hint =
        new TextLabel(QString(), 10, DashboardFontWeight::regular, DashboardPalette::textTertiary);
    m_hint->setElided(true);

    auto *search = new RoundedBox;
    search->setFill(QColor::fromRgb(DashboardPalette::controlBackground));
    search->setCornerRadius(8);
    search->setFixedHeight(32);
    auto *glass = new SymbolView(QStringLiteral("magnifyingglass"), 15,
                                 QColor::fromRgb(DashboardPalette::textTertiary));
    glass->setFixedSize(18, 18);
    m_search = new QLineEdit;
    setAccessibility(m_search, QStringLiteral("processSearch"), tr("筛选进程或应用"));
    m_search->setPlaceholderText(tr("筛选进程或应用"));
    m_search->setFrame(false);
    m_search->setClearButtonEnabled(true);
    setDashboardFont(m_search, 10);
    QPalette searchPalette = m_search->palette();
    searchPalette.setColor(QPalette::Base, Qt::transparent);
    searchPalette.setColor(QPalette::Text, QColor::fromRgb(DashboardPalette::textPrimary));
    searchPalette.setColor(QPalette::PlaceholderText,
                           QColor::fromRgb(DashboardPalette::textTertiary));
    m_search->setPalette(searchPalette);
    attach(search, row(8, {10, 0, 10, 0}, {glass, LayoutItem(m_search, 1)}));

    auto *captions = new QWidget;
    m_sourceCaption = captionLabel(tr("来源"), Qt::AlignLeft);
    // The captions stand over the rows' columns (source, 54, 48 from the
    // right). The middle one is wider than its 54 pixels at most sizes: it
    // reaches left into the source column rather than be cut. The first two
    // share the free space, so neither caption is cut in a longer language.
    auto *targetCaption = captionLabel(tr("主要进程 CPU"), Qt::AlignRight);
    targetCaption->setElided(false);
    targetCaption->setMinimumWidth(54);
    auto *totalCaption = captionLabel(tr("合计"), Qt::AlignRight);
    totalCaption->setFixedWidth(48);
    m_captions = row(0, {10, 0, 8, 0},
                     {LayoutItem(m_sourceCaption, 1), LayoutItem(targetCaption, 1), totalCaption});
    auto *captionLine = new QWidget;
    captionLine->setFixedHeight(27);
    attach(captionLine, m_captions);
    attach(captions, column(0, {}, {captionLine, new HairLine}));

    m_list = new SourceListView;
    m_emptyState = buildEmptyState();
    m_listStack = new QStackedWidget;
    m_listStack->addWidget(m_list);
    m_listStack->addWidget(m_emptyState);

    m_notice = new QWidget;
    setAccessibility(m_notice, QStringLiteral("selectedSourceFilteredNotice"),
                     tr("当前详情未包含在筛选结果中"));
    auto *noticeText = new TextLabel(tr("当前详情未包含在筛选结果中"), 10,
                                     DashboardFontWeight::regular, DashboardPalette::warning);
    auto *clear = new PressableBox;
    setAccessibility(clear, QStringLiteral("clearSourceFilter"), tr("清除筛选"));
    auto *clearText =
        new TextLabel(tr("清除筛选"), 10, DashboardFontWeight::medium, DashboardPalette::accent);
    // Inside a button a label would take the button's text role; it keeps its own colour.
    clearText->setForegroundRole(QPalette::WindowText);
    attach(clear, row(0, {}, {clearText}));
    attach(m_notice, row(6, {}, {noticeText, clear, flexible()}));
    connect(clear, &QAbstractButton::clicked, m_search, &QLineEdit::clear);

    m_summary = new TwoLineText(10, DashboardPalette::textTertiary);
    m_summary->setObjectName(QStringLiteral("selectionSummary"));
    m_summary->setFixedHeight(32);

    attach(column_, column(12, {},
                           {heading, buildScopeSwitch(), m_hint, search, captions,
                            LayoutItem(m_listStack, 1), m_notice, m_summary}));
    return column_;
}

QWidget *LiveDiagnosisPage::buildScopeSwitch()
{
    auto *group = new RoundedBox;
    setAccessibility(group, QStringLiteral("processListScope"), tr("来源范围"));
    setAccessibleRole(group, QAccessible::PageTabList);
    group->setFill(QColor::fromRgb(DashboardPalette::controlBackground));
    group->setBorder(QColor::fromRgb(DashboardPalette::divider), 1);
    group->setCornerRadius(9);
    group->setFixedHeight(28);
    auto *buttons = row(3, {3, 3, 3, 3}, {});
    for (int i = 0; i < 2; ++i) {
        const ProcessListScope scope = kScopes[i];
        auto *button = new PressableBox;
        button->setCornerRadius(7);
        const QString text = processListScopeText(scope);
        setAccessibility(button,
                         scope == ProcessListScope::attention
                             ? QStringLiteral("processListScope-attention")
                             : QStringLiteral("processListScope-all"),
                         text);
        auto *label =
            new TextLabel(text, 11, DashboardFontWeight::medium, DashboardPalette::textSecondary);
        label->setAlignment(Qt::AlignCenter);
        label->setForegroundRole(QPalette::WindowText);
        attach(button, row(0, {}, {LayoutItem(label, 1)}));
        buttons->addWidget(button, 1);
        m_scopeButtons[i] = button;
        m_scopeLabels[i] = label;
        connect(button, &QAbstractButton::clicked, this, [this, scope] { setScope(scope); });
    }
    attach(group, buttons);
    return group;
}

QWidget *LiveDiagnosisPage::buildEmptyState()
{
    auto *state = new QWidget;
    setAccessibility(state, QStringLiteral("taskListState"));
    auto *symbol = new SymbolView(QStringLiteral("waveform.path.ecg"), 28,
                                  QColor::fromRgb(DashboardPalette::success));
    symbol->setFixedSize(34, 34);
    m_emptyTitle =
        new TextLabel(QString(), 13, DashboardFontWeight::medium, DashboardPalette::textPrimary);
    m_emptyTitle->setAlignment(Qt::AlignCenter);
    m_emptySubtitle =
        new TextLabel(QString(), 11, DashboardFontWeight::regular, DashboardPalette::textTertiary);
    m_emptySubtitle->setAlignment(Qt::AlignCenter);
    m_emptySubtitle->setWordWrap(true);
    attach(state, column(10, {8, 0, 8, 0},
                         {flexible(), LayoutItem(symbol, 0, Qt::AlignHCenter), m_emptyTitle,
                          m_emptySubtitle, flexible()}));
    return state;
}

QString LiveDiagnosisPage::query() const
{
    return m_search->text();
}

void LiveDiagnosisPage::setQuery(const QString &query)
{
    m_search->setText(query);
}

void LiveDiagnosisPage::setScope(ProcessListScope scope)
{
    if (scope == m_scope)
        return;
    m_scope = scope;
    refreshSources();
}

void LiveDiagnosisPage::refresh()
{
    refreshSources();
    m_workspace->refresh();
}

void LiveDiagnosisPage::refreshScopeSwitch()
{
    for (int i = 0; i < 2; ++i) {
        const bool chosen = kScopes[i] == m_scope;
        m_scopeButtons[i]->setFill(chosen ? QColor::fromRgb(DashboardPalette::accent)
                                          : QColor(Qt::transparent));
        m_scopeLabels[i]->setColor(
            QColor::fromRgb(chosen ? DashboardPalette::white : DashboardPalette::textSecondary));
        setAccessibleValue(m_scopeButtons[i], chosen ? tr("已选择") : tr("未选择"));
        setAccessibleSelected(m_scopeButtons[i], chosen);
    }
}

void LiveDiagnosisPage::refreshSources()
{
    // Pointers into the store's lists, not a copy of the tasks and their trees.
    const DashboardTask *selected = m_store.selectedTask();
    const std::vector<const DashboardTask *> base = m_scope == ProcessListScope::attention
                                                        ? m_store.visibleTasks()
                                                        : sourcesOf(m_store.allTasks());
    const std::vector<const DashboardTask *> visible = filterSources(base, m_search->text());
    const QString &selectedID = m_store.selectedTaskID();
    std::vector<SourceListRow> rows;
    rows.reserve(visible.size());
    for (const DashboardTask *task : visible)
        rows.push_back(SourceListRow::of(*task, !selectedID.isEmpty() && task->id == selectedID));
    m_list->setRows(std::move(rows));

    refreshScopeSwitch();
    m_headingTitle->setText(sourceHeadingTitle(m_scope));
    m_headingCount->setText(sourceCountText(m_scope, visible));
    const QString hint = sourceHintText(m_scope, m_store.allTasks());
    m_hint->setText(hint);
    m_hint->setToolTip(hint);

    m_listStack->setCurrentWidget(visible.empty() ? m_emptyState : m_list);
    m_emptyTitle->setText(sourceListEmptyTitle(m_store.latestSystemSample().has_value(), m_scope));
    m_emptySubtitle->setText(sourceListEmptySubtitle(m_scope));
    m_emptyState->setAccessibleName(m_emptyTitle->fullText());

    m_notice->setVisible(isSelectedSourceFilteredOut(m_search->text(), selected, visible));
    const std::optional<DashboardProcessNode> process =
        selected ? m_store.selectedProcess() : std::nullopt;
    m_summary->setText(selectionSummaryText(selected, process ? &*process : nullptr));
}

void LiveDiagnosisPage::applyLayout(const DashboardLayoutMetrics &layout)
{
    const int padding = static_cast<int>(layout.pageHorizontalPadding);
    m_frame->setContentsMargins(padding, 0, padding, 28);
    m_frame->setSpacing(static_cast<int>(layout.contentSpacing));
    m_leftColumn->setFixedWidth(static_cast<int>(layout.taskColumnWidth));
    m_list->setLayoutMetrics(layout);
    const bool scrolls =
        layout.isShort || layout.horizontalSize == DashboardHorizontalSize::compact;
    setPageScrolling(m_scroll, scrolls, 700);
}
