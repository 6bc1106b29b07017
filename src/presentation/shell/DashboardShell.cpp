#include "presentation/shell/DashboardShell.h"

#include "dashboard/DashboardStore.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/shell/DashboardPageHeader.h"
#include "presentation/shell/DashboardSidebar.h"

#include <QPainter>
#include <QResizeEvent>

DashboardShell::DashboardShell(DashboardStore &store, DashboardSection initialSection,
                               std::function<void()> openTerminal, QWidget *parent)
    : QWidget(parent), m_store(store), m_section(initialSection)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_layout = DashboardLayoutMetrics::forSize(width(), height());
    m_actions.openTerminal = std::move(openTerminal);
    m_actions.openDiagnosis = [this] { setSelectedSection(DashboardSection::liveDiagnosis); };

    m_sidebar = new DashboardSidebar;
    m_sidebar->setSelectedSection(initialSection);
    connect(m_sidebar, &DashboardSidebar::sectionRequested, this,
            &DashboardShell::setSelectedSection);
    m_header = new DashboardPageHeader(store, initialSection);
    m_page = createDashboardPage(initialSection, store, m_actions);
    m_rightColumn = column(0, {}, {LayoutItem(m_header), LayoutItem(m_page, 1)});
    attach(this, row(0, {},
                     {LayoutItem(m_sidebar), LayoutItem(new HairLine(Qt::Vertical)),
                      LayoutItem(m_rightColumn, 1)}));
    updateLayoutMetrics();
}

void DashboardShell::setSelectedSection(DashboardSection section)
{
    if (section == m_section)
        return;
    m_section = section;
    m_sidebar->setSelectedSection(section);
    m_header->setSection(section);
    DashboardPage *next = createDashboardPage(section, m_store, m_actions);
    // The layout hands back the item that held the old page; it is ours to free.
    delete m_rightColumn->replaceWidget(m_page, next);
    m_rightColumn->setStretchFactor(next, 1);
    // Deleted later: the press that led here may still be on the old page.
    m_page->hide();
    m_page->deleteLater();
    m_page = next;
    applyDashboardLayout(m_page, m_layout);
    m_page->show();
    emit selectedSectionChanged(section);
}

void DashboardShell::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    updateLayoutMetrics();
}

void DashboardShell::updateLayoutMetrics()
{
    const DashboardLayoutMetrics next = DashboardLayoutMetrics::forSize(width(), height());
    const bool first = !m_sidebar->property("kwLaidOut").toBool();
    if (!first && next == m_layout)
        return;
    m_sidebar->setProperty("kwLaidOut", true);
    m_layout = next;
    m_sidebar->setFixedWidth(static_cast<int>(m_layout.sidebarWidth));
    applyDashboardLayout(this, m_layout);
}

void DashboardShell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(DashboardPalette::pageBackground));
}
