#include "presentation/settings/ClearHistoryDialog.h"

#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "sampling/Text.h"

#include <QPainter>
#include <QPushButton>

namespace {

QPushButton *makeDialogButton(const QString &text, const QString &identifier, bool destructive)
{
    using namespace DashboardPalette;
    auto *button = new QPushButton(text);
    button->setObjectName(identifier);
    button->setMinimumHeight(32);
    button->setMinimumWidth(96);
    button->setFont(fixedDashboardFont(13, DashboardFontWeight::medium));
    button->setCursor(Qt::PointingHandCursor);
    QPalette palette = button->palette();
    palette.setColor(QPalette::Button, QColor::fromRgb(destructive ? danger : controlBackground));
    palette.setColor(QPalette::ButtonText,
                     destructive ? QColor(Qt::white) : QColor::fromRgb(textPrimary));
    button->setPalette(palette);
    return button;
}

} // namespace

ClearHistoryDialog::ClearHistoryDialog(QWidget *parent) : QDialog(parent)
{
    using namespace DashboardPalette;
    setObjectName(QStringLiteral("clearHistoryConfirmation"));
    setWindowModality(Qt::WindowModal);
    setModal(true);
    setMinimumWidth(400);
    setMaximumWidth(520);

    const QString title = kwText("清除本次会话的事件历史？");
    const QString message = kwText("此操作不会影响系统数据或正在运行的进程。");
    auto *titleLabel = new TextLabel(title, 15, DashboardFontWeight::semibold, textPrimary);
    titleLabel->setWordWrap(true);
    auto *messageLabel = new TextLabel(message, 13, DashboardFontWeight::regular, textSecondary);
    messageLabel->setWordWrap(true);
    m_cancel = makeDialogButton(kwText("取消"), QStringLiteral("cancelClearHistoryButton"), false);
    m_clear = makeDialogButton(kwText("清除"), QStringLiteral("confirmClearHistoryButton"), true);
    // Return does not clear by accident: the harmless choice is the default.
    m_cancel->setDefault(true);
    m_cancel->setAutoDefault(true);
    m_clear->setAutoDefault(false);

    attach(this, column(12, {24, 22, 24, 20},
                        {titleLabel, messageLabel, fixed(8),
                         row(10, {}, {flexible(), m_cancel, m_clear})}));
    setWindowTitle(title);
    setAccessibleName(title);
    setAccessibleDescription(message);

    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_clear, &QPushButton::clicked, this, &QDialog::accept);
}

void ClearHistoryDialog::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(DashboardPalette::pageBackground));
}
