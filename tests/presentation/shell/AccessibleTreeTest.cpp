// What a screen reader finds in the window and in the tray panel, walked
// through Qt's accessibility interfaces as an AT-SPI client walks them: every
// control has a name, every text field is a text, and the actions offered do
// what they say.

#include "presentation/PresentationTesting.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/AccessibleRows.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/shell/DashboardWindow.h"
#include "presentation/tray/MenuBarPanelPopup.h"
#include "snapshot/DashboardSnapshot.h"
#include "snapshot/ScriptedStore.h"

#include <QApplication>
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
    AccessibilityOn() { QAccessible::setActive(true); }
    ~AccessibilityOn() { QAccessible::setActive(false); }
};

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
    installDashboardAccessibility();
    const AccessibilityOn on;
    ScriptedStore scripted;
    DashboardWindow window(scripted.store(), DashboardSection::overview, [] {});
    window.resize(1440, 900);
    window.show();
    settleEvents(20);

    for (const char *section :
         {"sidebar-overview", "sidebar-live-diagnosis", "sidebar-hardware-monitor",
          "sidebar-event-history", "settingsButton"}) {
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
    popup.setPresentation(scripted.store().menuBarPresentation());
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

} // namespace
