// What a screen reader finds in the window and in the tray panel, walked
// through Qt's accessibility interfaces as an AT-SPI client walks them: every
// control has a name, every text field is a text, and the actions offered do
// what they say.

#include "presentation/PresentationTesting.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/AccessibleRows.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/report/ReportJson.h"
#include "presentation/report/ReportText.h"
#include "presentation/shell/DashboardWindow.h"
#include "presentation/tray/KilnWardenMenuBarLabel.h"
#include "presentation/tray/MenuBarPanelPopup.h"
#include "sampling/InterfaceLanguage.h"
#include "snapshot/DashboardSnapshot.h"
#include "snapshot/ScriptedStore.h"

#include <QApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

using namespace Qt::StringLiterals;

// Accessibility on while it lives, as a desktop with a screen reader has it
// from the start: widgets then make their interfaces as they are built.
struct AccessibilityOn {
    AccessibilityOn()
    {
        installDashboardAccessibility();
        QAccessible::setActive(true);
    }
    ~AccessibilityOn() { QAccessible::setActive(false); }
};

// The scripted window at full size, read from its start.
struct ScriptedWindow : AccessibilityOn {
    ScriptedWindow()
    {
        window.resize(1440, 900);
        window.show();
        settleEvents(20);
    }
    ScriptedStore scripted;
    DashboardWindow window{scripted.store(), DashboardSection::overview, [] {}};
};
constexpr const char *kSections[] = {"sidebar-overview", "sidebar-live-diagnosis",
                                     "sidebar-hardware-monitor", "sidebar-event-history",
                                     "settingsButton"};

struct Element {
    QAccessibleInterface *iface;
    QString path;
};

QString describe(QAccessibleInterface *iface)
{
    const QObject *object = iface->object();
    const QString id = object && !object->objectName().isEmpty() ? object->objectName()
                                                                 : iface->text(QAccessible::Name);
    return u"%1:%2"_s.arg(int(iface->role())).arg(id);
}

// The shown elements under `iface`, depth first.
std::vector<Element> walk(QAccessibleInterface *root)
{
    std::vector<Element> found;
    const std::function<void(QAccessibleInterface *, const QString &, int)> visit =
        [&](QAccessibleInterface *iface, const QString &path, int depth) {
            if (!iface || !iface->isValid() || iface->state().invisible || depth > 60)
                return;
            const QString here = path + u'/' + describe(iface);
            found.push_back({iface, here});
            for (int i = 0; i < iface->childCount(); ++i)
                visit(iface->child(i), here, depth + 1);
        };
    visit(root, QString(), 0);
    return found;
}

bool isInteractive(QAccessibleInterface *iface)
{
    using enum QAccessible::Role;
    static const QSet<QAccessible::Role> controls{Button,   CheckBox, RadioButton,  PageTab,
                                                  ListItem, TreeItem, EditableText, ComboBox,
                                                  Slider,   SpinBox};
    return controls.contains(iface->role()) || iface->editableTextInterface() != nullptr;
}

// Every control has a name; a label that shows a text is named by all of
// it, also where it is drawn cut short.
void expectNamed(const std::vector<Element> &elements)
{
    for (const Element &element : elements) {
        const QString name = element.iface->text(QAccessible::Name);
        if (isInteractive(element.iface)) {
            EXPECT_FALSE(name.isEmpty()) << element.path.toStdString();
        }
        if (auto *label = qobject_cast<TextLabel *>(element.iface->object());
            label && !label->fullText().isEmpty() && label->accessibleName().isEmpty()) {
            EXPECT_EQ(name, label->fullText()) << element.path.toStdString();
        }
    }
}

// The rows of the list or tree named `id`, as the reader finds them now.
std::vector<QAccessibleInterface *> rowsOf(QWidget *window, const QString &id)
{
    std::vector<QAccessibleInterface *> rows;
    QAccessibleInterface *list =
        QAccessible::queryAccessibleInterface(window->findChild<QWidget *>(id));
    for (int i = 0; list && i < list->childCount(); ++i)
        rows.push_back(list->child(i));
    return rows;
}

void press(QAccessibleInterface *iface)
{
    ASSERT_NE(iface, nullptr);
    ASSERT_FALSE(iface->state().invisible) << describe(iface).toStdString();
    ASSERT_NE(iface->actionInterface(), nullptr) << describe(iface).toStdString();
    const QStringList actions = iface->actionInterface()->actionNames();
    ASSERT_FALSE(actions.isEmpty()) << describe(iface).toStdString();
    iface->actionInterface()->doAction(actions.constFirst());
    settleEvents(0);
}

