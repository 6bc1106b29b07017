#include "presentation/kit/AccessibleRows.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QPointer>

#include <vector>

namespace {

// Holds a view's rows description and the interfaces of its rows. Row
// interfaces stand for a row number; a change of the rows' order or number
// drops them, and assistive technology asks for new ones.
class RowsBinding final : public QObject {
public:
    RowsBinding(QAbstractItemView *view, AccessibleRows rows)
        : QObject(view), m_view(view), m_rows(std::move(rows))
    {
        setObjectName(QStringLiteral("kwAccessibleRows"));
        QAbstractItemModel *model = view->model();
        if (!model)
            return;
        for (auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
            connect(model, signal, this, &RowsBinding::forget);
        connect(model, &QAbstractItemModel::rowsMoved, this, &RowsBinding::forget);
        connect(model, &QAbstractItemModel::modelReset, this, &RowsBinding::forget);
        connect(model, &QAbstractItemModel::layoutChanged, this, &RowsBinding::forget);
    }

    ~RowsBinding() override { forget(); }

    QAbstractItemView *view() const { return m_view; }
    const AccessibleRows &rows() const { return m_rows; }
    QAccessibleInterface *row(int index);
    int rowOf(const QAccessibleInterface *row) const;

private:
    void forget()
    {
        for (QAccessible::Id id : m_ids) {
            if (id)
                QAccessible::deleteAccessibleInterface(id);
        }
        m_ids.clear();
    }

    QAbstractItemView *m_view;
    AccessibleRows m_rows;
    std::vector<QAccessible::Id> m_ids;
};

RowsBinding *bindingOf(QObject *object)
{
    return object ? object->findChild<RowsBinding *>(QStringLiteral("kwAccessibleRows"),
                                                     Qt::FindDirectChildrenOnly)
                  : nullptr;
}

bool readFlag(const QModelIndex &index, int role)
{
    return role >= 0 && index.data(role).toBool();
}

QRect toGlobal(const QAbstractItemView *view, const QRect &rect)
{
    return QRect(view->viewport()->mapToGlobal(rect.topLeft()), rect.size());
}

class AccessibleRowToggle final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleRowToggle(RowsBinding *binding, QAccessibleInterface *row, int rowNumber)
        : m_binding(binding), m_row(row), m_rowNumber(rowNumber)
    {
    }

