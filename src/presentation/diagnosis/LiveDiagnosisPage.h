#pragma once

#include "presentation/diagnosis/SourceSearch.h"
#include "presentation/shell/DashboardPage.h"

class DiagnosisWorkspace;
class PressableBox;
class QHBoxLayout;
class QLineEdit;
class QScrollArea;
class QStackedWidget;
class SourceListView;
class TextLabel;
class TwoLineText;

// The page on which the user finds a load source and sees why it matters:
// on the left the source list with its scope switch, search and notices; on
// the right the diagnosis workspace. The query and the scope are the page's
// own state (gone when the page is left); the selection is the store's.
class LiveDiagnosisPage final : public DashboardPage {
    Q_OBJECT

public:
    LiveDiagnosisPage(DashboardStore &store, const DashboardPageActions &actions,
                      QWidget *parent = nullptr);

    void applyLayout(const DashboardLayoutMetrics &layout) override;

    ProcessListScope scope() const { return m_scope; }
    void setScope(ProcessListScope scope);
    QString query() const;
    void setQuery(const QString &query);

    SourceListView *sourceList() const { return m_list; }
    DiagnosisWorkspace *workspace() const { return m_workspace; }
    QScrollArea *workspaceScrollArea() const { return m_scroll; }

private:
    QWidget *buildLeftColumn();
    QWidget *buildScopeSwitch();
    QWidget *buildEmptyState();
    void refresh();
    void refreshSources();
    void refreshScopeSwitch();

    DashboardStore &m_store;
    ProcessListScope m_scope = ProcessListScope::attention;

    QHBoxLayout *m_frame = nullptr;
    QWidget *m_leftColumn = nullptr;
    TextLabel *m_headingTitle = nullptr;
    TextLabel *m_headingCount = nullptr;
    PressableBox *m_scopeButtons[2] = {nullptr, nullptr};
    TextLabel *m_scopeLabels[2] = {nullptr, nullptr};
    TextLabel *m_hint = nullptr;
    QLineEdit *m_search = nullptr;
    TextLabel *m_sourceCaption = nullptr;
    QHBoxLayout *m_captions = nullptr;
    QStackedWidget *m_listStack = nullptr;
    SourceListView *m_list = nullptr;
    QWidget *m_emptyState = nullptr;
    TextLabel *m_emptyTitle = nullptr;
    TextLabel *m_emptySubtitle = nullptr;
    QWidget *m_notice = nullptr;
    TwoLineText *m_summary = nullptr;
    QScrollArea *m_scroll = nullptr;
    DiagnosisWorkspace *m_workspace = nullptr;
};
