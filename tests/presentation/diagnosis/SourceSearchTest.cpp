#include "DiagnosisTesting.h"

#include "presentation/diagnosis/SourceList.h"
#include "presentation/diagnosis/SourceSearch.h"

#include <QLineEdit>

namespace {

using namespace Qt::StringLiterals;

QStringList applicationsOf(const std::vector<const DashboardTask *> &tasks)
{
    QStringList names;
    for (const DashboardTask *task : tasks)
        names.append(task->application);
    return names;
}

// Three sources as the store publishes them: a test run whose worker sits
// three levels down, a development server, and a build.
class SourceSearch : public DiagnosisStoreTest {
protected:
    SourceSearch()
    {
        const QString pytest = u"python3 -m pytest"_s;
        ingestTwice(
            {madeUpProcess(100, 1, u"bash"_s, 0.5, u"bash"_s, u"kiln-api"_s),
             madeUpProcess(110, 100, u"pytest"_s, 1, pytest, u"kiln-api"_s),
             madeUpProcess(120, 110, u"python3"_s, 60, pytest),
             madeUpProcess(121, 110, u"python3"_s, 1, pytest),
             madeUpProcess(431, 121, u"sqlite-worker"_s, 1, u"sqlite-worker --token=[已隐藏]"_s),
             madeUpProcess(200, 1, u"node"_s, 30, u"node vite"_s, u"dashboard-web"_s),
             madeUpProcess(300, 1, u"clang++"_s, 20, u"clang++ -c thermal.cpp"_s)});
    }
    // An application that is not the selected source's.
    QString otherThanSelected() const
    {
        return store->selectedTask()->application == "node"_L1 ? u"clang"_s : u"node"_s;
    }
};

TEST_F(SourceSearch, MatchesAnyNodeTrimmedAndCaseInsensitiveAndNamesAHiddenSelection)
{
    const std::vector<const DashboardTask *> all = sourcesOf(store->allTasks());
    ASSERT_EQ(all.size(), 3u);
    const QStringList everything = applicationsOf(all); // whatever matched first
    const QString tests = taskWithTarget(120)->application;
    const struct {
        QString query;
        QStringList expected;
    } cases[] = {
        {QString(), everything},
        {u" \t\n "_s, everything},
        {u"-"_s, everything},
        {u"  NODE \n"_s, {u"node"_s}},                  // application
        {taskWithTarget(120)->detail.section(u" · "_s, 1), {tests}}, // detail alone
        {u"431"_s, {tests}},                            // a process 3 levels down
        {u"secret-token-value"_s, {}},                  // redacted away
        {u"no such thing"_s, {}},
    };
    for (const auto &test : cases) {
        EXPECT_EQ(applicationsOf(filterSources(all, test.query)), test.expected)
            << qPrintable(test.query);
    }

    // The notice: only a non-blank query that hides the published selection.
    const DashboardTask *selected = store->selectedTask();
    ASSERT_NE(selected, nullptr);
    DashboardTask unpublished = *selected;
    unpublished.id = u"gone"_s;
    const struct {
        QString query;
        const DashboardTask *selected;
        bool shown;
    } notices[] = {
        {QString(), selected, false},
        {u"   "_s, &unpublished, false},
        {selected->application, selected, false},
        {otherThanSelected(), selected, true},
        {otherThanSelected(), nullptr, false},
    };
    for (const auto &test : notices) {
        const auto visible = filterSources(all, test.query);
        EXPECT_EQ(isSelectedSourceFilteredOut(test.query, test.selected, visible), test.shown)
            << qPrintable(test.query);
    }
}

TEST_F(SourceSearch, ScopeAndFilterOnThePageAndAPressSelects)
{
    LiveDiagnosisPage *page = openPage();
    QTest::mouseClick(find(u"processListScope-all"_s), Qt::LeftButton);
    EXPECT_EQ(page->scope(), ProcessListScope::all);
    expectHeard(m_window.get(), {{u"processListScope-all"_s, {}, u"已选择"_s},
                                 {u"processListScope-attention"_s, {}, u"未选择"_s}});
    for (const QString &text :
         {u"全部负载来源"_s, u"3 个来源 · 7 个进程"_s, u"按来源归组 · 覆盖 7 个当前用户进程"_s})
        EXPECT_TRUE(showsText(m_window.get(), text)) << qPrintable(text);

    // A filter that hides the selection names it; clearing brings it back.
    const QString selectedID = store->selectedTaskID();
    auto *notice = find(u"selectedSourceFilteredNotice"_s);
    auto *search = find<QLineEdit>(u"processSearch"_s);
    const SourceListModel *model = page->sourceList()->sourceModel();
    EXPECT_FALSE(notice->isVisible());
    QTest::keyClicks(search, otherThanSelected());
    EXPECT_TRUE(notice->isVisible());
    EXPECT_LT(model->rowOf(selectedID), 0);
    EXPECT_EQ(store->selectedTaskID(), selectedID); // the workspace keeps showing it
    QTest::mouseClick(find(u"clearSourceFilter"_s), Qt::LeftButton);
    EXPECT_TRUE(search->text().isEmpty());
    EXPECT_FALSE(notice->isVisible());
    EXPECT_GE(model->rowOf(selectedID), 0);

    // Pressing a row selects its source; the rows report it.
    SourceListView *list = page->sourceList();
    const QString buildID = taskWithTarget(300)->id;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->rowRect(buildID).center());
    EXPECT_EQ(store->selectedTaskID(), buildID);
    expectHeard(m_window.get(),
                {{u"taskRow-"_s + buildID,
                  u"负载来源 clang++，主要进程 clang++，PID 300，主要进程 CPU 20%，来源合计 20%"_s,
                  u"已选择"_s},
                 {u"taskRow-"_s + selectedID, {}, u"未选择"_s}});
}

} // namespace
