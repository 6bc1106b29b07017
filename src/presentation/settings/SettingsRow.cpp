#include "presentation/settings/SettingsRow.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"

#include <QPainter>

SettingsRow::SettingsRow(const QString &title, const QString &subtitle, QWidget *control,
                         QWidget *parent)
    : QWidget(parent), m_control(control)
{
    using namespace DashboardPalette;
    setFixedHeight(52);
    m_title = new TextLabel(title, 13, DashboardFontWeight::medium, textPrimary);
    auto *explanation = new TextLabel(subtitle, 11, DashboardFontWeight::regular, textSecondary);
    explanation->setElided(true);
    auto *texts = new QWidget;
    attach(texts, column(3, {}, {m_title, explanation}));
    attach(this,
           row(16, {},
               {LayoutItem(texts, 1, Qt::AlignVCenter), LayoutItem(control, 0, Qt::AlignVCenter)}));
    if (control->accessibleName().isEmpty())
        setAccessibility(control, QString(), title, subtitle);
}

QString SettingsRow::title() const
{
    return m_title->fullText();
}

void SettingsRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(QRect(0, height() - 1, width(), 1),
                     QColor::fromRgb(DashboardPalette::divider));
}
