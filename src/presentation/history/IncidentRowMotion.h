#pragma once

#include <QObject>
#include <QUuid>

class QVariantAnimation;
class QWidget;

// The event list's two motions, both started by the user and idle otherwise
// (no timer runs while nothing changes): a newly selected row's background
// eases in, and the one it replaces eases out, over 0.14 s; a pressed row
// eases towards its pressed look over 0.08 s, and back when released. The
// row delegate reads the current values while painting.
class IncidentRowMotion final : public QObject {
    Q_OBJECT

public:
    static constexpr int selectionMilliseconds = 140;
    static constexpr int pressMilliseconds = 80;

    // `viewport` is repainted on each step.
    explicit IncidentRowMotion(QWidget *viewport);

    void selectionChanged(const QUuid &from, const QUuid &to);
    void pressed(const QUuid &id);
    void released();

    // How much of the selection background the row shows, 0..1.
    double selectionOpacity(const QUuid &id, bool selected) const;
    // How far the row has gone into its pressed look, 0..1.
    double pressProgress(const QUuid &id) const;
    bool isRunning() const;

private:
    QWidget *m_viewport;
    QVariantAnimation *m_selection;
    QVariantAnimation *m_press;
    QUuid m_selectedFrom;
    QUuid m_selectedTo;
    QUuid m_pressed;
};
