#include "presentation/history/EventHistoryFilter.h"

#include "sampling/EnumTable.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(EventHistoryFilter)
};

} // namespace

QString eventHistoryRangeText(EventHistoryRange)
{
    return Words::tr("本次会话");
}

namespace {

struct FilterWords {
    EventHistoryFilter key;
    const char *text;
    const char *identifier; // the chip's accessible identifier
};

constexpr FilterWords kFilterWords[] = {
    {EventHistoryFilter::all, QT_TRANSLATE_NOOP("EventHistoryFilter", "全部"),
     "eventHistoryFilter-all"},
    {EventHistoryFilter::highLoad, QT_TRANSLATE_NOOP("EventHistoryFilter", "高负载"),
     "eventHistoryFilter-highLoad"},
    {EventHistoryFilter::temperature, QT_TRANSLATE_NOOP("EventHistoryFilter", "温度"),
     "eventHistoryFilter-temperature"},
    {EventHistoryFilter::improved, QT_TRANSLATE_NOOP("EventHistoryFilter", "已解决"),
     "eventHistoryFilter-improved"},
};
static_assert(coversEnumeration(kFilterWords, EventHistoryFilter::improved));

} // namespace

QString eventHistoryFilterText(EventHistoryFilter filter)
{
    return Words::tr(enumRow(kFilterWords, filter).text);
}

QString eventHistoryFilterIdentifier(EventHistoryFilter filter)
{
    return QLatin1StringView(enumRow(kFilterWords, filter).identifier);
}

bool incidentPassesFilter(const DashboardIncident &incident, EventHistoryFilter filter)
{
    switch (filter) {
    case EventHistoryFilter::all:
        return true;
    case EventHistoryFilter::highLoad:
        return incident.peakCPU >= 30.0;
    case EventHistoryFilter::temperature:
        return incident.peakTemperature && *incident.peakTemperature >= 75.0;
    case EventHistoryFilter::improved:
        break;
    }
    return incident.status == DashboardIncidentStatus::improved ||
           incident.status == DashboardIncidentStatus::recoveredWithoutAction;
}

namespace {

// The query folded once per search rather than once per incident.
class QueryMatcher {
public:
    explicit QueryMatcher(const QString &query) : m_needle(m_locale.toLower(query.trimmed())) {}

    bool matchesEverything() const { return m_needle.isEmpty(); }
    bool matches(const DashboardIncident &incident) const
    {
        return matchesEverything() || m_locale.toLower(incident.application).contains(m_needle) ||
               m_locale.toLower(incident.detail).contains(m_needle);
    }

private:
    QLocale m_locale;
    QString m_needle;
};

} // namespace

bool incidentMatchesQuery(const DashboardIncident &incident, const QString &query)
{
    return QueryMatcher(query).matches(incident);
}

std::vector<const DashboardIncident *>
filteredIncidents(const std::vector<DashboardIncident> &incidents, EventHistoryFilter filter,
                  const QString &query)
{
    const QueryMatcher matcher(query);
    std::vector<const DashboardIncident *> result;
    result.reserve(incidents.size());
    for (const DashboardIncident &incident : incidents) {
        if (incidentPassesFilter(incident, filter) && matcher.matches(incident))
            result.push_back(&incident);
    }
    return result;
}

std::optional<QUuid> keptIncidentSelection(const std::optional<QUuid> &current,
                                           const std::vector<QUuid> &listedIDs)
{
    if (listedIDs.empty())
        return std::nullopt;
    if (current && std::find(listedIDs.begin(), listedIDs.end(), *current) != listedIDs.end())
        return current;
    return listedIDs.front();
}
