#pragma once

#include "presentation/kit/DashboardLayoutEnvironment.h"
#include "presentation/shell/DashboardPage.h"
#include "presentation/shell/DashboardSection.h"

#include <QWidget>

class DashboardPageHeader;
class DashboardSidebar;
class DashboardStore;
class QVBoxLayout;

// The dashboard's frame: the sidebar, a hairline, and the right column with
// the page header over the selected page. It owns the selected section and
// hosts the layout metrics of its own size for every widget inside it.
class DashboardShell final : public QWidget, public DashboardLayoutHost {
    Q_OBJECT

public:
    DashboardShell(DashboardStore &store, DashboardSection initialSection,
                   std::function<void()> openTerminal, QWidget *parent = nullptr);

    DashboardSection selectedSection() const { return m_section; }
    // Shows `section`; the page is created anew when the section changes.
    void setSelectedSection(DashboardSection section);
    DashboardPage *currentPage() const { return m_page; }
    DashboardSidebar *sidebar() const { return m_sidebar; }
    DashboardPageHeader *header() const { return m_header; }

    const DashboardLayoutMetrics &layoutMetrics() const override { return m_layout; }

signals:
    void selectedSectionChanged(DashboardSection section);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void updateLayoutMetrics();

    DashboardStore &m_store;
    DashboardSection m_section;
    DashboardPageActions m_actions;
    DashboardLayoutMetrics m_layout;
    DashboardSidebar *m_sidebar;
    DashboardPageHeader *m_header;
    QVBoxLayout *m_rightColumn;
    DashboardPage *m_page = nullptr;
};
