#pragma once

class QWidget;

// Makes a widget report itself selectable, and selected or not (a tab, a
// scope, a sidebar row, a filter), and tells assistive technology when that
// changes. The widget's accessible value keeps saying it in words.
void setAccessibleSelected(QWidget *widget, bool selected);
