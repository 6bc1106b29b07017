#pragma once

#include <QFont>
#include <QHash>
#include <QStaticText>
#include <QString>

class QPainter;
class QRectF;

// Texts of painted list rows, shaped once and kept between paints. A tick
// changes a few numbers in a row; shaping the same names and commands again
// on every repaint would cost more than the rest of the row. A text too wide
// for its box is cut with "…" once, when it is first shaped for that width.
class PaintedTextCache {
public:
    // Draws `text` in `font` inside `box`, vertically centred, aligned left
    // or right (Qt::AlignRight) or centred (Qt::AlignHCenter). Returns the
    // width drawn.
    double draw(QPainter &painter, const QRectF &box, Qt::Alignment alignment, const QString &text,
                const QFont &font);
    void clear() { m_entries.clear(); }

private:
    struct Key {
        QString text;
        QFont font; // compared and hashed by its request, not its description text
        int width = 0;
        bool operator==(const Key &) const = default;
    };
    friend size_t qHash(const Key &key, size_t seed) noexcept
    {
        return qHashMulti(seed, key.text, key.font, key.width);
    }

    // Enough for every visible row of both lists many times over; past it
    // the cache starts afresh rather than grow with every text ever shown.
    static constexpr qsizetype kCapacity = 4096;
    QHash<Key, QStaticText> m_entries;
};
