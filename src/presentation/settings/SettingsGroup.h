#pragma once

#include <QWidget>

class QVBoxLayout;
class SettingsRow;

// A group of settings under a divider: its title and subtitle, then its rows.
class SettingsGroup final : public QWidget {
    Q_OBJECT

public:
    SettingsGroup(const QString &title, const QString &subtitle, QWidget *parent = nullptr);

    void addRow(SettingsRow *row);

private:
    QVBoxLayout *m_rows;
};
