#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// A plain-text table for terminals. Column widths count East Asian wide
// characters as two cells, so Chinese titles line up with Latin text.
class TextTable {
public:
    explicit TextTable(QStringList headers) : m_headers(std::move(headers)) {}

    void addRow(QStringList cells) { m_rows.push_back(std::move(cells)); }
    bool isEmpty() const { return m_rows.empty(); }

    QString render() const;

private:
    QStringList m_headers;
    std::vector<QStringList> m_rows;
};

// Terminal cells that `text` occupies.
int terminalWidth(const QString &text);