    bool isValid() const override { return m_binding && index().isValid(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_row->window(); }
    QAccessibleInterface *parent() const override { return m_row; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *focusChild() const override { return nullptr; }
    void setText(QAccessible::Text, const QString &) override {}
    QAccessible::Role role() const override { return QAccessible::Button; }

    QString text(QAccessible::Text which) const override
    {
        const int role = m_binding->rows().toggleLabelRole;
        return which == QAccessible::Name && role >= 0 ? index().data(role).toString() : QString();
    }

    QRect rect() const override
    {
        const QAbstractItemView *view = m_binding->view();
        const QRect row = view->visualRect(index());
        const auto &rows = m_binding->rows();
        return toGlobal(view, rows.toggleRect ? rows.toggleRect(index(), row) : row);
    }

    QAccessible::State state() const override
    {
        QAccessible::State result;
        result.expandable = true;
        result.expanded = expanded();
        result.collapsed = !result.expanded;
        return result;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface
                   ? static_cast<QAccessibleActionInterface *>(this)
                   : nullptr;
    }

    QStringList actionNames() const override
    {
        return {expanded() ? collapseAction() : expandAction()};
    }

    void doAction(const QString &action) override
    {
        if (action == actionNames().constFirst() && m_binding->rows().toggle)
            m_binding->rows().toggle(index());
    }

    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QModelIndex index() const
    {
        const QAbstractItemView *view = m_binding->view();
        return view->model()->index(m_rowNumber, 0, view->rootIndex());
    }

    bool expanded() const { return readFlag(index(), m_binding->rows().expandedRole); }

    QPointer<RowsBinding> m_binding;
    QAccessibleInterface *m_row;
    int m_rowNumber;
};

class AccessibleRow final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleRow(RowsBinding *binding, int rowNumber) : m_binding(binding), m_rowNumber(rowNumber)
    {
    }

    ~AccessibleRow() override
    {
        if (m_toggleID)
            QAccessible::deleteAccessibleInterface(m_toggleID);
    }

    int rowNumber() const { return m_rowNumber; }

    bool isValid() const override { return m_binding && index().isValid(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override
    {
        const QWidget *top = m_binding ? m_binding->view()->window() : nullptr;
        return top ? top->windowHandle() : nullptr;
    }
    QAccessibleInterface *parent() const override
    {
        return m_binding ? QAccessible::queryAccessibleInterface(m_binding->view()) : nullptr;
    }

    int childCount() const override { return expandable() ? 1 : 0; }

    QAccessibleInterface *child(int which) const override
    {
        if (which != 0 || !expandable())
            return nullptr;
        if (!m_toggleID) {
            auto *toggle =
                new AccessibleRowToggle(m_binding, const_cast<AccessibleRow *>(this), m_rowNumber);
            m_toggleID = QAccessible::registerAccessibleInterface(toggle);
        }
        return QAccessible::accessibleInterface(m_toggleID);
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return m_toggleID && child == QAccessible::accessibleInterface(m_toggleID) ? 0 : -1;
    }

    QAccessibleInterface *childAt(int x, int y) const override
    {
        QAccessibleInterface *toggle = child(0);
        return toggle && toggle->rect().contains(x, y) ? toggle : nullptr;
    }

    QAccessibleInterface *focusChild() const override { return nullptr; }
    void setText(QAccessible::Text, const QString &) override {}

    QAccessible::Role role() const override
    {
        return m_binding->rows().expandableRole >= 0 ? QAccessible::TreeItem
                                                     : QAccessible::ListItem;
    }

    QString text(QAccessible::Text which) const override
    {
        switch (which) {
        case QAccessible::Name:
            return index().data(Qt::AccessibleTextRole).toString();
        case QAccessible::Description:
            return index().data(Qt::AccessibleDescriptionRole).toString();
        case QAccessible::Value: {
            const int role = m_binding->rows().valueRole;
            return role >= 0 ? index().data(role).toString() : QString();
        }
        default:
            return {};
        }
    }

    QRect rect() const override
    {
        return toGlobal(m_binding->view(), m_binding->view()->visualRect(index()));
    }

    QAccessible::State state() const override
    {
        const QAbstractItemView *view = m_binding->view();
        const QModelIndex at = index();
        QAccessible::State result;
        result.selectable = true;
        result.selected = readFlag(at, m_binding->rows().selectedRole);
        result.focusable = true;
        result.focused = view->hasFocus() && view->currentIndex() == at;
        result.invisible =
            !view->isVisible() || !view->viewport()->rect().intersects(view->visualRect(at));
        if (expandable()) {
            result.expandable = true;
            result.expanded = readFlag(at, m_binding->rows().expandedRole);
            result.collapsed = !result.expanded;
        }
        return result;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface
                   ? static_cast<QAccessibleActionInterface *>(this)
                   : nullptr;
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString &action) override
    {
        if (action == pressAction() && m_binding->rows().select)
            m_binding->rows().select(index());
    }

    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QModelIndex index() const
    {
        if (!m_binding)
            return {};
        const QAbstractItemView *view = m_binding->view();
        return view->model()->index(m_rowNumber, 0, view->rootIndex());
    }

    bool expandable() const { return readFlag(index(), m_binding->rows().expandableRole); }

    QPointer<RowsBinding> m_binding;
    int m_rowNumber;
    mutable QAccessible::Id m_toggleID = 0;
};

QAccessibleInterface *RowsBinding::row(int index)
{
    if (index < 0 || !m_view->model() || index >= m_view->model()->rowCount(m_view->rootIndex()))
        return nullptr;
    if (m_ids.size() <= static_cast<std::size_t>(index))
        m_ids.resize(static_cast<std::size_t>(index) + 1, 0);
    QAccessible::Id &id = m_ids[static_cast<std::size_t>(index)];
    if (!id)
        id = QAccessible::registerAccessibleInterface(new AccessibleRow(this, index));
    return QAccessible::accessibleInterface(id);
}

int RowsBinding::rowOf(const QAccessibleInterface *row) const
{
    for (std::size_t i = 0; i < m_ids.size(); ++i) {
        if (m_ids[i] && QAccessible::accessibleInterface(m_ids[i]) == row)
            return static_cast<int>(i);
    }
    return -1;
}

class AccessibleRowList final : public QAccessibleWidget {
public:
    AccessibleRowList(QAbstractItemView *view, RowsBinding *binding)
        : QAccessibleWidget(view, binding->rows().expandableRole >= 0 ? QAccessible::Tree
                                                                      : QAccessible::List),
          m_binding(binding)
    {
    }

    int childCount() const override
    {
        const QAbstractItemView *view = m_binding ? m_binding->view() : nullptr;
        return view && view->model() ? view->model()->rowCount(view->rootIndex()) : 0;
    }

    QAccessibleInterface *child(int index) const override
    {
        return m_binding ? m_binding->row(index) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return m_binding ? m_binding->rowOf(child) : -1;
    }

    QAccessibleInterface *childAt(int x, int y) const override
    {
        if (!m_binding)
            return nullptr;
        const QAbstractItemView *view = m_binding->view();
        const QModelIndex at = view->indexAt(view->viewport()->mapFromGlobal(QPoint(x, y)));
        return at.isValid() ? m_binding->row(at.row()) : nullptr;
    }

    QAccessibleInterface *focusChild() const override
    {
        if (!m_binding || !m_binding->view()->hasFocus())
            return nullptr;
        const QModelIndex current = m_binding->view()->currentIndex();
        return current.isValid() ? m_binding->row(current.row()) : nullptr;
    }

private:
    QPointer<RowsBinding> m_binding;
};

} // namespace

void setAccessibleRows(QAbstractItemView *view, AccessibleRows rows)
{
    if (!view || bindingOf(view))
        return;
    new RowsBinding(view, std::move(rows));
    // Setting the view's name or model has already made and cached Qt's table
    // interface for it (Qt resolves the interface of every accessibility
    // event, also with no screen reader listening): drop that one, so that the
    // next query makes ours.
    QAccessibleInterface *existing = QAccessible::queryAccessibleInterface(view);
    if (existing && !dynamic_cast<AccessibleRowList *>(existing))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(existing));
}

QAccessibleInterface *accessibleRowList(QObject *object)
{
    auto *view = qobject_cast<QAbstractItemView *>(object);
    RowsBinding *binding = bindingOf(view);
    return binding ? new AccessibleRowList(view, binding) : nullptr;
}

QString expandAction()
{
    return QStringLiteral("expand");
}

QString collapseAction()
{
    return QStringLiteral("collapse");
}
