#pragma once

#include <QAccessible>
#include <QString>

class QWidget;

// What a screen reader hears of a widget: its identifier is the objectName,
// its label the accessible name, its hint the accessible description, and its
// value (for the widgets that have one: "已选择", "可结束", ...) is reported
// through Qt's accessibility interface as QAccessible::Value.
//
// Install the interface factory once per application (the program and the
// test programs do it at start). A widget can carry a value when its class is
// one of the program's own Q_OBJECT classes (Qt's own widgets keep Qt's
// interfaces).
void installDashboardAccessibility();

// Sets the identifier, label and hint; an empty label or hint leaves it unset.
void setAccessibility(QWidget *widget, const QString &identifier, const QString &label = {},
                      const QString &hint = {});
// Sets the role reported (e.g. QAccessible::Button for a pressable box).
void setAccessibleRole(QWidget *widget, QAccessible::Role role);
// Sets the value and tells assistive technology that it changed.
void setAccessibleValue(QWidget *widget, const QString &value);
// Marks a widget and all its children as one element (their texts are not
// announced separately) or hides a decorative widget from accessibility.
void setAccessibilityHidden(QWidget *widget, bool hidden = true);

// Reads back what assistive technology sees (tests use these, as a screen
// reader would).
QString accessibleText(QWidget *widget, QAccessible::Text which);
