#include "presentation/settings/SettingsPage.h"

#include "dashboard/DashboardStore.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/settings/ClearHistoryDialog.h"
#include "presentation/settings/SettingsGroup.h"
#include "presentation/settings/SettingsRow.h"
#include "presentation/settings/SettingsSwitch.h"
#include "presentation/settings/SettingsValueChip.h"

#include <QScrollArea>

namespace {

constexpr int kMaximumContentWidth = 760;

// A button drawn as its text alone, in a colour.
PressableBox *makePlainButton(const QString &text, QRgb color, const QString &identifier)
{
    auto *button = new PressableBox;
    button->setCornerRadius(6);
    auto *label = new TextLabel(text, 12, DashboardFontWeight::medium, color);
    attach(button, row(0, {4, 4, 4, 4}, {label}));
    // A button's children inherit its ButtonText role; the label's own colour
    // is its WindowText.
    label->setForegroundRole(QPalette::WindowText);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibility(button, identifier, text);
    return button;
}

// A switch whose state is a fixed fact of this version: pressing it asks,
// and nothing answers.
SettingsSwitch *makeFixedSwitch(bool on)
{
    auto *fixedSwitch = new SettingsSwitch;
    fixedSwitch->setChecked(on);
    return fixedSwitch;
}

} // namespace

SettingsPage::SettingsPage(DashboardStore &store, QWidget *parent)
    : DashboardPage(DashboardSection::settings, parent), m_store(store)
{
    using namespace DashboardPalette;

    auto *heading = new TextLabel(tr("偏好设置"), 22, DashboardFontWeight::semibold, textPrimary);
    auto *headingText = new TextLabel(tr("调整监控频率、提醒条件和本地数据保留方式。"), 13,
                                      DashboardFontWeight::regular, textSecondary);
    headingText->setWordWrap(true);
    auto *header = new QWidget;
    header->setFixedHeight(58);
    attach(header, column(6, {}, {heading, headingText, flexible()}));

    m_monitoringSwitch = new SettingsSwitch;
    m_monitoringSwitch->setObjectName(QStringLiteral("settingsLiveMonitoringSwitch"));
    auto *monitoring =
        new SettingsGroup(tr("监控"), tr("决定 KilnWarden 如何采样本机进程和传感器。"));
    monitoring->addRow(
        new SettingsRow(tr("启动时自动监控"), tr("打开应用后立即开始采样"), m_monitoringSwitch));
    monitoring->addRow(new SettingsRow(tr("采样间隔"), tr("更短间隔会增加少量系统开销"),
                                       new SettingsValueChip(tr("2 秒"), true)));

    auto *notifications = makeFixedSwitch(false);
    notifications->setObjectName(QStringLiteral("settingsNotificationsSwitch"));
    auto *alerts = new SettingsGroup(tr("提醒"), tr("只有持续达到条件时才发送通知，减少干扰。"));
    alerts->addRow(
        new SettingsRow(tr("允许系统通知"), tr("当前版本尚未请求通知权限"), notifications));
    alerts->addRow(new SettingsRow(tr("高负载持续时间"), tr("由热状态、温度与持续负载共同判断"),
                                   new SettingsValueChip(tr("自动"), true)));

    auto *ownProcesses = makeFixedSwitch(true);
    ownProcesses->setObjectName(QStringLiteral("settingsCurrentUserSwitch"));
    auto *privacy = new SettingsGroup(tr("隐私与数据"), tr("所有诊断记录仅保存在这台电脑。"));
    privacy->addRow(
        new SettingsRow(tr("仅监控当前用户进程"), tr("不读取其他登录用户的任务"), ownProcesses));
    privacy->addRow(new SettingsRow(tr("事件历史保留"), tr("退出 KilnWarden 后自动清空"),
                                    new SettingsValueChip(tr("本次会话"), true)));

    m_clearButton =
        makePlainButton(tr("清除事件历史"), danger, QStringLiteral("clearEventHistoryButton"));
    auto *maintenance = new SettingsGroup(tr("外观与维护"), tr("保持界面与桌面系统体验一致。"));
    maintenance->addRow(new SettingsRow(tr("外观"), tr("使用为 KilnWarden 优化的浅色监控界面"),
                                        new SettingsValueChip(tr("浅色"), true)));
    maintenance->addRow(
        new SettingsRow(tr("本地数据"), tr("立即删除本次会话的全部事件记录"), m_clearButton));

    auto *version =
        new TextLabel(tr("KilnWarden 1.0 · Linux"), 11, DashboardFontWeight::regular, textTertiary);
    m_restoreButton =
        makePlainButton(tr("恢复默认设置"), accent, QStringLiteral("restoreDefaultsButton"));
    auto *footer = new QWidget;
    footer->setFixedHeight(36);
    attach(footer, row(0, {},
                       {LayoutItem(version, 0, Qt::AlignVCenter), flexible(),
                        LayoutItem(m_restoreButton, 0, Qt::AlignVCenter)}));

    m_stack = new QWidget;
    m_stack->setMaximumWidth(kMaximumContentWidth);
    attach(m_stack, column(24, {}, {header, monitoring, alerts, privacy, maintenance, footer}));

    auto *content = new QWidget;
    m_centring = column(0, {32, 18, 32, 32}, {});
    auto *centred = row(0, {}, {flexible(), LayoutItem(m_stack, 100), flexible()});
    m_centring->addLayout(centred);
    m_centring->addStretch(1);
    attach(content, m_centring);

    auto *scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(content);
    QPalette background = scroll->palette();
    background.setColor(QPalette::Window, QColor::fromRgb(pageBackground));
    scroll->setPalette(background);
    scroll->viewport()->setPalette(background);
    content->setPalette(background);
    attach(this, column(0, {}, {scroll}));

    // The switch shows the store's value, whoever changed it (this switch,
    // the header's button, the restore button).
    connect(m_monitoringSwitch, &SettingsSwitch::toggleRequested, this, [this](bool on) {
        if (on)
            m_store.startMonitoring();
        else
            m_store.stopMonitoring();
    });
    connect(&m_store, &DashboardStore::isMonitoringChanged, this,
            [this] { m_monitoringSwitch->setChecked(m_store.isMonitoring()); });
    m_monitoringSwitch->setChecked(m_store.isMonitoring());

    connect(m_clearButton, &QAbstractButton::clicked, this, &SettingsPage::confirmClear);
    // Monitoring on is the only default there is to restore.
    connect(m_restoreButton, &QAbstractButton::clicked, this, [this] {
        if (!m_store.isMonitoring())
            m_store.startMonitoring();
    });
}

void SettingsPage::applyLayout(const DashboardLayoutMetrics &layout)
{
    const int padding = static_cast<int>(layout.pageHorizontalPadding);
    m_centring->setContentsMargins(padding, 18, padding, 32);
}

bool SettingsPage::isConfirmingClear() const
{
    return m_clearDialog && m_clearDialog->isVisible();
}

void SettingsPage::confirmClear()
{
    if (!m_clearDialog) {
        m_clearDialog = new ClearHistoryDialog(this);
        connect(m_clearDialog, &QDialog::accepted, this, [this] { m_store.clearIncidents(); });
    }
    if (!m_clearDialog->isVisible()) {
        m_clearDialog->adjustSize();
        m_clearDialog->open();
    }
}
