#pragma once

#include "presentation/kit/DashboardWidgets.h"

// A value shown in a row: the text and, when asked for, a chevron that
// suggests a choice. It opens nothing: this version offers no other values.
class SettingsValueChip final : public RoundedBox {
    Q_OBJECT

public:
    SettingsValueChip(const QString &text, bool showsChevron, QWidget *parent = nullptr);

    QString text() const;

private:
    TextLabel *m_text;
};
