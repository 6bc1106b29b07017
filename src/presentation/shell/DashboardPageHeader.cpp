#include "presentation/shell/DashboardPageHeader.h"

#include "dashboard/DashboardStore.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/RefreshWhileShown.h"
#include "presentation/kit/SystemSymbols.h"
#include "presentation/shell/DashboardStatusLine.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DashboardPageHeader)
};

} // namespace

MonitoringButton::MonitoringButton(DashboardStore &store, QWidget *parent)
    : QWidget(parent), m_store(store)
{
    m_box = new PressableBox(this);
    m_box->setFixedSize(104, 32);
    m_box->setCornerRadius(9);
    setAccessibility(m_box, QStringLiteral("liveMonitoringStatus"));
    m_dot = new Dot(8, Qt::transparent);
    m_text = new TextLabel(QString(), 13, DashboardFontWeight::medium, DashboardPalette::success);
    attach(m_box, row(8, {}, {flexible(), m_dot, m_text, flexible()}));
    attach(this, row(0, {}, {m_box}));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(m_box, &QAbstractButton::clicked, this, [this] {
        if (m_store.isMonitoring())
            m_store.stopMonitoring();
        else
            m_store.startMonitoring();
    });
    connect(&m_store, &DashboardStore::isMonitoringChanged, this, &MonitoringButton::refresh);
    refresh();
}

void MonitoringButton::refresh()
{
    const bool monitoring = m_store.isMonitoring();
    const QString text = monitoring ? Words::tr("监控中") : Words::tr("已暂停");
    m_dot->setColor(
        QColor::fromRgb(monitoring ? DashboardPalette::success : DashboardPalette::textTertiary));
    m_text->setText(text);
    m_text->setColor(
        QColor::fromRgb(monitoring ? DashboardPalette::success : DashboardPalette::textSecondary));
    m_box->setFill(QColor::fromRgb(monitoring ? DashboardPalette::successBackground
                                              : DashboardPalette::controlBackground));
    m_box->setAccessibleName(text);
    m_box->setToolTip(monitoring ? Words::tr("暂停监控") : Words::tr("恢复监控"));
}

DashboardPageHeader::DashboardPageHeader(DashboardStore &store, DashboardSection section,
                                         QWidget *parent)
    : QWidget(parent), m_store(store), m_section(section)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_title = new TextLabel(dashboardSectionTitle(section), 22, DashboardFontWeight::bold,
                            DashboardPalette::textPrimary);
    m_title->setObjectName(QStringLiteral("pageHeaderTitle"));

    m_privacy = new QWidget;
    auto *shield = new SymbolView(QStringLiteral("checkmark.shield"), 10,
                                  QColor::fromRgb(DashboardPalette::textSecondary));
    auto *privacyText = new TextLabel(tr("数据仅在本机处理"), 10, DashboardFontWeight::regular,
                                      DashboardPalette::textSecondary);
    attach(m_privacy, row(4, {}, {shield, privacyText}));
    m_privacy->setAccessibleName(privacyText->text());

    auto *monitoring = new MonitoringButton(store);
    m_statusLine =
        new TextLabel(QString(), 10, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    m_statusLine->setObjectName(QStringLiteral("pageHeaderStatus"));
    m_statusLine->setElided(true);

    auto *topRow = row(14, {}, {m_title, m_privacy, flexible(), monitoring});
    topRow->setAlignment(m_title, Qt::AlignVCenter);
    topRow->setAlignment(m_privacy, Qt::AlignVCenter);
    m_layout = column(8, {32, 24, 32, 16}, {topRow, m_statusLine, flexible()});
    attach(this, m_layout);

    refreshWhileShown(this, &m_store, &DashboardStore::changed, [this] { refreshStatusLine(); });
    refreshStatusLine();
}

void DashboardPageHeader::setSection(DashboardSection section)
{
    if (section == m_section)
        return;
    m_section = section;
    m_title->setText(dashboardSectionTitle(section));
    refreshStatusLine();
}

QString DashboardPageHeader::statusLineText() const
{
    return m_statusLine->fullText();
}

void DashboardPageHeader::refreshStatusLine()
{
    m_statusLine->setText(dashboardStatusLine(m_section, m_store));
}

void DashboardPageHeader::applyLayout(const DashboardLayoutMetrics &layout)
{
    const double titleSize = layout.horizontalSize == DashboardHorizontalSize::compact    ? 20
                             : layout.horizontalSize == DashboardHorizontalSize::standard ? 21
                                                                                          : 22;
    setDashboardFont(m_title, titleSize, DashboardFontWeight::bold);
    m_privacy->setVisible(layout.showsPrivacyLabel);
    const int padding = static_cast<int>(layout.pageHorizontalPadding);
    m_layout->setContentsMargins(padding, 24, padding, 16);
    // The metric is the least height: the title row, the status line at its
    // legible size and the paddings may need more, and are never cut.
    m_layout->invalidate();
    setFixedHeight(std::max(static_cast<int>(layout.headerHeight), m_layout->sizeHint().height()));
}

void DashboardPageHeader::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(DashboardPalette::headerBackground));
}
