#include "presentation/history/EventHistoryPage.h"

#include "dashboard/DashboardStore.h"
#include "presentation/history/EventHistoryToolbar.h"
#include "presentation/history/IncidentDetailPanel.h"
#include "presentation/history/IncidentListModel.h"
#include "presentation/history/IncidentListPanel.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/RefreshWhileShown.h"

#include <QScrollArea>

#include <algorithm>

namespace {

constexpr int kCompactPanelHeight = 430;

} // namespace

EventHistoryPage::EventHistoryPage(DashboardStore &store, const DashboardPageActions &actions,
                                   QWidget *parent)
    : DashboardPage(DashboardSection::eventHistory, parent), m_store(store)
{
    m_model = new IncidentListModel(this);
    m_toolbar = new EventHistoryToolbar;
    m_listPanel = new IncidentListPanel(*m_model);
    m_detailPanel = new IncidentDetailPanel(actions.openDiagnosis);

    m_panels = new QBoxLayout(QBoxLayout::LeftToRight);
    m_panels->setContentsMargins(0, 0, 0, 0);
    m_panels->addWidget(m_listPanel);
    m_panels->addWidget(m_detailPanel);

    m_content = new QWidget;
    m_contentLayout = column(0, {}, {m_toolbar, fixed(10), LayoutItem(m_panels, 1)});
    attach(m_content, m_contentLayout);
    // In the compact class the whole page scrolls; otherwise it fits the
    // window and the list and the detail scroll within themselves.
    m_scroll = new QScrollArea;
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setWidget(m_content);
    QPalette background = m_scroll->palette();
    background.setColor(QPalette::Window, QColor::fromRgb(DashboardPalette::pageBackground));
    m_scroll->setPalette(background);
    m_scroll->viewport()->setPalette(background);
    m_content->setPalette(background);
    attach(this, column(0, {}, {m_scroll}));

    connect(m_toolbar, &EventHistoryToolbar::filterRequested, this, &EventHistoryPage::setFilter);
    connect(m_toolbar, &EventHistoryToolbar::queryChanged, this, &EventHistoryPage::setQuery);
    connect(m_listPanel, &IncidentListPanel::incidentClicked, this,
            &EventHistoryPage::selectIncident);
    connect(&m_store, &DashboardStore::incidentsChanged, this,
            [this] { m_incidentsChanged = true; });
    refreshWhileShown(this, &m_store, &DashboardStore::changed, [this] { followStore(); });

    refreshList();
    keepSelectionValid();
    refreshDetail();
}

EventHistoryPage::~EventHistoryPage() = default;

void EventHistoryPage::applyLayout(const DashboardLayoutMetrics &layout)
{
    const int padding = static_cast<int>(layout.pageHorizontalPadding);
    m_contentLayout->setContentsMargins(padding, 20, padding, 28);
    const bool compact = layout.horizontalSize == DashboardHorizontalSize::compact;
    if (compact) {
        m_listPanel->setMinimumWidth(0);
        m_listPanel->setMaximumWidth(QWIDGETSIZE_MAX);
    } else {
        m_listPanel->setFixedWidth(static_cast<int>(layout.eventColumnWidth));
    }
    if (m_arrangedCompact == compact)
        return;
    m_arrangedCompact = compact;
    m_panels->setDirection(compact ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_panels->setSpacing(compact ? 20 : 28);
    m_panels->setStretchFactor(m_listPanel, compact ? 1 : 0);
    m_panels->setStretchFactor(m_detailPanel, 1);
    m_listPanel->setMinimumHeight(compact ? kCompactPanelHeight : 0);
    m_detailPanel->setGrowsWithContent(compact);
    m_scroll->setVerticalScrollBarPolicy(compact ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
}

void EventHistoryPage::setFilter(EventHistoryFilter filter)
{
    m_toolbar->setFilter(filter);
    if (filter == m_filter)
        return;
    m_filter = filter;
    refreshList();
    refreshDetail();
}

void EventHistoryPage::setQuery(const QString &query)
{
    if (query == m_query)
        return;
    m_query = query;
    refreshList();
    refreshDetail();
}

void EventHistoryPage::selectIncident(const QUuid &id)
{
    if (std::find(m_listedIDs.begin(), m_listedIDs.end(), id) == m_listedIDs.end() ||
        m_selectedIncidentID == id)
        return;
    const QUuid previous = m_selectedIncidentID.value_or(QUuid());
    m_selectedIncidentID = id;
    m_model->setSelectedID(m_selectedIncidentID);
    refreshDetail();
    // The user picked it: the rows ease and the details fade in.
    m_listPanel->animateSelection(previous, id);
    m_detailPanel->fadeIn();
}

void EventHistoryPage::showEvent(QShowEvent *event)
{
    DashboardPage::showEvent(event);
    keepSelectionValid();
    refreshDetail();
}

void EventHistoryPage::followStore()
{
    if (m_incidentsChanged) {
        m_incidentsChanged = false;
        refreshList();
    }
    // An open incident's duration moves with each sample.
    refreshDetail();
}

void EventHistoryPage::refreshList()
{
    const std::vector<const DashboardIncident *> listed =
        filteredIncidents(m_store.incidents(), m_filter, m_query);
    std::vector<IncidentListRow> rows;
    std::vector<QUuid> ids;
    rows.reserve(listed.size());
    ids.reserve(listed.size());
    for (const DashboardIncident *incident : listed) {
        rows.push_back(IncidentListRow::of(*incident, incident->id == m_selectedIncidentID));
        ids.push_back(incident->id);
    }
    m_model->setRows(std::move(rows));
    if (ids != m_listedIDs) {
        m_listedIDs = std::move(ids);
        keepSelectionValid();
    }
}

void EventHistoryPage::keepSelectionValid()
{
    m_selectedIncidentID = keptIncidentSelection(m_selectedIncidentID, m_listedIDs);
    m_model->setSelectedID(m_selectedIncidentID);
}

void EventHistoryPage::refreshDetail()
{
    const DashboardIncident *selected = nullptr;
    if (m_selectedIncidentID) {
        for (const DashboardIncident &incident : m_store.incidents()) {
            if (incident.id == *m_selectedIncidentID) {
                selected = &incident;
                break;
            }
        }
    }
    std::optional<TimePoint> latest;
    if (const std::optional<SystemMetricSample> &sample = m_store.latestSystemSample())
        latest = sample->timestamp;
    m_detailPanel->showIncident(selected, latest);
}
