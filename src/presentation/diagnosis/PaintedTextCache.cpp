#include "presentation/diagnosis/PaintedTextCache.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QRectF>

double PaintedTextCache::draw(QPainter &painter, const QRectF &box, Qt::Alignment alignment,
                              const QString &text, const QFont &font)
{
    if (text.isEmpty() || box.width() <= 0)
        return 0.0;
    const Key key{text, font, static_cast<int>(box.width())};
    auto found = m_entries.constFind(key);
    if (found == m_entries.constEnd()) {
        if (m_entries.size() >= kCapacity)
            m_entries.clear();
        const QFontMetricsF metrics(font);
        QStaticText shaped(metrics.elidedText(text, Qt::ElideRight, key.width));
        shaped.setTextFormat(Qt::PlainText);
        shaped.setPerformanceHint(QStaticText::AggressiveCaching);
        shaped.prepare(QTransform(), font);
        found = m_entries.insert(key, shaped);
    }
    const QStaticText &shaped = found.value();
    const QSizeF size = shaped.size();
    double x = box.left();
    if (alignment.testFlag(Qt::AlignRight))
        x = box.right() - size.width();
    else if (alignment.testFlag(Qt::AlignHCenter))
        x = box.center().x() - size.width() / 2;
    painter.setFont(font);
    painter.drawStaticText(QPointF(x, box.top() + (box.height() - size.height()) / 2), shaped);
    return size.width();
}
