#include "DiagnosisTesting.h"

#include "presentation/diagnosis/DiagnosisRoles.h"
#include "presentation/diagnosis/SourceList.h"
#include "presentation/diagnosis/SourceSearch.h"
#include "presentation/kit/DashboardWidgets.h"

#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace {

QStringList applicationsOf(const std::vector<const DashboardTask *> &tasks)
{
    QStringList names;
    for (const DashboardTask *task : tasks)
        names.append(task->application);
    return names;
}

QStringList rowKeys(const SourceListView *list)
{
    QStringList keys;
    for (const SourceListRow &row : list->sourceModel()->rows())
        keys.append(row.key);
    return keys;
}

// Three sources as the store publishes them: a test run whose worker sits
// three levels down, a development server, and a build.
class SourceSearch : public DiagnosisStoreTest {
protected:
    SourceSearch()
    {
        ingestTwice({madeUpProcess(100, 1, QStringLiteral("bash"), 0.5, QStringLiteral("bash"),
                                   QStringLiteral("kiln-api")),
                     madeUpProcess(110, 100, QStringLiteral("pytest"), 1,
                                   QStringLiteral("python3 -m pytest"), QStringLiteral("kiln-api")),
                     madeUpProcess(120, 110, QStringLiteral("python3"), 60,
                                   QStringLiteral("python3 -m pytest")),
                     madeUpProcess(121, 110, QStringLiteral("python3"), 1,
                                   QStringLiteral("python3 -m pytest")),
                     madeUpProcess(431, 121, QStringLiteral("sqlite-worker"), 1,
                                   QStringLiteral("sqlite-worker --token=[已隐藏]")),
                     madeUpProcess(200, 1, QStringLiteral("node"), 30, QStringLiteral("node vite"),
                                   QStringLiteral("dashboard-web")),
                     madeUpProcess(300, 1, QStringLiteral("clang++"), 20,
                                   QStringLiteral("clang++ -c thermal.cpp"))});
    }
};

TEST_F(SourceSearch, MatchesApplicationDetailThenAnyNodeTrimmedAndCaseInsensitive)
{
    const std::vector<DashboardTask> &all = store->allTasks();
    ASSERT_EQ(all.size(), 3u);
    const DashboardTask *tests = taskWithTarget(120);
    ASSERT_NE(tests, nullptr);
    const struct {
        QString query;
        QStringList expected; // applications, in the base list's order
    } cases[] = {
        {QString(), applicationsOf(filterSources(all, QString()))},
        {QStringLiteral(" \t\n "), applicationsOf(filterSources(all, QString()))},
        {QStringLiteral("  NODE \n"), {QStringLiteral("node")}},      // application
        {tests->detail.left(6), {tests->application}},                // detail
        {QStringLiteral("431"), {tests->application}},                // pid, 3 levels down
        {QStringLiteral("SQLITE-W"), {tests->application}},           // name, deep
        {QStringLiteral("thermal.cpp"), {QStringLiteral("clang++")}}, // command
        {QStringLiteral("Dashboard-Web"), {QStringLiteral("node")}},  // project
        {QStringLiteral("secret-token-value"), {}},                   // redacted away
        {QStringLiteral("no such thing"), {}},
    };
    for (const auto &test : cases) {
        EXPECT_EQ(applicationsOf(filterSources(all, test.query)), test.expected)
            << qPrintable(test.query);
    }
    // The order is the base list's, whatever matched first.
    const auto both = filterSources(all, QStringLiteral("-"));
    std::vector<const DashboardTask *> inOrder;
    for (const DashboardTask &task : all) {
        if (taskMatchesSourceQuery(task, QStringLiteral("-")))
            inOrder.push_back(&task);
    }
    EXPECT_EQ(both, inOrder);
}

TEST_F(SourceSearch, NoticeShowsOnlyForANonBlankQueryThatHidesThePublishedSelection)
{
    const std::vector<DashboardTask> &all = store->allTasks();
    const DashboardTask *selected = store->selectedTask();
    ASSERT_NE(selected, nullptr);
    DashboardTask unpublished = *selected;
    unpublished.id = QStringLiteral("gone");
    const QString other = selected->application == QLatin1String("node") ? QStringLiteral("clang")
                                                                         : QStringLiteral("node");
    const struct {
        QString query;
        const DashboardTask *selected;
        bool shown;
    } cases[] = {
        {QString(), selected, false},
        {QStringLiteral("   "), selected, false},
        {selected->application, selected, false},
        {other, selected, true},
        {other, nullptr, false},
    };
    for (const auto &test : cases) {
        const auto visible = filterSources(all, test.query);
        EXPECT_EQ(isSelectedSourceFilteredOut(test.query, test.selected, visible), test.shown)
            << qPrintable(test.query);
    }
}

