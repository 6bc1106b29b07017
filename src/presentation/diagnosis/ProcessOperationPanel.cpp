#include "presentation/diagnosis/ProcessOperationPanel.h"

#include "dashboard/DashboardStore.h"
#include "presentation/diagnosis/DiagnosisTexts.h"
#include "presentation/diagnosis/OperationTexts.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardButtons.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"

#include <QPainter>
#include <QPainterPath>

namespace {

TextLabel *wrappingLabel(double size, DashboardFontWeight weight, QRgb color)
{
    auto *label = new TextLabel(QString(), size, weight, color);
    label->setWordWrap(true);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    return label;
}

// "系统 CPU" and its values: the label in a column 48 wide.
QWidget *comparisonRow(const QString &label, TextLabel *values)
{
    auto *caption =
        new TextLabel(label, 9, DashboardFontWeight::medium, DashboardPalette::textTertiary);
    caption->setFixedWidth(48);
    auto *rowWidget = new QWidget;
    attach(rowWidget, row(8, {}, {caption, LayoutItem(values, 1)}));
    return rowWidget;
}

} // namespace

PanelButton::PanelButton(const QString &text, Style style, QRgb tint, QWidget *parent)
    : QPushButton(text, parent), m_style(style), m_tint(tint)
{
    setDashboardFont(this, 11, DashboardFontWeight::medium);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibility(this, QString(), text);
}

QSize PanelButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 24, std::max(28, metrics.height() + 12)};
}

QSize PanelButton::minimumSizeHint() const
{
    return {48, sizeHint().height()};
}

void PanelButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath path;
    path.addRoundedRect(box, 6, 6);
    const bool enabled = isEnabled();
    const double pressed = isDown() ? 0.82 : 1.0;
    QColor ink;
    const QColor fill = m_style == Style::prominent
                            ? DashboardPalette::color(m_tint, (enabled ? 1.0 : 0.35) * pressed)
                            : QColor::fromRgb(DashboardPalette::controlBackground);
    if (m_style == Style::prominent) {
        painter.fillPath(path, fill);
        ink = DashboardPalette::color(DashboardPalette::white, enabled ? 1.0 : 0.85);
    } else {
        painter.fillPath(path, DashboardPalette::color(DashboardPalette::controlBackground,
                                                       isDown() ? 0.6 : 1.0));
        painter.setPen(QPen(QColor::fromRgb(DashboardPalette::divider), 1));
        painter.drawPath(path);
        ink = DashboardPalette::color(DashboardPalette::textPrimary, enabled ? 1.0 : 0.4);
    }
    if (hasFocus())
        paintFocusRing(painter, box, 6, fill);
    painter.setPen(ink);
    painter.setFont(font());
    painter.drawText(rect().adjusted(8, 0, -8, 0), Qt::AlignCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, width() - 16));
}