// Pressing an unselected row's action selects it.
void expectRowActionSelects(QWidget *window, const QString &list)
{
    SCOPED_TRACE(list.toStdString());
    const std::vector<QAccessibleInterface *> rows = rowsOf(window, list);
    ASSERT_GE(rows.size(), 2u);
    QAccessibleInterface *row = nullptr;
    for (QAccessibleInterface *candidate : rows) {
        if (!candidate->state().selected)
            row = candidate;
    }
    ASSERT_NE(row, nullptr);
    EXPECT_TRUE(row->state().selectable);
    const QString name = row->text(QAccessible::Name);
    EXPECT_EQ(row->actionInterface()->actionNames(),
              QStringList{QAccessibleActionInterface::pressAction()});
    press(row);
    int selected = 0;
    for (QAccessibleInterface *after : rowsOf(window, list)) {
        if (after->state().selected) {
            ++selected;
            EXPECT_EQ(after->text(QAccessible::Name), name);
        }
    }
    EXPECT_EQ(selected, 1);
}

TEST(AccessibleTree, EveryPageAndThePanelNameTheirControlsAndDoWhatTheySay)
{
    ScriptedWindow scripted;
    QWidget &window = scripted.window;
    for (const char *section : kSections) {
        SCOPED_TRACE(section);
        QAccessibleInterface *sidebarRow = accessibleElement(&window, QLatin1String(section));
        press(sidebarRow);
        EXPECT_TRUE(sidebarRow->state().selected);
        expectNamed(walk(QAccessible::queryAccessibleInterface(&window)));

        if (QLatin1String(section) == "sidebar-live-diagnosis"_L1) {
            QAccessibleInterface *search = accessibleElement(&window, u"processSearch"_s);
            ASSERT_NE(search, nullptr);
            EXPECT_NE(search->textInterface(), nullptr);
            EXPECT_NE(search->editableTextInterface(), nullptr);
            QAccessibleInterface *scope = accessibleElement(&window, u"processListScope-all"_s);
            ASSERT_NE(scope, nullptr);
            EXPECT_FALSE(scope->state().selected);
            press(scope);
            EXPECT_TRUE(scope->state().selected);
            expectRowActionSelects(&window, u"sourceList"_s);
            expectRowActionSelects(&window, u"processTree"_s);

            // A chevron opens and closes its rows.
            for (int round = 0; round < 2; ++round) {
                QAccessibleInterface *chevron = nullptr;
                for (QAccessibleInterface *row : rowsOf(&window, u"processTree"_s)) {
                    if (row->childCount() > 0)
                        chevron = row->child(0);
                }
                ASSERT_NE(chevron, nullptr);
                EXPECT_FALSE(chevron->text(QAccessible::Name).isEmpty());
                EXPECT_TRUE(chevron->state().expandable);
                const bool expanding = !chevron->state().expanded;
                EXPECT_EQ(chevron->actionInterface()->actionNames(),
                          QStringList{expanding ? expandAction() : collapseAction()});
                const std::size_t before = rowsOf(&window, u"processTree"_s).size();
                press(chevron);
                const std::size_t after = rowsOf(&window, u"processTree"_s).size();
                EXPECT_EQ(after > before, expanding) << before << " " << after;
                EXPECT_NE(after, before);
            }
        }
        if (QLatin1String(section) == "sidebar-hardware-monitor"_L1) {
            QAccessibleInterface *tab = accessibleElement(&window, u"hardware-tab-disk"_s);
            press(tab);
            EXPECT_TRUE(tab->state().selected);
        }
        if (QLatin1String(section) == "sidebar-event-history"_L1)
            expectRowActionSelects(&window, u"eventHistoryList"_s);
    }

    // The panel is a window of the application on the bus, with its two
    // buttons.
    MenuBarPanelPopup popup;
    popup.setPresentation(scripted.scripted.store().menuBarPresentation());
    popup.openAt(QRect(200, 10, 20, 20));
    settleEvents(0);
    QAccessibleInterface *application = QAccessible::queryAccessibleInterface(qApp);
    QAccessibleInterface *panelWindow = nullptr;
    for (int i = 0; i < application->childCount(); ++i) {
        if (application->child(i)->object() == &popup)
            panelWindow = application->child(i);
    }
    ASSERT_NE(panelWindow, nullptr);
    EXPECT_FALSE(panelWindow->text(QAccessible::Name).isEmpty());
    expectNamed(walk(panelWindow));
}

