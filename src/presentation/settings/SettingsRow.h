#pragma once

#include <QWidget>

class TextLabel;

// One setting: its title and an explanation on the leading side, its control
// on the trailing side, a hairline along the bottom. The control takes the
// title as its accessible label, since it shows none of its own.
class SettingsRow final : public QWidget {
    Q_OBJECT

public:
    SettingsRow(const QString &title, const QString &subtitle, QWidget *control,
                QWidget *parent = nullptr);

    QString title() const;
    QWidget *control() const { return m_control; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    TextLabel *m_title;
    QWidget *m_control;
};