TEST_F(SourceSearch, ClearingTheFilterBringsTheSelectedRowBack)
{
    LiveDiagnosisPage *page = openPage();
    ASSERT_NE(page, nullptr);
    page->setScope(ProcessListScope::all);
    const QString selectedID = store->selectedTaskID();
    auto *notice = find(QStringLiteral("selectedSourceFilteredNotice"));
    auto *search = find<QLineEdit>(QStringLiteral("processSearch"));
    ASSERT_TRUE(notice && search);
    EXPECT_FALSE(notice->isVisible());

    const QString other = store->selectedTask()->application == QLatin1String("node")
                              ? QStringLiteral("clang")
                              : QStringLiteral("node");
    QTest::keyClicks(search, other);
    EXPECT_TRUE(notice->isVisible());
    EXPECT_FALSE(rowKeys(page->sourceList()).contains(selectedID));
    // The workspace keeps showing the selection.
    EXPECT_EQ(store->selectedTaskID(), selectedID);

    QTest::mouseClick(find(QStringLiteral("clearSourceFilter")), Qt::LeftButton);
    EXPECT_TRUE(search->text().isEmpty());
    EXPECT_FALSE(notice->isVisible());
    EXPECT_TRUE(rowKeys(page->sourceList()).contains(selectedID));
}

TEST_F(SourceSearch, PressingARowSelectsItsSourceAndRowsReportItThroughTheirRoles)
{
    LiveDiagnosisPage *page = openPage();
    page->setScope(ProcessListScope::all);
    SourceListView *list = page->sourceList();
    const DashboardTask *build = taskWithTarget(300);
    ASSERT_NE(build, nullptr);
    const QString buildID = build->id;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->rowRect(buildID).center());
    EXPECT_EQ(store->selectedTaskID(), buildID);

    const QModelIndex index = list->sourceModel()->index(list->sourceModel()->rowOf(buildID));
    EXPECT_EQ(index.data(DiagnosisRole::identifier).toString(),
              QStringLiteral("taskRow-") + buildID);
    EXPECT_EQ(index.data(DiagnosisRole::accessibleValue).toString(), QStringLiteral("已选择"));
    EXPECT_EQ(index.data(Qt::AccessibleTextRole).toString(),
              QStringLiteral(
                  "负载来源 clang++，主要进程 clang++，PID 300，主要进程 CPU 20%，来源合计 20%"));
    for (int row = 0; row < list->sourceModel()->rowCount(); ++row) {
        if (row != index.row()) {
            EXPECT_EQ(list->sourceModel()->index(row).data(DiagnosisRole::accessibleValue),
                      QStringLiteral("未选择"));
        }
    }
}

TEST_F(SourceSearch, ScopeSwitchChangesHeadingCountsAndValuesAndKeepsItsLabelsColours)
{
    LiveDiagnosisPage *page = openPage();
    auto *attention = find(QStringLiteral("processListScope-attention"));
    auto *all = find(QStringLiteral("processListScope-all"));
    ASSERT_TRUE(attention && all);
    // The chosen scope is white on the accent colour: nothing darker than the accent.
    const int accent = QColor::fromRgb(DashboardPalette::accent).lightness();
    EXPECT_GE(darkestPixel(attention).lightness(), accent - 8);
    EXPECT_GE(darkestPixel(find(QStringLiteral("clearSourceFilter"))).lightness(), accent - 8);
    EXPECT_EQ(accessibleText(attention, QAccessible::Value), QStringLiteral("已选择"));
    EXPECT_EQ(accessibleText(all, QAccessible::Value), QStringLiteral("未选择"));
    QTest::mouseClick(all, Qt::LeftButton);
    EXPECT_EQ(page->scope(), ProcessListScope::all);
    EXPECT_EQ(accessibleText(all, QAccessible::Value), QStringLiteral("已选择"));
    for (const char *text :
         {"全部负载来源", "3 个来源 · 7 个进程", "按来源归组 · 覆盖 7 个当前用户进程"})
        EXPECT_TRUE(showsText(m_window.get(), QString::fromUtf8(text))) << text;
}

} // namespace
