// The incident list model updates by id: new incidents are rows inserted at
// the top, changes are dataChanged, removals are removals, never a reset; and
// its rows carry their identifier, label and value for accessibility.

#include "presentation/history/IncidentListModel.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

IncidentListRow row(const QString &title,
                    DashboardIncidentStatus status = DashboardIncidentStatus::observing)
{
    IncidentListRow result;
    result.id = QUuid::createUuid();
    result.startTime = QStringLiteral("14:30");
    result.title = title;
    result.application = QStringLiteral("cargo");
    result.peakSummary = QStringLiteral("80% · 80°");
    result.status = status;
    return result;
}

std::vector<QString> titles(const IncidentListModel &model)
{
    std::vector<QString> result;
    for (int index = 0; index < model.rowCount(); ++index)
        result.push_back(model.index(index).data(IncidentListModel::TitleRole).toString());
    return result;
}

using Titles = std::vector<QString>;

TEST(IncidentListModel, UpdatesByIdWithoutReset)
{
    IncidentListModel model;
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);

    const IncidentListRow a = row(QStringLiteral("a"));
    IncidentListRow b = row(QStringLiteral("b"));
    const IncidentListRow c = row(QStringLiteral("c"));
    model.setRows({b, a});
    EXPECT_EQ(titles(model), (Titles{"b", "a"}));
    ASSERT_EQ(inserted.count(), 1);

    // A tick that changes nothing announces nothing.
    model.setRows({b, a});
    EXPECT_EQ(inserted.count() + removed.count() + changed.count(), 1);

    // A newer incident goes in at the top; the open one changes its status.
    b.status = DashboardIncidentStatus::recoveredWithoutAction;
    model.setRows({c, b, a});
    EXPECT_EQ(titles(model), (Titles{"c", "b", "a"}));
    ASSERT_EQ(inserted.count(), 2);
    EXPECT_EQ(inserted.last().at(1).toInt(), 0);
    EXPECT_EQ(inserted.last().at(2).toInt(), 0);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.last().at(0).value<QModelIndex>().row(), 1);
    EXPECT_EQ(model.index(1).data(IncidentListModel::StatusLabelRole).toString(),
              QStringLiteral("已恢复"));

    // A filter that hides the middle one removes it alone.
    model.setRows({c, a});
    EXPECT_EQ(titles(model), (Titles{"c", "a"}));
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed.last().at(1).toInt(), 1);

    // An order that changed is a move; duplicates keep the first.
    model.setRows({a, c, a});
    EXPECT_EQ(titles(model), (Titles{"a", "c"}));
    EXPECT_EQ(moved.count(), 1);

    // Clearing is one removal of every row, not a removal per row.
    model.setRows({});
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(removed.count(), 2);
    EXPECT_EQ(resets.count(), 0);
}

TEST(IncidentListModel, RowsCarryIdentifierLabelAndSelectionValue)
{
    IncidentListModel model;
    const IncidentListRow first = row(QStringLiteral("温度持续升高"));
    const IncidentListRow second =
        row(QStringLiteral("持续高负载"), DashboardIncidentStatus::improved);
    model.setRows({first, second});
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);

    const QModelIndex top = model.index(0);
    EXPECT_EQ(top.data(IncidentListModel::IdentifierRole).toString(),
              QStringLiteral("incidentRow-") + first.id.toString(QUuid::WithoutBraces));
    EXPECT_EQ(top.data(Qt::AccessibleTextRole).toString(),
              QStringLiteral("14:30，温度持续升高，cargo，80% · 80°，进行中"));
    EXPECT_EQ(top.data(IncidentListModel::AccessibleValueRole).toString(), QString());

    model.setSelectedID(second.id);
    EXPECT_TRUE(model.index(1).data(IncidentListModel::SelectedRole).toBool());
    model.setSelectedID(first.id);
    EXPECT_FALSE(model.index(1).data(IncidentListModel::SelectedRole).toBool());
    EXPECT_TRUE(model.index(0).data(IncidentListModel::SelectedRole).toBool());
    EXPECT_EQ(changed.count(), 3); // the newly selected row, then both rows
    EXPECT_FALSE(model.index(5).data(IncidentListModel::TitleRole).isValid());
}

} // namespace
