#include "presentation/settings/ClearHistoryDialog.h"

#include "sampling/Text.h"

ClearHistoryDialog::ClearHistoryDialog(QWidget *parent)
    : ConfirmationDialog(QStringLiteral("clearHistoryConfirmation"),
                         QStringLiteral("cancelClearHistoryButton"),
                         QStringLiteral("confirmClearHistoryButton"), parent)
{
    setMinimumWidth(400);
    setQuestion(kwText("清除本次会话的事件历史？"),
                kwText("此操作不会影响系统数据或正在运行的进程。"), kwText("清除"));
}
