#pragma once

#include <QWidget>

// A load source's symbol: the glyph in white, medium weight, at 0.46 of the
// side, centred on an accent square with corners of 0.22 of the side.
class DashboardTaskSymbol final : public QWidget {
    Q_OBJECT

public:
    DashboardTaskSymbol(const QString &symbolName, double side, QWidget *parent = nullptr);

    void setSymbolName(const QString &symbolName);
    QString symbolName() const { return m_symbolName; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbolName;
    double m_side;
};
