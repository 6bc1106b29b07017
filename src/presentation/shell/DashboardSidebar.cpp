#include "presentation/shell/DashboardSidebar.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/AccessibleSelection.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/KilnWardenMark.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"

#include <QKeyEvent>
#include <QPainter>

DashboardSidebar::DashboardSidebar(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);

    // Brand block: the mark on its tile, and the name beside it.
    m_brand = new PressableBox(this);
    m_brand->setFocusPolicy(Qt::NoFocus);
    m_brand->setCursor(Qt::ArrowCursor);
    setAccessibility(m_brand, QStringLiteral("sidebar-brand"), QStringLiteral("KilnWarden"));
    auto *tile = new RoundedBox;
    tile->setFixedSize(42, 42);
    tile->setFill(QColor::fromRgb(DashboardPalette::accentBackground));
    tile->setBorder(DashboardPalette::color(DashboardPalette::accent, 0.14), 1.0);
    tile->setCornerRadius(12);
    auto *mark = new KilnWardenMarkView(KilnWardenMarkPalette::fullColor, true);
    mark->setFixedSize(30, 30);
    attach(tile, row(0, {6, 6, 6, 6}, {mark}));
    m_brandTitle = new TextLabel(QStringLiteral("KilnWarden"), 15, DashboardFontWeight::bold,
                                 DashboardPalette::textPrimary);
    m_brandLayout = row(12, {}, {flexible(0), tile, m_brandTitle, flexible()});
    attach(m_brand, m_brandLayout);
    connect(m_brand, &QAbstractButton::clicked, this, &DashboardSidebar::brandActivated);
    m_brand->installEventFilter(this);

    m_caption = new TextLabel(tr("工作区"), 10, DashboardFontWeight::regular,
                              DashboardPalette::textTertiary);
    m_caption->setContentsMargins(12, 0, 12, 0);

    m_listLayout = column(6, {}, {m_caption});
    for (const DashboardSection section : kAllDashboardSections) {
        if (section == DashboardSection::settings)
            continue;
        const Row sectionRow = makeRow(section);
        m_rows[section] = sectionRow;
        m_listLayout->addWidget(sectionRow.box);
    }
    m_rows[DashboardSection::settings] = makeRow(DashboardSection::settings);
    m_settingsLayout = column(0, {}, {m_rows[DashboardSection::settings].box});

    auto *brandHolder = new QWidget;
    attach(brandHolder, row(0, {}, {m_brand}));
    attach(this,
           column(0, {0, 0, 0, 24}, {brandHolder, m_listLayout, flexible(), m_settingsLayout}));
    applyLayout(dashboardLayoutOf(this));
    refreshRows();
}

DashboardSidebar::Row DashboardSidebar::makeRow(DashboardSection section)
{
    Row result;
    result.box = new PressableBox(this);
    result.box->setFixedHeight(40);
    result.box->setCornerRadius(9);
    result.box->setToolTip(dashboardSectionTitle(section));
    setAccessibility(result.box, dashboardSidebarIdentifier(section),
                     dashboardSectionTitle(section));
    result.symbol = new SymbolView(dashboardSectionSymbol(section), 15,
                                   QColor::fromRgb(DashboardPalette::textPrimary));
    result.symbol->setFixedWidth(18);
    result.title = new TextLabel(dashboardSectionTitle(section), 13, DashboardFontWeight::regular,
                                 DashboardPalette::textPrimary);
    result.layout = row(11, {12, 0, 12, 0}, {flexible(0), result.symbol, result.title, flexible()});
    attach(result.box, result.layout);
    connect(result.box, &QAbstractButton::clicked, this, [this, section] {
        if (section != m_selected)
            emit sectionRequested(section);
    });
    return result;
}

QWidget *DashboardSidebar::brandBlock() const
{
    return m_brand;
}

void DashboardSidebar::setBrandOpensPanel(bool opensPanel)
{
    m_brand->setFocusPolicy(opensPanel ? Qt::StrongFocus : Qt::NoFocus);
    m_brand->setCursor(opensPanel ? Qt::PointingHandCursor : Qt::ArrowCursor);
    const QString action = opensPanel ? tr("打开 KilnWarden 状态面板") : QString();
    m_brand->setToolTip(action);
    m_brand->setAccessibleDescription(action);
}

bool DashboardSidebar::eventFilter(QObject *watched, QEvent *event)
{
    // A button's Space is Qt's own; Return opens the panel as well.
    if (watched == m_brand && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_brand->click();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void DashboardSidebar::setSelectedSection(DashboardSection section)
{
    if (section == m_selected)
        return;
    m_selected = section;
    refreshRows();
}

void DashboardSidebar::refreshRows()
{
    for (auto &[section, sectionRow] : m_rows) {
        const bool selected = section == m_selected;
        const QColor foreground =
            QColor::fromRgb(selected ? DashboardPalette::accent : DashboardPalette::textPrimary);
        sectionRow.box->setFill(selected ? QColor::fromRgb(DashboardPalette::sidebarSelection)
                                         : QColor(Qt::transparent));
        sectionRow.symbol->setColor(foreground);
        sectionRow.title->setColor(foreground);
        setAccessibleValue(sectionRow.box, selected ? tr("已选择") : tr("未选择"));
        setAccessibleSelected(sectionRow.box, selected);
    }
}

void DashboardSidebar::applyLayout(const DashboardLayoutMetrics &layout)
{
    m_showsLabels = layout.showsSidebarLabels;
    const int padding = m_showsLabels ? 18 : 10;
    // Each row is [space, symbol, title, space]: the wide sidebar leads with
    // the symbol, the narrow one gives both spaces the same share and so
    // centres it.
    const int leadingShare = m_showsLabels ? 0 : 1;
    m_brandTitle->setVisible(m_showsLabels);
    // Top padding 28, not 56: the window's own title bar sits above the
    // sidebar, where a macOS title bar would overlap it.
    m_brandLayout->setContentsMargins(m_showsLabels ? 18 : 0, 28, m_showsLabels ? 18 : 0, 32);
    m_brandLayout->setStretch(0, leadingShare);
    m_caption->setVisible(m_showsLabels);
    m_listLayout->setContentsMargins(padding, 0, padding, 0);
    m_settingsLayout->setContentsMargins(padding, 0, padding, 0);
    for (auto &[section, sectionRow] : m_rows) {
        sectionRow.title->setVisible(m_showsLabels);
        sectionRow.layout->setSpacing(m_showsLabels ? 11 : 6);
        sectionRow.layout->setContentsMargins(m_showsLabels ? 12 : 0, 0, m_showsLabels ? 12 : 0, 0);
        sectionRow.layout->setStretch(0, leadingShare);
    }
}

void DashboardSidebar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(DashboardPalette::sidebarBackground));
}
