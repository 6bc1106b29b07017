#include "presentation/diagnosis/RowMotion.h"

#include <QEasingCurve>
#include <QListView>
#include <QRegion>
#include <QVariantAnimation>

#include <cmath>

namespace {

// The platform's standard ease-in-out: a cubic Bézier through (0.42, 0) and
// (0.58, 1).
QEasingCurve easeInOut()
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment(QPointF(0.42, 0.0), QPointF(0.58, 1.0), QPointF(1.0, 1.0));
    return curve;
}

} // namespace

RowMotion::RowMotion(QListView *view)
    : QObject(view), m_view(view), m_animation(new QVariantAnimation(this))
{
    m_animation->setDuration(250);
    m_animation->setStartValue(0.0);
    m_animation->setEndValue(1.0);
    m_animation->setEasingCurve(easeInOut());
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        m_progress = value.toDouble();
        repaintSweptRows();
    });
    connect(m_animation, &QVariantAnimation::finished, this, [this] {
        m_progress = 1.0;
        repaintSweptRows();
        m_offsets.clear();
        m_entering.clear();
    });
}

QRect RowMotion::sweptRect(const QString &key) const
{
    const auto row = m_after.constFind(key);
    if (row == m_after.constEnd())
        return {};
    const QRect rect = m_view->visualRect(m_view->model()->index(row.value(), 0));
    // The curve never overshoots: a row is drawn between its start and its place.
    const int shift = static_cast<int>(std::ceil(std::abs(m_offsets.value(key))));
    const int startTop = m_offsets.value(key) < 0 ? rect.top() - shift : rect.top();
    return QRect(rect.left(), startTop, rect.width(), rect.height() + shift);
}

void RowMotion::repaintSweptRows()
{
    QRegion swept;
    for (auto it = m_offsets.constBegin(); it != m_offsets.constEnd(); ++it)
        swept += sweptRect(it.key());
    for (auto it = m_entering.constBegin(); it != m_entering.constEnd(); ++it)
        swept += sweptRect(it.key());
    m_view->viewport()->update(swept);
}

void RowMotion::capture(const QHash<QString, int> &rowsByKey)
{
    m_before = rowsByKey;
}

void RowMotion::start(const QHash<QString, int> &rowsByKey, double pitch)
{
    if (m_before.isEmpty())
        return;
    QHash<QString, double> offsets;
    QHash<QString, bool> entering;
    for (auto it = rowsByKey.begin(); it != rowsByKey.end(); ++it) {
        const auto before = m_before.constFind(it.key());
        if (before == m_before.constEnd()) {
            entering.insert(it.key(), true);
            continue;
        }
        // A row still moving keeps going from where it is drawn now.
        const double drawnShift = offsetFor(it.key());
        const double shift = (before.value() - it.value()) * pitch + drawnShift;
        if (shift != 0.0)
            offsets.insert(it.key(), shift);
    }
    m_before.clear();
    if (offsets.isEmpty() && entering.isEmpty())
        return;
    m_after = rowsByKey;
    m_offsets = std::move(offsets);
    m_entering = std::move(entering);
    m_progress = 0.0;
    m_animation->stop();
    m_animation->start();
}

double RowMotion::offsetFor(const QString &key) const
{
    const auto found = m_offsets.constFind(key);
    return found == m_offsets.constEnd() ? 0.0 : found.value() * (1.0 - m_progress);
}

double RowMotion::opacityFor(const QString &key) const
{
    return m_entering.contains(key) ? m_progress : 1.0;
}

bool RowMotion::isRunning() const
{
    return m_animation->state() == QAbstractAnimation::Running;
}
