#include "presentation/diagnosis/TwoLineText.h"

#include "presentation/kit/Accessibility.h"

#include <QPainter>
#include <QTextLayout>

TwoLineText::TwoLineText(double size, QRgb color, QWidget *parent)
    : QWidget(parent), m_color(QColor::fromRgb(color))
{
    setDashboardFont(this, size);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void TwoLineText::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    setToolTip(text);
    update();
}

QStringList TwoLineText::shownLines() const
{
    const QFontMetrics metrics(font());
    const int width = std::max(1, contentsRect().width());
    QTextLayout layout(m_text, font());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList lines;
    while (true) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        if (lines.size() == 1) {
            // The second line takes the rest, cut to fit.
            lines.append(metrics.elidedText(m_text.mid(line.textStart()), Qt::ElideRight, width));
            break;
        }
        lines.append(m_text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

QSize TwoLineText::sizeHint() const
{
    return {100, fontMetrics().lineSpacing() * 2};
}

QSize TwoLineText::minimumSizeHint() const
{
    return {20, fontMetrics().lineSpacing() * 2};
}

void TwoLineText::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(m_color);
    painter.setFont(font());
    const QFontMetrics metrics(font());
    const QRect area = contentsRect();
    int y = area.top();
    for (const QString &line : shownLines()) {
        painter.drawText(QRect(area.left(), y, area.width(), metrics.lineSpacing()),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, line);
        y += metrics.lineSpacing();
    }
}
