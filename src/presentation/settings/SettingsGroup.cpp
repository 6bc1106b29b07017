#include "presentation/settings/SettingsGroup.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/settings/SettingsRow.h"

SettingsGroup::SettingsGroup(const QString &title, const QString &subtitle, QWidget *parent)
    : QWidget(parent)
{
    using namespace DashboardPalette;
    auto *titleBlock = new QWidget;
    titleBlock->setFixedHeight(48);
    auto *heading = new TextLabel(title, 16, DashboardFontWeight::semibold, textPrimary);
    auto *explanation = new TextLabel(subtitle, 11, DashboardFontWeight::regular, textTertiary);
    explanation->setWordWrap(true);
    attach(titleBlock, column(4, {}, {heading, explanation, flexible()}));
    m_rows = column(0, {}, {});
    attach(this, column(8, {}, {new HairLine, titleBlock, m_rows}));
    setAccessibility(this, QString(), title, subtitle);
    setAccessibleRole(this, QAccessible::Grouping);
}

void SettingsGroup::addRow(SettingsRow *row)
{
    m_rows->addWidget(row);
}
