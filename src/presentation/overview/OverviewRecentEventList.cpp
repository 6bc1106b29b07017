#include "presentation/overview/OverviewRecentEventList.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/overview/OverviewAttentionList.h"
#include "presentation/overview/OverviewTexts.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(OverviewRecentEventList)
};

} // namespace

OverviewEventRow::OverviewEventRow(QWidget *parent) : QWidget(parent)
{
    setFixedHeight(62);
    m_dot = new Dot(9, Qt::transparent);
    m_title =
        new TextLabel(QString(), 14, DashboardFontWeight::medium, DashboardPalette::textPrimary);
    m_title->setElided(true);
    m_detail =
        new TextLabel(QString(), 12, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    m_detail->setElided(true);
    m_time =
        new TextLabel(QString(), 11, DashboardFontWeight::regular, DashboardPalette::textTertiary);
    auto *texts = column(4, {}, {flexible(), m_title, m_detail, flexible()});
    auto *line = ::row(12, {}, {m_dot, LayoutItem(texts, 1), m_time});
    line->setAlignment(m_dot, Qt::AlignVCenter);
    line->setAlignment(m_time, Qt::AlignVCenter);
    attach(this, line);
    setAccessibleRole(this, QAccessible::ListItem);
}

void OverviewEventRow::setIncident(const DashboardIncident &incident)
{
    const OverviewIncidentStatusLook look = overviewIncidentStatusLook(incident.status);
    const QString detail = Words::tr("%1 · %2").arg(incident.application, incident.detail);
    const QString time = overviewShortTimeText(incident.startedAt);
    m_dot->setColor(QColor::fromRgb(look.dot));
    m_title->setText(look.title);
    m_detail->setText(detail);
    m_time->setText(time);
    setAccessibility(this, {}, QStringList{look.title, detail, time}.join(QLatin1Char(' ')));
}

OverviewRecentEventList::OverviewRecentEventList(QWidget *parent) : QWidget(parent)
{
    for (OverviewEventRow *&row : m_rows)
        row = new OverviewEventRow;
    m_body.build(this, tr("最近事件"), {m_rows.begin(), m_rows.end()}, tr("本次会话暂无升温事件"));
    setIncidents({});
}

void OverviewRecentEventList::setIncidents(const std::vector<DashboardIncident> &incidents)
{
    const int count = static_cast<int>(std::min<std::size_t>(incidents.size(), m_rows.size()));
    for (int i = 0; i < count; ++i)
        m_rows[std::size_t(i)]->setIncident(incidents[std::size_t(i)]);
    m_body.show(count);
}
