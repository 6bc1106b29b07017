#include "presentation/settings/SettingsSwitch.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"

#include <QPainter>
#include <QPainterPath>

namespace {

// The small control size of a desktop switch.
constexpr double kTrackWidth = 32;
constexpr double kTrackHeight = 18;
constexpr double kKnobInset = 1.5;

} // namespace

SettingsSwitch::SettingsSwitch(QWidget *parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleRole(this, QAccessible::CheckBox);
    // `toggled` comes with every change of state, also when the answer to a
    // press arrives while the press is still being handled (when Qt holds
    // back checkStateSet).
    connect(this, &QAbstractButton::toggled, this, &SettingsSwitch::updateAccessibleValue);
    updateAccessibleValue();
}

QSize SettingsSwitch::sizeHint() const
{
    return {static_cast<int>(kTrackWidth) + 2, static_cast<int>(kTrackHeight) + 2};
}

QSize SettingsSwitch::minimumSizeHint() const
{
    return sizeHint();
}

void SettingsSwitch::nextCheckState()
{
    emit toggleRequested(!isChecked());
}

void SettingsSwitch::updateAccessibleValue()
{
    setAccessibleValue(this, isChecked() ? tr("已开启") : tr("已关闭"));
}

void SettingsSwitch::paintEvent(QPaintEvent *)
{
    using namespace DashboardPalette;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track(QRectF(rect()).center().x() - kTrackWidth / 2.0,
                       QRectF(rect()).center().y() - kTrackHeight / 2.0, kTrackWidth, kTrackHeight);
    const double radius = kTrackHeight / 2.0;
    QColor fill = isChecked() ? QColor::fromRgb(accent) : color(textPrimary, 0.16);
    if (isDown())
        fill = fill.darker(108);
    QPainterPath path;
    path.addRoundedRect(track, radius, radius);
    painter.fillPath(path, fill);

    const double knob = kTrackHeight - 2 * kKnobInset;
    const double knobX =
        isChecked() ? track.right() - kKnobInset - knob : track.left() + kKnobInset;
    const QRectF knobRect(knobX, track.top() + kKnobInset, knob, knob);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(textPrimary, 0.12));
    painter.drawEllipse(knobRect.translated(0, 0.5).adjusted(-0.5, -0.5, 0.5, 0.5));
    painter.setBrush(Qt::white);
    painter.drawEllipse(knobRect);

    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        painter.setPen(QPen(color(accent, 0.5), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(track.adjusted(-1, -1, 1, 1), radius + 1, radius + 1);
    }
}
