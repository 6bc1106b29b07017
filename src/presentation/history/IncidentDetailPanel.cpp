#include "presentation/history/IncidentDetailPanel.h"

#include "presentation/history/IncidentRowMotion.h"
#include "presentation/history/IncidentStatusPill.h"
#include "presentation/history/IncidentTexts.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"

#include <QCoreApplication>
#include <QGraphicsOpacityEffect>
#include <QResizeEvent>
#include <QScrollArea>
#include <QVariantAnimation>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(IncidentDetailPanel)
};

constexpr int kPadding = 24;
constexpr int kMinimumCompactHeight = 430;

QWidget *makePlaceholder()
{
    using namespace DashboardPalette;
    auto *placeholder = new QWidget;
    auto *symbol =
        new SymbolView(QStringLiteral("list.bullet.clipboard"), 32, QColor::fromRgb(accent));
    symbol->setFixedSize(38, 38);
    auto *title = new TextLabel(Words::tr("选择一条事件查看详情"), 14, DashboardFontWeight::medium,
                                textPrimary);
    auto *message =
        new TextLabel(Words::tr("详情只展示本次会话中真实采集到的负载、温度与处理结果。"), 12,
                      DashboardFontWeight::regular, textTertiary);
    message->setWordWrap(true);
    for (TextLabel *label : {title, message})
        label->setAlignment(Qt::AlignHCenter);
    attach(placeholder, column(12, {},
                               {flexible(), LayoutItem(symbol, 0, Qt::AlignHCenter), title, message,
                                flexible()}));
    setAccessibility(placeholder, QStringLiteral("incidentDetailPlaceholder"), title->fullText(),
                     message->fullText());
    return placeholder;
}

} // namespace

IncidentDetailPanel::IncidentDetailPanel(std::function<void()> openDiagnosis, QWidget *parent)
    : RoundedBox(parent)
{
    using namespace DashboardPalette;
    setObjectName(QStringLiteral("incidentDetail"));
    setFill(QColor::fromRgb(panelBackground));
    setCornerRadius(18);

    m_status = new PillLabel(QString(), incidentStatusPillStyle(DashboardIncidentStatus::observing,
                                                                IncidentPillPlace::detailPanel));
    m_title = new TextLabel(QString(), 24, DashboardFontWeight::semibold, textPrimary);
    m_title->setWordWrap(true);
    m_startAndDuration = new TextLabel(QString(), 12, DashboardFontWeight::regular, textSecondary);
    m_startAndDuration->setWordWrap(true);

    auto *values = column(12, {}, {});
    for (const char *label : {QT_TRANSLATE_NOOP("IncidentDetailPanel", "目标进程"),
                              QT_TRANSLATE_NOOP("IncidentDetailPanel", "所属应用"),
                              QT_TRANSLATE_NOOP("IncidentDetailPanel", "CPU 峰值"),
                              QT_TRANSLATE_NOOP("IncidentDetailPanel", "温度变化"),
                              QT_TRANSLATE_NOOP("IncidentDetailPanel", "磁盘活动")}) {
        auto *caption = new TextLabel(tr(label), 11, DashboardFontWeight::regular, textTertiary);
        auto *value = new TextLabel(QString(), 14, DashboardFontWeight::medium, textPrimary);
        value->setWordWrap(true);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        values->addLayout(column(4, {}, {caption, value}));
        m_values.emplace_back(caption, value);
    }
    auto *adviceHeading = new TextLabel(tr("建议"), 13, DashboardFontWeight::semibold, textPrimary);
    m_advice = new TextLabel(QString(), 13, DashboardFontWeight::regular, textSecondary);
    m_advice->setWordWrap(true);
    auto *open = new DashboardPrimaryButton(tr("查看实时诊断"));
    open->setObjectName(QStringLiteral("openDiagnosisButton"));
    connect(open, &QAbstractButton::clicked, this, [openDiagnosis = std::move(openDiagnosis)] {
        if (openDiagnosis)
            openDiagnosis();
    });

    m_details = new QWidget;
    attach(m_details, column(18, {},
                             {LayoutItem(m_status, 0, Qt::AlignLeft), m_title, m_startAndDuration,
                              new HairLine, values, new HairLine,
                              column(6, {}, {adviceHeading, m_advice}), open, flexible()}));
    m_placeholder = makePlaceholder();

    m_content = new QWidget;
    attach(m_content, column(0, {kPadding, kPadding, kPadding, kPadding},
                             {LayoutItem(m_details, 1), LayoutItem(m_placeholder, 1)}));
    m_scroll = new QScrollArea;
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setWidget(m_content);
    // The panel's own fill shows through (setWidget turns filling on).
    m_content->setAutoFillBackground(false);
    m_scroll->viewport()->setAutoFillBackground(false);
    m_scroll->setAutoFillBackground(false);
    attach(this, column(0, {}, {m_scroll}));

    m_fade = new QVariantAnimation(this);
    m_fade->setStartValue(0.0);
    m_fade->setEndValue(1.0);
    m_fade->setDuration(IncidentRowMotion::selectionMilliseconds);
    m_fade->setEasingCurve(QEasingCurve::OutCubic);
    connect(m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        if (auto *effect = qobject_cast<QGraphicsOpacityEffect *>(m_scroll->graphicsEffect()))
            effect->setOpacity(value.toDouble());
    });
    // The effect draws through an offscreen copy: it lives only while fading.
    connect(m_fade, &QVariantAnimation::finished, this,
            [this] { m_scroll->setGraphicsEffect(nullptr); });

    showIncident(nullptr, std::nullopt);
}

