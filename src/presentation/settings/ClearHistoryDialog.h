#pragma once

#include "presentation/kit/ConfirmationDialog.h"

// The question before the session's incidents are cleared. "清除" accepts and
// "取消" (also Escape) rejects; the settings page acts on the answer. Nothing
// on disk is involved: the log lives in the store alone.
class ClearHistoryDialog final : public ConfirmationDialog {
    Q_OBJECT

public:
    explicit ClearHistoryDialog(QWidget *parent);

    QPushButton *clearButton() const { return confirmButton(); }
};