// Every text a reader sees or hears in the window or the panel now: widgets'
// texts and each element's name, description and value.
QStringList shownTexts(QWidget *root, QAccessibleInterface *tree)
{
    QStringList texts;
    for (const QWidget *widget : root->findChildren<QWidget *>()) {
        if (widget->isVisible())
            texts << widget->property("text").toString() << widget->toolTip();
    }
    for (const Element &element : walk(tree)) {
        for (QAccessible::Text kind :
             {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help})
            texts << element.iface->text(kind);
    }
    return texts;
}

// The names the script's processes, sources and projects go by: the one
// Chinese an English interface may show.
QStringList scriptedNames(const DashboardStore &store)
{
    QStringList names;
    const std::function<void(const DashboardProcessNode &)> addNode =
        [&](const DashboardProcessNode &node) {
            names << node.name << node.project.value_or(QString());
            for (const DashboardProcessNode &child : node.children)
                addNode(child);
        };
    for (const DashboardTask &task : store.allTasks()) {
        names << task.application << task.targetProcess.name;
        for (const DashboardProcessNode &node : task.processTree)
            addNode(node);
    }
    for (const DashboardIncident &incident : store.incidents())
        names << incident.application;
    for (const ProcessMetric &process : store.latestSystemSample()->processMetrics)
        names << process.name << process.applicationName
              << process.command.project.value_or(QString());
    names.removeAll(QString());
    // The longest first, so that a name inside another goes with it.
    std::sort(names.begin(), names.end(),
              [](const QString &a, const QString &b) { return a.size() > b.size(); });
    return names;
}

// In English, every page, the panel and the report are Chinese only in the
// names. A language is installed once per process and the other tests read the
// Chinese source, so this runs in a child of this program with an English
// session's environment.
TEST(AccessibleTree, InEnglishOnlyNamesStayChinese)
{
    if (!qEnvironmentVariableIsSet("KW_ENGLISH_WALK")) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANGUAGE"})
            environment.remove(QLatin1String(name));
        environment.insert(u"LANG"_s, u"en_US.UTF-8"_s);
        environment.insert(u"KW_ENGLISH_WALK"_s, u"1"_s);
        QProcess child;
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(),
                    {u"--gtest_filter=AccessibleTree.InEnglishOnlyNamesStayChinese"_s});
        ASSERT_TRUE(child.waitForFinished(-1));
        const QByteArray output = child.readAll();
        EXPECT_TRUE(child.exitCode() == 0 && output.contains("[  PASSED  ] 1 test"))
            << output.toStdString();
        return;
    }
    ASSERT_EQ(installInterfaceLanguage(), InterfaceLanguage::english);
    ScriptedWindow scripted;
    QWidget &window = scripted.window;
    QStringList texts;
    QAccessibleInterface *tree = QAccessible::queryAccessibleInterface(&window);
    for (const char *section : kSections) {
        press(accessibleElement(&window, QLatin1String(section)));
        texts << shownTexts(&window, tree);
        if (QLatin1String(section) != "sidebar-hardware-monitor"_L1)
            continue;
        for (const QWidget *tab : window.findChildren<QWidget *>()) {
            if (tab->objectName().startsWith("hardware-tab-"_L1)) {
                press(accessibleElement(&window, tab->objectName()));
                texts << shownTexts(&window, tree);
            }
        }
    }
    const DashboardStore &store = scripted.scripted.store();
    MenuBarPanelPopup popup;
    popup.setPresentation(store.menuBarPresentation());
    popup.openAt(QRect(200, 10, 20, 20));
    settleEvents(0);
    texts << shownTexts(&popup, QAccessible::queryAccessibleInterface(&popup))
          << menuBarLabelAccessibilityText(store.menuBarPresentation());
    texts << reportText(store, ScriptedStore::sampleCount)
          << QString::fromUtf8(compactJson(reportStateJson(store)))
          << QString::fromUtf8(compactJson(sampleJson(*store.latestSystemSample())));

    const QStringList names = scriptedNames(store);
    const QRegularExpression han(u"\\p{Han}"_s);
    QStringList left;
    for (QString text : texts) {
        for (const QString &name : names)
            text.replace(name, QString());
        if (text.contains(han) && !left.contains(text))
            left << text;
    }
    EXPECT_TRUE(left.isEmpty()) << left.join(u'\n').toStdString();
}

} // namespace
