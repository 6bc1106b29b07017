// The one list model, from the rows a view shows before a tick and after it:
// the signals that take the view there, never a reset. "+1-2" inserts rows 1
// to 2, "-1-2" removes them, "m2>0" moves row 2 before row 0 and "~1-2"
// announces that rows 1 to 2 changed. A row is "key" or "key=value".

#include "presentation/kit/KeyedRowModel.h"

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

std::vector<Row> rowsOf(const char *text)
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
    const struct {
        const char *before, *after, *expected;
    } cases[] = {
        {"", "a b c", "+0-2"},
        {"a b c", "a b c", ""},
        {"a b c", "a b=1 c=1", "~1-2"},
        {"a b c d", "a=1 b=1 c d=1", "~0-1 ~3-3"},
        {"a b c d e", "a e", "-1-3"},
        {"a b c d e", "b d", "-4-4 -2-2 -0-0"},
        {"a b c d e", "", "-0-4"},
        {"b c", "a b c", "+0-0"},
        {"a b", "a x y b", "+1-2"},
        {"a b", "a b x y", "+2-3"},
        {"a b c", "c a b", "m2>0"},
        {"a b c", "d c a=1", "-1-1 +0-0 m2>1 ~2-2"},
        // A key listed twice pairs up in order.
        {"p=1 p=2", "p=1", "-1-1"},
        {"p q", "p q p", "+2-2"},
        {"p=1 p=2 q", "p=1 q p=2", "m2>1"},
    };
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &message) {
        modelTestWarnings.append(message);
    });
    for (const auto &test : cases) {
        SCOPED_TRACE(std::string(test.before) + " -> " + test.after);
        Model model;
        model.setRows(rowsOf(test.before));
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

        model.setRows(rowsOf(test.after));
        EXPECT_EQ(heard.join(u' ').toStdString(), test.expected);
        EXPECT_EQ(model.rows(), rowsOf(test.after));
        EXPECT_TRUE(modelTestWarnings.isEmpty()) << modelTestWarnings.join(u'\n').toStdString();
    }
    qInstallMessageHandler(nullptr);
}

} // namespace
