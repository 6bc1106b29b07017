#include "presentation/tray/KilnWardenMenuBarPanel.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"
#include "presentation/tray/MenuBarAppearance.h"
#include "presentation/tray/MenuBarPanelParts.h"
#include "sampling/Text.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(KilnWardenMenuBarPanel)
};

// Stack spacing between the panel's rows; the dividers add their own 6 above
// and below.
constexpr int kRowSpacing = 8;
constexpr int kDividerPadding = 6;
constexpr int kMessageSymbolSize = 14;

// The metric boxes, left to right.
constexpr MenuBarPresentationMetric MenuBarPresentation::*kMetrics[] = {
    &MenuBarPresentation::cpu, &MenuBarPresentation::temperature, &MenuBarPresentation::fan};

// Labels hidden from accessibility, so that their row is read as one element.
void hideFromAccessibility(std::initializer_list<QWidget *> widgets)
{
    for (QWidget *widget : widgets)
        setAccessibilityHidden(widget);
}

} // namespace

MenuBarPanelDetail menuBarPanelDetail(const MenuBarPresentation &presentation)
{
    if (isAbnormalMenuBarState(presentation.state))
        return presentation.primaryTask ? MenuBarPanelDetail::primaryTask
                                        : MenuBarPanelDetail::none;
    return presentation.statusMessage ? MenuBarPanelDetail::message : MenuBarPanelDetail::none;
}

QString menuBarRemainingTaskText(qint64 remainingAttentionTaskCount)
{
    if (remainingAttentionTaskCount < 1)
        return {};
    return Words::tr("另有 %1 个需关注任务").arg(formatLocaleInteger(remainingAttentionTaskCount));
}

