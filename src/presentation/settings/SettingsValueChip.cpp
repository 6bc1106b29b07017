#include "presentation/settings/SettingsValueChip.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"

SettingsValueChip::SettingsValueChip(const QString &text, bool showsChevron, QWidget *parent)
    : RoundedBox(parent)
{
    using namespace DashboardPalette;
    setFill(QColor::fromRgb(controlBackground));
    setCornerRadius(10);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_text = new TextLabel(text, 12, DashboardFontWeight::medium, textPrimary);
    auto *content = row(7, {12, 7, 12, 7}, {LayoutItem(m_text, 0, Qt::AlignVCenter)});
    if (showsChevron) {
        auto *chevron = new SymbolView(QStringLiteral("chevron.down"), 8,
                                       QColor::fromRgb(textPrimary), SymbolWeight::semibold);
        chevron->setFixedSize(10, 10);
        content->addWidget(chevron, 0, Qt::AlignVCenter);
    }
    attach(this, content);
    setAccessibility(this, QString(), text);
    setAccessibleRole(this, QAccessible::StaticText);
}

QString SettingsValueChip::text() const
{
    return m_text->fullText();
}
