#include "presentation/overview/OverviewAttentionList.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/AccessibleSelection.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"
#include "presentation/overview/OverviewTexts.h"
#include "sampling/UnitText.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(OverviewAttentionList)
};

} // namespace

OverviewAttentionRow::OverviewAttentionRow(QWidget *parent) : PressableBox(parent)
{
    setFixedHeight(62);
    m_application =
        new TextLabel(QString(), 14, DashboardFontWeight::medium, DashboardPalette::textPrimary);
    m_application->setElided(true);
    m_process =
        new TextLabel(QString(), 12, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    m_process->setElided(true);
    m_cpu =
        new TextLabel(QString(), 15, DashboardFontWeight::semibold, DashboardPalette::textPrimary);
    // Room for any share up to a whole core, flush right: the figure changes
    // each tick without moving the names, and without a layout pass.
    m_cpu->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_cpu->setMinimumWidth(m_cpu->fontMetrics().horizontalAdvance(QStringLiteral("100%")));
    for (TextLabel *name : {m_application, m_process})
        name->setSizePolicy(QSizePolicy::Ignored, name->sizePolicy().verticalPolicy());
    PillLabel::Style badgeStyle;
    badgeStyle.fontSize = 11;
    badgeStyle.weight = DashboardFontWeight::medium;
    m_badge = new PillLabel(QString(), badgeStyle);
    auto *names = column(4, {}, {flexible(), m_application, m_process, flexible()});
    auto *line = ::row(0, {}, {LayoutItem(names, 1), fixed(8), m_cpu, fixed(4), m_badge});
    line->setAlignment(m_cpu, Qt::AlignVCenter);
    line->setAlignment(m_badge, Qt::AlignVCenter);
    attach(this, line);
}

void OverviewAttentionRow::setTask(const DashboardTask &task, bool selected)
{
    m_taskID = task.id;
    const QString process =
        Words::tr("PID %1 · %2")
            .arg(QString::number(task.targetProcess.pid), task.targetProcess.name);
    const QString cpu = wholePercentText(task.cpu);
    const OverviewImpactBadge badge = overviewImpactBadge(task.cpu);
    m_application->setText(task.application);
    m_process->setText(process);
    m_cpu->setText(cpu);
    PillLabel::Style style;
    style.fontSize = 11;
    style.weight = DashboardFontWeight::medium;
    style.text = QColor::fromRgb(badge.foreground);
    style.background = QColor::fromRgb(badge.background);
    m_badge->setStyle(style);
    m_badge->setText(badge.text);
    setAccessibility(
        this, {}, QStringList{task.application, process, cpu, badge.text}.join(QLatin1Char(' ')));
    setAccessibleValue(this, selected ? Words::tr("已选择") : QString());
    setAccessibleSelected(this, selected);
}

OverviewAttentionList::OverviewAttentionList(QWidget *parent) : QWidget(parent)
{
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        m_rows[i] = new OverviewAttentionRow;
        connect(m_rows[i], &QAbstractButton::clicked, this, [this, i] {
            // The id is read at the press: the row may show another task by now.
            if (m_onSelect && !m_rows[i]->taskID().isEmpty())
                m_onSelect(m_rows[i]->taskID());
        });
    }
    m_body.build(this, tr("需要关注"), {m_rows.begin(), m_rows.end()},
                 tr("当前没有持续高负载进程"));
    setTasks({}, {});
}

void OverviewAttentionList::setOnSelect(std::function<void(const QString &)> onSelect)
{
    m_onSelect = std::move(onSelect);
}

void OverviewAttentionList::setTasks(const std::vector<DashboardTask> &tasks,
                                     const QString &selectedTaskID)
{
    const int count = static_cast<int>(std::min<std::size_t>(tasks.size(), m_rows.size()));
    for (int i = 0; i < count; ++i)
        m_rows[std::size_t(i)]->setTask(tasks[std::size_t(i)],
                                        tasks[std::size_t(i)].id == selectedTaskID);
    m_body.show(count);
}