KilnWardenMenuBarPanel::KilnWardenMenuBarPanel(QWidget *parent) : QWidget(parent)
{
    setFixedWidth(panelWidth);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibility(this, QStringLiteral("menuBar-panel"));

    // 1. Status row: the state's symbol, the headline and, on its baseline,
    // how long the state has lasted.
    m_status = new QWidget;
    m_statusSymbol = new SymbolView(QString(), 16, Qt::gray, SymbolWeight::semibold);
    m_statusSymbol->setScalesWithText(false);
    m_statusSymbol->setFixedSize(20, 20);
    m_headline = new MenuBarPanelLabel(15, DashboardFontWeight::semibold);
    m_duration = new MenuBarPanelLabel(12, DashboardFontWeight::regular);
    // Bottom-aligned labels of two sizes share a baseline once the smaller one
    // is lifted by the difference of the descents.
    m_duration->setContentsMargins(
        0, 0, 0,
        std::max(0, m_headline->fontMetrics().descent() - m_duration->fontMetrics().descent()));
    attach(m_status, row(8, {},
                         {LayoutItem(m_statusSymbol, 0, Qt::AlignVCenter),
                          LayoutItem(row(6, {},
                                         {LayoutItem(m_headline, 0, Qt::AlignBottom),
                                          LayoutItem(m_duration, 0, Qt::AlignBottom)}),
                                     0),
                          flexible()}));
    setAccessibility(m_status, QStringLiteral("menuBar-status"));
    hideFromAccessibility({m_statusSymbol, m_headline, m_duration});

    // 3. The three metrics, each an equal share of the width.
    const QString identifiers[] = {QStringLiteral("menuBar-metric-cpu"),
                                   QStringLiteral("menuBar-metric-temperature"),
                                   QStringLiteral("menuBar-metric-fan")};
    auto *metricRow = new QHBoxLayout;
    metricRow->setContentsMargins(0, 0, 0, 0);
    metricRow->setSpacing(kRowSpacing);
    for (size_t index = 0; index < m_metrics.size(); ++index) {
        m_metrics[index] = makeMetric(identifiers[index]);
        metricRow->addWidget(m_metrics[index].box, 1, Qt::AlignTop);
    }

    // 5a. The primary task box.
    m_taskBox = new RoundedBox;
    m_taskBox->setCornerRadius(10);
    setAccessibility(m_taskBox, QStringLiteral("menuBar-primary-task"));
    setAccessibleRole(m_taskBox, QAccessible::Grouping);
    m_taskCaption = new MenuBarPanelLabel(10, DashboardFontWeight::regular);
    m_taskCaption->setText(tr("主要负载"));
    m_taskApplication = new MenuBarPanelLabel(13, DashboardFontWeight::medium);
    m_taskApplication->setElided(true);
    m_taskApplication->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_taskCPU = new MenuBarPanelLabel(13, DashboardFontWeight::semibold,
                                      DashboardFontDesign::monospacedDigits);
    m_taskRunning = new MenuBarPanelLabel(11, DashboardFontWeight::regular);
    m_taskSeparator = new MenuBarPanelLabel(11, DashboardFontWeight::regular);
    m_taskSeparator->setText(QStringLiteral("·"));
    setAccessibilityHidden(m_taskSeparator);
    m_taskRemaining = new MenuBarPanelLabel(11, DashboardFontWeight::regular);
    setAccessibility(m_taskRemaining, QStringLiteral("menuBar-remaining-task-count"));
    attach(m_taskBox,
           column(5, {10, 10, 10, 10},
                  {m_taskCaption, row(8, {}, {LayoutItem(m_taskApplication, 1), m_taskCPU}),
                   row(4, {}, {m_taskRunning, m_taskSeparator, m_taskRemaining, flexible()})}));

    // 5b. The message row of the calm states.
    m_message = new RoundedBox;
    m_message->setObjectName(QStringLiteral("menuBar-status-message"));
    m_message->setCornerRadius(10);
    m_message->setMinimumHeight(32);
    m_messageSymbol = new SymbolView(QString(), kMessageSymbolSize, Qt::gray);
    m_messageSymbol->setScalesWithText(false);
    m_messageSymbol->setFixedSize(kMessageSymbolSize + 2, kMessageSymbolSize + 2);
    setAccessibilityHidden(m_messageSymbol);
    m_messageText = new MenuBarPanelLabel(12, DashboardFontWeight::regular);
    m_messageText->setWordWrap(true);
    attach(m_message, row(8, {10, 7, 10, 7}, {m_messageSymbol, LayoutItem(m_messageText, 1)}));

    // 6. The two buttons, equal shares.
    m_openDashboard = new MenuBarPanelButton(tr("打开仪表盘"), true);
    m_openDashboard->setDefault(true);
    setAccessibility(m_openDashboard, QStringLiteral("menuBar-open-dashboard"), tr("打开仪表盘"));
    m_quit = new MenuBarPanelButton(tr("退出"), false);
    setAccessibility(m_quit, QStringLiteral("menuBar-quit"), tr("退出"));
    connect(m_openDashboard, &QPushButton::clicked, this,
            &KilnWardenMenuBarPanel::openDashboardRequested);
    connect(m_quit, &QPushButton::clicked, this, &KilnWardenMenuBarPanel::quitRequested);

    m_detailDivider = makeDivider(&m_dividerLines[2]);
    attach(this, column(kRowSpacing, {16, 14, 16, 14},
                        {m_status, makeDivider(&m_dividerLines[0]), metricRow,
                         makeDivider(&m_dividerLines[1]), m_taskBox, m_message, m_detailDivider,
                         row(8, {}, {LayoutItem(m_openDashboard, 1), LayoutItem(m_quit, 1)})}));
    refresh();
}

KilnWardenMenuBarPanel::Metric KilnWardenMenuBarPanel::makeMetric(const QString &identifier)
{
    Metric metric;
    metric.box = new QWidget;
    metric.title = new MenuBarPanelLabel(10, DashboardFontWeight::regular);
    metric.value = new MenuBarPanelLabel(15, DashboardFontWeight::semibold,
                                         DashboardFontDesign::monospacedDigits);
    metric.value->setElided(true);
    metric.value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    attach(metric.box, column(3, {}, {metric.title, metric.value}));
    setAccessibility(metric.box, identifier);
    hideFromAccessibility({metric.title, metric.value});
    return metric;
}

QWidget *KilnWardenMenuBarPanel::makeDivider(HairLine **line)
{
    auto *holder = new QWidget;
    *line = new HairLine;
    attach(holder, column(0, {0, kDividerPadding, 0, kDividerPadding}, {*line}));
    setAccessibilityHidden(holder);
    return holder;
}

