#pragma once

#include <Qt>

// What the rows of the source list and the process tree tell assistive
// technology and tests. Rows of a model/view list are not widgets, so their
// identifier, label, value and hint travel as model roles:
//
// - Qt::AccessibleTextRole: the row's accessibility label;
// - Qt::AccessibleDescriptionRole: its hint (tree rows);
// - identifier: "taskRow-<task id>", "processTree-node-<pid>";
// - accessibleValue: "已选择" or "未选择";
// - key: the task id or the process node id the row stands for;
// - selected: whether the row is the selected one (a bool, for the selected
//   state a screen reader reports);
// - toggleIdentifier, toggleLabel, toggleEnabled: the tree row's chevron,
//   "processTree-toggle-<pid>", "展开子进程"/"折叠子进程", and whether it
//   reacts (false, and the chevron invisible, for a node without children);
// - expanded: whether the tree row shows its children.
namespace DiagnosisRole {
enum : int {
    identifier = Qt::UserRole + 1,
    accessibleValue,
    key,
    toggleIdentifier,
    toggleLabel,
    toggleEnabled,
    selected,
    expanded,
};
} // namespace DiagnosisRole