ProcessOperationPanel::ProcessOperationPanel(DashboardStore &store,
                                             std::function<void()> openTerminal, QWidget *parent)
    : QWidget(parent), m_store(store), m_openTerminal(std::move(openTerminal))
{
    setAccessibility(this, QStringLiteral("processOperationPanel"), tr("进程操作"));
    setAccessibleRole(this, QAccessible::Grouping);

    auto *heading = new TextLabel(tr("进程操作"), 13, DashboardFontWeight::semibold,
                                  DashboardPalette::textPrimary);
    m_impactLabel =
        new TextLabel(QString(), 10, DashboardFontWeight::semibold, DashboardPalette::danger);
    auto *headingRow = row(8, {}, {heading, m_impactLabel, flexible()});
    headingRow->setAlignment(heading, Qt::AlignBottom);
    headingRow->setAlignment(m_impactLabel, Qt::AlignBottom);

    m_summary = new RoundedBox;
    m_summary->setFill(QColor::fromRgb(DashboardPalette::controlBackground));
    m_summary->setCornerRadius(10);
    m_processName =
        new TextLabel(QString(), 14, DashboardFontWeight::semibold, DashboardPalette::textPrimary);
    // The name asks for its whole width and the space after the badge takes
    // what is left, so only a name longer than the line is cut.
    m_processName->setElided(true);
    m_role = new PillLabel(
        QString(), {9, DashboardFontWeight::medium, QColor::fromRgb(DashboardPalette::accent),
                    QColor::fromRgb(DashboardPalette::accentBackground), 6, 2, 0, 6, -1});
    m_processFacts =
        wrappingLabel(10, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    attach(m_summary, column(5, {12, 7, 12, 7},
                             {row(8, {}, {m_processName, m_role, flexible(1)}), m_processFacts}));

    auto *adviceCaption = new TextLabel(tr("负载来源建议"), 10, DashboardFontWeight::semibold,
                                        DashboardPalette::textSecondary);
    m_recommendation = wrappingLabel(12, DashboardFontWeight::medium, DashboardPalette::accent);
    auto *impactCaption = new TextLabel(tr("结束影响"), 10, DashboardFontWeight::semibold,
                                        DashboardPalette::textSecondary);
    m_impactText = wrappingLabel(10, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    m_impactText->setObjectName(QStringLiteral("terminationImpact"));

    m_terminal = new PanelButton(tr("打开终端"), PanelButton::Style::bordered,
                                 DashboardPalette::textPrimary);
    m_terminal->setObjectName(QStringLiteral("openTerminalButton"));
    m_end = new PanelButton(tr("结束选中进程"), PanelButton::Style::prominent, kDestructiveFill);
    setAccessibility(m_end, QStringLiteral("endTaskButton"));
    setDashboardFont(m_terminal, 11, DashboardFontWeight::medium);

    auto *verification = new RoundedBox;
    setAccessibility(verification, QStringLiteral("recoveryVerification"), tr("本次操作验证"));
    setAccessibleRole(verification, QAccessible::Grouping);
    verification->setFill(QColor::fromRgb(DashboardPalette::controlBackground));
    verification->setCornerRadius(10);
    verification->setMinimumHeight(58);
    auto *verificationHeading = new TextLabel(tr("本次操作验证"), 13, DashboardFontWeight::semibold,
                                              DashboardPalette::textPrimary);
    m_target =
        new TextLabel(QString(), 10, DashboardFontWeight::medium, DashboardPalette::textSecondary);
    m_target->setElided(true);
    setAccessibility(m_target, QStringLiteral("recoveryTarget"));
    m_status = wrappingLabel(10, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    m_status->setObjectName(QStringLiteral("recoveryStatus"));
    m_cpuValues =
        new TextLabel(QString(), 10, DashboardFontWeight::medium, DashboardPalette::textPrimary);
    m_temperatureValues =
        new TextLabel(QString(), 10, DashboardFontWeight::medium, DashboardPalette::textPrimary);
    m_comparison = new QWidget;
    attach(m_comparison, column(5, {},
                                {comparisonRow(tr("系统 CPU"), m_cpuValues),
                                 comparisonRow(tr("温度"), m_temperatureValues)}));
    auto *verificationHeadingRow = row(8, {}, {verificationHeading, LayoutItem(m_target, 1)});
    verificationHeadingRow->setAlignment(m_target, Qt::AlignBottom);
    attach(verification,
           column(5, {12, 8, 12, 8}, {verificationHeadingRow, m_status, m_comparison, flexible()}));

    m_message = wrappingLabel(10, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    m_message->setObjectName(QStringLiteral("terminationMessage"));

    attach(this,
           column(8, {},
                  {headingRow, m_summary, adviceCaption, m_recommendation, impactCaption,
                   m_impactText, row(8, {}, {LayoutItem(m_terminal, 1), LayoutItem(m_end, 1)}),
                   verification, m_message, flexible()}));

    connect(m_terminal, &QPushButton::clicked, this, [this] {
        if (m_openTerminal)
            m_openTerminal();
    });
    connect(m_end, &QPushButton::clicked, this, &ProcessOperationPanel::requestEnd);
}

void ProcessOperationPanel::requestEnd()
{
    // Looked up afresh at the press: what the dialog asks about is what the
    // store selects now, and only if it still passes the pre-check.
    const DashboardTask *task = m_store.selectedTask();
    const std::optional<DashboardProcessNode> process = m_store.selectedProcess();
    if (task && process && m_store.canTerminateSelectedProcess())
        m_store.requestTermination(*task, *process);
}

void ProcessOperationPanel::refresh(const DashboardTask *task, const DashboardProcessNode *process)
{
    const DashboardProcessNode *selected = task ? process : nullptr;
    const std::optional<DashboardTerminationStatus> status = m_store.selectedTerminationStatus();
    const bool canTerminate = m_store.canTerminateSelectedProcess();

    m_impactLabel->setVisible(selected != nullptr);
    m_summary->setVisible(selected != nullptr);
    if (selected) {
        m_impactLabel->setText(
            tr("估算资源影响 %1").arg(resourceImpactLabel(selected->energyImpact)));
        m_impactLabel->setColor(QColor::fromRgb(resourceImpactColor(selected->energyImpact)));
        m_processName->setText(selected->name);
        m_role->setText(selected->roleLabel());
        m_processFacts->setText(tr("PID %1 · CPU %2% · 内存 %3 · 磁盘 %4 · %5")
                                    .arg(QString::number(selected->pid),
                                         QString::number(roundedWholeNumber(selected->cpu)),
                                         selected->memory, selected->disk, selected->duration));
    }
    m_recommendation->setText(m_store.selectedDiagnosis().recommendation);
    m_impactText->setText(terminationImpactText(task, selected, canTerminate, status));

    const QString title = endButtonTitle(selected, status);
    const bool enabled = task != nullptr && canTerminate;
    m_end->setText(title);
    m_end->setEnabled(enabled);
    m_end->setAccessibleName(endButtonAccessibleLabel(title, selected));
    setAccessibleValue(m_end, enabled ? tr("可结束") : tr("不可结束"));

    const DashboardRecoveryContext *context =
        effectiveRecoveryContext(status, m_store.recoveryContext());
    const auto &latest = m_store.latestSystemSample();
    const QString target = verificationTargetLine(status, context);
    m_target->setText(target);
    m_target->setAccessibleName(target);
    m_status->setText(verificationStatusText(status, m_store.recoveryState(), context, latest));
    m_comparison->setVisible(context != nullptr);
    if (context) {
        const DashboardRecoveryMetrics current =
            latest ? DashboardRecoveryMetrics::fromSample(*latest) : DashboardRecoveryMetrics{};
        m_cpuValues->setText(recoveryCPUText(context->baseline.cpu) + QStringLiteral(" → ") +
                             recoveryCPUText(current.cpu));
        m_temperatureValues->setText(recoveryTemperatureText(context->baseline.temperature) +
                                     QStringLiteral(" → ") +
                                     recoveryTemperatureText(current.temperature));
    }

    const auto &message = m_store.terminationMessage();
    m_message->setVisible(message.has_value());
    if (message) {
        const auto &current = m_store.terminationStatus();
        const bool alarming =
            current && (current->phase == DashboardTerminationPhase::unresponsive ||
                        current->phase == DashboardTerminationPhase::failed);
        m_message->setText(*message);
        m_message->setColor(
            QColor::fromRgb(alarming ? DashboardPalette::danger : DashboardPalette::textSecondary));
    }
}