void KilnWardenMenuBarPanel::setPresentation(const MenuBarPresentation &presentation)
{
    if (presentation == m_presentation)
        return;
    m_presentation = presentation;
    refresh();
}

void KilnWardenMenuBarPanel::setDarkAppearance(bool dark)
{
    if (dark == m_dark)
        return;
    m_dark = dark;
    refresh();
}

void KilnWardenMenuBarPanel::refresh()
{
    const MenuBarPresentation &p = m_presentation;
    const MenuBarPanelColors colors = menuBarPanelColors(m_dark);
    const QColor stateColor = menuBarStateColor(p.state, m_dark);
    const QColor stateBackground = menuBarStateBackground(p.state, m_dark);

    m_statusSymbol->setSymbol(p.symbolName);
    m_statusSymbol->setColor(stateColor);
    m_headline->setText(p.headline);
    m_headline->setColor(colors.primaryText);
    m_duration->setText(p.durationText.value_or(QString()));
    m_duration->setColor(colors.secondaryText);
    m_duration->setVisible(p.durationText.has_value());
    m_status->setAccessibleName(p.headline);
    setAccessibleValue(m_status, p.durationText.value_or(QString()));

    for (size_t index = 0; index < m_metrics.size(); ++index) {
        const MenuBarPresentationMetric &metric = p.*kMetrics[index];
        Metric &view = m_metrics[index];
        view.title->setText(metric.title);
        view.title->setColor(colors.secondaryText);
        view.value->setText(metric.value);
        // The CPU value carries the state's colour.
        view.value->setColor(index == 0 ? stateColor : colors.primaryText);
        view.box->setAccessibleName(metric.title + QLatin1Char(' ') +
                                    metric.accessibilityValue.value_or(metric.value));
    }

    const MenuBarPanelDetail detail = menuBarPanelDetail(p);
    m_taskBox->setVisible(detail == MenuBarPanelDetail::primaryTask);
    m_message->setVisible(detail == MenuBarPanelDetail::message);
    m_detailDivider->setVisible(detail != MenuBarPanelDetail::none);

    m_taskBox->setFill(stateBackground);
    m_taskCaption->setColor(colors.secondaryText);
    m_taskApplication->setColor(colors.primaryText);
    m_taskCPU->setColor(stateColor);
    for (MenuBarPanelLabel *label : {m_taskRunning, m_taskSeparator, m_taskRemaining})
        label->setColor(colors.secondaryText);
    if (p.primaryTask) {
        m_taskApplication->setText(p.primaryTask->application);
        m_taskCPU->setText(p.primaryTask->cpuText);
        m_taskRunning->setText(tr("运行 %1").arg(p.primaryTask->runningDuration));
        m_taskBox->setAccessibleName(tr("主要负载"));
    }
    const QString remaining = menuBarRemainingTaskText(p.remainingAttentionTaskCount);
    m_taskRemaining->setText(remaining);
    m_taskRemaining->setAccessibleName(remaining);
    m_taskSeparator->setVisible(!remaining.isEmpty());
    m_taskRemaining->setVisible(!remaining.isEmpty());

    m_message->setFill(stateBackground);
    const bool calm = p.state == MenuBarPresentationState::normal;
    m_messageSymbol->setSymbol(calm ? QStringLiteral("checkmark.circle.fill") : p.symbolName);
    m_messageSymbol->setColor(calm ? QColor::fromRgb(DashboardPalette::success) : stateColor);
    m_messageText->setText(p.statusMessage.value_or(QString()));
    m_messageText->setColor(colors.primaryText);

    for (HairLine *line : m_dividerLines)
        line->setColor(colors.divider);
    m_openDashboard->setDarkAppearance(m_dark);
    m_quit->setDarkAppearance(m_dark);

    QPalette panelPalette = palette();
    panelPalette.setColor(QPalette::Window, colors.background);
    setPalette(panelPalette);
    adjustSize();
    update();
}

void KilnWardenMenuBarPanel::paintEvent(QPaintEvent *)
{
    const MenuBarPanelColors colors = menuBarPanelColors(m_dark);
    QPainter painter(this);
    painter.fillRect(rect(), colors.background);
    painter.setPen(QPen(colors.border, 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void KilnWardenMenuBarPanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        m_openDashboard->click();
        return;
    }
    QWidget::keyPressEvent(event);
}
