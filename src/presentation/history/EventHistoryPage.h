#pragma once

#include "presentation/history/EventHistoryFilter.h"
#include "presentation/shell/DashboardPage.h"

#include <QUuid>

#include <optional>
#include <vector>

class DashboardStore;
class EventHistoryToolbar;
class IncidentDetailPanel;
class IncidentListModel;
class IncidentListPanel;
class QBoxLayout;
class QScrollArea;

// The event history: this run's incidents, filtered and searched, and the
// details of one of them. It only reads the store. The filter, the query and
// the selected incident are the page's own and start afresh with each visit.
//
// The selection is kept valid when the page appears and whenever the ids of
// the listed incidents change (keptIncidentSelection): a first incident is
// selected as it appears, a newer one leaves the selection alone, and a
// filter that hides the selected incident moves the selection to the newest
// one it lists.
class EventHistoryPage final : public DashboardPage {
    Q_OBJECT

public:
    EventHistoryPage(DashboardStore &store, const DashboardPageActions &actions,
                     QWidget *parent = nullptr);
    ~EventHistoryPage() override;

    void applyLayout(const DashboardLayoutMetrics &layout) override;

    EventHistoryFilter filter() const { return m_filter; }
    const std::optional<QUuid> &selectedIncidentID() const { return m_selectedIncidentID; }
    // The listed incidents' ids, newest first.
    const std::vector<QUuid> &listedIncidentIDs() const { return m_listedIDs; }

    void setFilter(EventHistoryFilter filter);
    void setQuery(const QString &query);
    // A click on a row: selects a listed incident; anything else changes nothing.
    void selectIncident(const QUuid &id);

    EventHistoryToolbar *toolbar() const { return m_toolbar; }
    IncidentListPanel *listPanel() const { return m_listPanel; }
    IncidentDetailPanel *detailPanel() const { return m_detailPanel; }
    IncidentListModel *listModel() const { return m_model; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void refreshList();
    void refreshDetail();
    void keepSelectionValid();
    void followStore();

    DashboardStore &m_store;
    EventHistoryFilter m_filter = EventHistoryFilter::all;
    QString m_query;
    std::optional<QUuid> m_selectedIncidentID;
    std::vector<QUuid> m_listedIDs;
    bool m_incidentsChanged = false;
    std::optional<bool> m_arrangedCompact;

    IncidentListModel *m_model;
    EventHistoryToolbar *m_toolbar;
    IncidentListPanel *m_listPanel;
    IncidentDetailPanel *m_detailPanel;
    QScrollArea *m_scroll;
    QWidget *m_content;
    QBoxLayout *m_contentLayout;
    QBoxLayout *m_panels;
};
