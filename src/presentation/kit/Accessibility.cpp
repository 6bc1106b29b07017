#include "presentation/kit/Accessibility.h"

#include "presentation/kit/AccessibleRows.h"
#include "presentation/kit/AccessibleSelection.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QLabel>
#include <QVariant>
#include <QWidget>

namespace {

const char kValueProperty[] = "kwAccessibleValue";
const char kRoleProperty[] = "kwAccessibleRole";
const char kHiddenProperty[] = "kwAccessibleHidden";
const char kOwnClassProperty[] = "kwAccessible";
const char kSelectedProperty[] = "kwAccessibleSelected";

// Qt's classes whose own interface carries more than a name: text and
// editing, a value range, a list's children. A widget of one of these keeps
// Qt's interface even when it has an identifier or a label from us (a search
// field must stay a text field to a screen reader).
constexpr const char *kQtRichClasses[] = {
    "QLineEdit",       "QAbstractScrollArea",
    "QAbstractSlider", "QAbstractSpinBox",
    "QComboBox",       "QTabBar",
    "QMenu",           "QMenuBar",
    "QProgressBar",    "QDialogButtonBox",
};

bool keepsQtInterface(const QObject *object)
{
    for (const char *name : kQtRichClasses) {
        if (object->inherits(name))
            return true;
    }
    return false;
}

class DashboardAccessibleWidget final : public QAccessibleWidget {
public:
    explicit DashboardAccessibleWidget(QWidget *widget) : QAccessibleWidget(widget, roleOf(widget))
    {
        if (qobject_cast<QAbstractButton *>(widget))
            addControllingSignal(QStringLiteral("clicked(bool)"));
    }

    QString text(QAccessible::Text which) const override
    {
        if (which == QAccessible::Value)
            return widget()->property(kValueProperty).toString();
        const QString text = QAccessibleWidget::text(which);
        // A label is named by its text (the whole text, also where it is
        // drawn cut short).
        if (which == QAccessible::Name && text.isEmpty()) {
            if (auto *label = qobject_cast<QLabel *>(widget()))
                return label->text();
        }
        return text;
    }

    QAccessible::State state() const override
    {
        QAccessible::State result = QAccessibleWidget::state();
        if (widget()->property(kHiddenProperty).toBool())
            result.invisible = true;
        const QVariant selected = widget()->property(kSelectedProperty);
        if (selected.isValid()) {
            result.selectable = true;
            result.selected = selected.toBool();
        }
        if (auto *button = qobject_cast<QAbstractButton *>(widget())) {
            result.checkable = button->isCheckable();
            result.checked = button->isChecked();
        }
        return result;
    }

    QStringList actionNames() const override
    {
        if (qobject_cast<QAbstractButton *>(widget()) || role() == QAccessible::Button)
            return {pressAction()};
        return QAccessibleWidget::actionNames();
    }

    void doAction(const QString &action) override
    {
        if (action == pressAction()) {
            if (auto *button = qobject_cast<QAbstractButton *>(widget())) {
                if (button->isEnabled())
                    button->click();
                return;
            }
        }
        QAccessibleWidget::doAction(action);
    }

private:
    static QAccessible::Role roleOf(QWidget *widget)
    {
        const QVariant role = widget->property(kRoleProperty);
        if (role.isValid())
            return static_cast<QAccessible::Role>(role.toInt());
        if (qobject_cast<QAbstractButton *>(widget))
            return QAccessible::Button;
        return QAccessible::Client;
    }
};

QAccessibleInterface *dashboardAccessibleFactory(const QString &, QObject *object)
{
    if (QAccessibleInterface *rows = accessibleRowList(object))
        return rows;
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget || !widget->property(kOwnClassProperty).toBool() || keepsQtInterface(widget))
        return nullptr;
    return new DashboardAccessibleWidget(widget);
}

void markOwnClass(QWidget *widget)
{
    widget->setProperty(kOwnClassProperty, true);
}

} // namespace

void installDashboardAccessibility()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    QAccessible::installFactory(dashboardAccessibleFactory);
}

void setAccessibility(QWidget *widget, const QString &identifier, const QString &label,
                      const QString &hint)
{
    if (!widget)
        return;
    markOwnClass(widget);
    if (!identifier.isEmpty())
        widget->setObjectName(identifier);
    if (!label.isEmpty())
        widget->setAccessibleName(label);
    if (!hint.isEmpty())
        widget->setAccessibleDescription(hint);
}

void setAccessibleRole(QWidget *widget, QAccessible::Role role)
{
    if (!widget)
        return;
    markOwnClass(widget);
    widget->setProperty(kRoleProperty, static_cast<int>(role));
}

void setAccessibleValue(QWidget *widget, const QString &value)
{
    if (!widget)
        return;
    markOwnClass(widget);
    if (widget->property(kValueProperty).toString() == value &&
        widget->property(kValueProperty).isValid())
        return;
    widget->setProperty(kValueProperty, value);
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(widget, value);
        QAccessible::updateAccessibility(&event);
    }
}

void setAccessibleSelected(QWidget *widget, bool selected)
{
    if (!widget)
        return;
    markOwnClass(widget);
    const QVariant before = widget->property(kSelectedProperty);
    if (before.isValid() && before.toBool() == selected)
        return;
    widget->setProperty(kSelectedProperty, selected);
    if (QAccessible::isActive()) {
        QAccessible::State changed;
        changed.selected = true;
        QAccessibleStateChangeEvent event(widget, changed);
        QAccessible::updateAccessibility(&event);
    }
}

void setAccessibilityHidden(QWidget *widget, bool hidden)
{
    if (!widget)
        return;
    markOwnClass(widget);
    widget->setProperty(kHiddenProperty, hidden);
}

QString accessibleText(QWidget *widget, QAccessible::Text which)
{
    if (!widget)
        return {};
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(widget);
    return iface ? iface->text(which) : QString();
}
