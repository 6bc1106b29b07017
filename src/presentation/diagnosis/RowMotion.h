#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class QListView;
class QRect;
class QVariantAnimation;

// Animates a list's rows from where they were to where they are after the
// model moved them: each row that changed place is drawn shifted back by
// its old distance, and the shift runs out over 0.25 s on an ease-in-out
// curve; a new row fades in over the same time. The delegate asks for a row's
// shift and opacity while painting. Rows that leave simply go, and the rows
// below slide up into their place.
class RowMotion final : public QObject {
    Q_OBJECT

public:
    // Each step of the animation repaints the band each moving row sweeps
    // and each new row, not the whole of `view`.
    explicit RowMotion(QListView *view);

    // Before the model changes: where each key is now (row index).
    void capture(const QHash<QString, int> &rowsByKey);
    // After the change: starts the animation for the rows that moved or are
    // new, `pitch` pixels per row. Nothing moves when the list was empty
    // before (the first fill) or when nothing changed place.
    void start(const QHash<QString, int> &rowsByKey, double pitch);

    double offsetFor(const QString &key) const;  // pixels to add to the row's y
    double opacityFor(const QString &key) const; // 0..1
    bool isRunning() const;

private:
    // In the viewport's coordinates: every place a moving or new row is
    // drawn at during the animation.
    QRect sweptRect(const QString &key) const;
    void repaintSweptRows();

    QListView *m_view;
    QVariantAnimation *m_animation;
    QHash<QString, int> m_before;
    QHash<QString, int> m_after;
    QHash<QString, double> m_offsets; // pixels at the start
    QHash<QString, bool> m_entering;
    double m_progress = 1.0;
};
