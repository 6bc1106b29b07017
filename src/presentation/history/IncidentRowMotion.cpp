#include "presentation/history/IncidentRowMotion.h"

#include <QVariantAnimation>
#include <QWidget>

namespace {

QVariantAnimation *easeOut(int milliseconds, QWidget *viewport, QObject *parent)
{
    auto *animation = new QVariantAnimation(parent);
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    animation->setDuration(milliseconds);
    animation->setEasingCurve(QEasingCurve::OutCubic);
    QObject::connect(animation, &QVariantAnimation::valueChanged, viewport,
                     [viewport] { viewport->update(); });
    return animation;
}

double progressOf(const QVariantAnimation *animation)
{
    if (animation->state() != QAbstractAnimation::Running)
        return animation->direction() == QAbstractAnimation::Forward ? 1.0 : 0.0;
    return animation->currentValue().toDouble();
}

} // namespace

IncidentRowMotion::IncidentRowMotion(QWidget *viewport)
    : QObject(viewport), m_viewport(viewport),
      m_selection(easeOut(selectionMilliseconds, viewport, this)),
      m_press(easeOut(pressMilliseconds, viewport, this))
{
    m_press->setDirection(QAbstractAnimation::Backward);
}

void IncidentRowMotion::selectionChanged(const QUuid &from, const QUuid &to)
{
    m_selectedFrom = from;
    m_selectedTo = to;
    m_selection->stop();
    m_selection->start();
}

void IncidentRowMotion::pressed(const QUuid &id)
{
    m_pressed = id;
    m_press->stop();
    m_press->setDirection(QAbstractAnimation::Forward);
    m_press->start();
}

void IncidentRowMotion::released()
{
    if (m_pressed.isNull())
        return;
    // Back from wherever the press had got to.
    const double reached = progressOf(m_press);
    m_press->stop();
    m_press->setDirection(QAbstractAnimation::Backward);
    m_press->start(); // a start from stopped begins at the end; move to the point reached
    m_press->setCurrentTime(static_cast<int>(reached * pressMilliseconds));
}

double IncidentRowMotion::selectionOpacity(const QUuid &id, bool selected) const
{
    if (m_selection->state() != QAbstractAnimation::Running)
        return selected ? 1.0 : 0.0;
    const double progress = m_selection->currentValue().toDouble();
    if (selected && id == m_selectedTo)
        return progress;
    if (!selected && id == m_selectedFrom)
        return 1.0 - progress;
    return selected ? 1.0 : 0.0;
}

double IncidentRowMotion::pressProgress(const QUuid &id) const
{
    if (id.isNull() || id != m_pressed)
        return 0.0;
    return progressOf(m_press);
}

bool IncidentRowMotion::isRunning() const
{
    return m_selection->state() == QAbstractAnimation::Running ||
           m_press->state() == QAbstractAnimation::Running;
}