void IncidentDetailPanel::fadeIn()
{
    m_fade->stop();
    auto *effect = new QGraphicsOpacityEffect;
    effect->setOpacity(0.0);
    m_scroll->setGraphicsEffect(effect);
    m_fade->start();
}

bool IncidentDetailPanel::isFading() const
{
    return m_fade->state() == QAbstractAnimation::Running;
}

void IncidentDetailPanel::showIncident(const DashboardIncident *incident,
                                       std::optional<TimePoint> latestSampleTime)
{
    m_placeholder->setVisible(!incident);
    m_details->setVisible(incident != nullptr);
    if (!incident) {
        setAccessibleName(tr("选择一条事件查看详情"));
        fitHeightToContent();
        return;
    }
    m_status->setText(incidentStatusLabel(incident->status));
    m_status->setStyle(incidentStatusPillStyle(incident->status, IncidentPillPlace::detailPanel));
    m_title->setText(incidentTitle(*incident));
    m_startAndDuration->setText(
        tr("%1 开始 · 持续 %2")
            .arg(incidentStartDateTimeText(*incident),
                 incidentDurationText(*incident, latestSampleTime, TimePoint::now())));
    const QString texts[] = {incident->detail, incident->application,
                             incidentPeakCPUText(*incident), incidentTemperatureChange(*incident),
                             tr("本次事件未记录")};
    for (std::size_t index = 0; index < m_values.size(); ++index) {
        m_values[index].second->setText(texts[index]);
        m_values[index].second->setAccessibleName(m_values[index].first->fullText());
    }
    m_advice->setText(incident->action.value_or(incident->detail));
    setAccessibleName(m_title->fullText());
    fitHeightToContent();
}

void IncidentDetailPanel::setGrowsWithContent(bool grows)
{
    m_growsWithContent = grows;
    m_scroll->setVerticalScrollBarPolicy(grows ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    fitHeightToContent();
}

void IncidentDetailPanel::resizeEvent(QResizeEvent *event)
{
    RoundedBox::resizeEvent(event);
    if (m_growsWithContent && event->size().width() != event->oldSize().width())
        fitHeightToContent();
}

void IncidentDetailPanel::fitHeightToContent()
{
    if (!m_growsWithContent) {
        setMinimumHeight(0);
        return;
    }
    const QLayout *layout = m_content->layout();
    const int width = std::max(1, this->width());
    const int content =
        layout->hasHeightForWidth() ? layout->heightForWidth(width) : layout->sizeHint().height();
    setMinimumHeight(std::max(kMinimumCompactHeight, content));
}

bool IncidentDetailPanel::showsPlaceholder() const
{
    return m_placeholder->isVisibleTo(this);
}

QString IncidentDetailPanel::startAndDurationText() const
{
    return m_startAndDuration->fullText();
}

QString IncidentDetailPanel::adviceText() const
{
    return m_advice->fullText();
}

QString IncidentDetailPanel::valueText(const QString &label) const
{
    for (const auto &[caption, value] : m_values) {
        if (caption->fullText() == label)
            return value->fullText();
    }
    return {};
}
