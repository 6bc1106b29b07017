// The one list model, from the rows a view shows before a tick and after it
// (the table keyed-row-diffs): the signals that take the view there.

#include "presentation/kit/KeyedRowModel.h"
#include "support/FixtureTable.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

namespace {

struct Row {
    QString key;
    int value = 0;
    QString accessibleLabel;
    bool isSelected = false;
    bool operator==(const Row &) const = default;
    QString identifier() const { return key; }
};
using Model = KeyedRowModel<Row>;

std::vector<Row> rowsOf(const QByteArray &text)
{
    std::vector<Row> rows;
    for (const QString &token : QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts)) {
        const QStringList parts = token.split(u'=');
        rows.push_back({parts[0], parts.size() > 1 ? parts[1].toInt() : 0});
    }
    return rows;
}

QStringList modelTestWarnings;

TEST(KeyedRowModel, EachTickIsTheFewestRunsOfInsertsRemovalsMovesAndChanges)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &message) {
        modelTestWarnings.append(message);
    });
    for (const FixtureRow &row : fixtureTable(QStringLiteral("keyed-row-diffs"))) {
        SCOPED_TRACE(row.where);
        Model model;
        model.setRows(rowsOf(row.fields[0]));
        QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::Warning);
        QStringList heard;
        const auto record = [&](const char *kind) {
            return [&heard, kind](const QModelIndex &, int first, int last) {
                heard.append(
                    QStringLiteral("%1%2-%3").arg(QLatin1String(kind)).arg(first).arg(last));
            };
        };
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, record("+"));
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, record("-"));
        QObject::connect(&model, &QAbstractItemModel::rowsMoved,
                         [&](const QModelIndex &, int first, int, const QModelIndex &, int to) {
                             heard.append(QStringLiteral("m%1>%2").arg(first).arg(to));
                         });
        QObject::connect(&model, &QAbstractItemModel::dataChanged,
                         [&](const QModelIndex &top, const QModelIndex &bottom) {
                             heard.append(
                                 QStringLiteral("~%1-%2").arg(top.row()).arg(bottom.row()));
                         });
        QObject::connect(&model, &QAbstractItemModel::modelReset,
                         [&] { heard.append(QStringLiteral("reset")); });
        modelTestWarnings.clear();

        model.setRows(rowsOf(row.fields[1]));
        EXPECT_EQ(heard.join(u' ').toUtf8(), row.fields[2]);
        EXPECT_EQ(model.rows(), rowsOf(row.fields[1]));
        EXPECT_TRUE(modelTestWarnings.isEmpty()) << modelTestWarnings.join(u'\n').toStdString();
    }
    qInstallMessageHandler(nullptr);
}

} // namespace
