#include "presentation/diagnosis/ProcessTree.h"

#include "presentation/diagnosis/DiagnosisTexts.h"
#include "presentation/kit/AccessibleRows.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/SystemSymbols.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProcessTree)
};

// The name column keeps at least this much room: past it, deeper levels stop
// indenting further, so a very deep tree still reads instead of being pushed
// out of its column.
constexpr int kMinimumNameWidth = 120;

int indentOf(int depth, int rowWidth)
{
    const int available = rowWidth - ProcessTreeColumns::trailing -
                          ProcessTreeColumns::toggleWidth - kMinimumNameWidth;
    return std::clamp(depth * ProcessTreeColumns::indentStep, 0, std::max(0, available));
}

} // namespace

ProcessTreeRow ProcessTreeRow::of(const VisibleProcessRow &row, bool isExpanded, bool isSelected)
{
    const DashboardProcessNode &node = *row.node;
    ProcessTreeRow result;
    result.key = node.id;
    result.name = node.name;
    result.pid = node.pid;
    result.depth = row.depth;
    result.hasChildren = !node.children.empty();
    result.isExpanded = isExpanded;
    result.isTarget = node.isTarget;
    result.badge = processNodeBadge(node, row.depth);
    result.roleLabel = node.roleLabel();
    result.detail = processNodeDetailLine(node, result.roleLabel);
    result.cpu = wholePercentText(node.cpu);
    result.memory = node.memory;
    result.disk = node.disk;
    result.impact = node.energyImpact;
    result.isSelected = isSelected;
    result.accessibleLabel = processNodeAccessibleLabel(node, result.roleLabel);
    return result;
}

QVariant ProcessTreeModel::rowData(const ProcessTreeRow &row, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return row.name;
    case Qt::ToolTipRole:
        return row.accessibleLabel;
    case Qt::AccessibleDescriptionRole:
        return Words::tr("选择后可查看该进程详情和可用操作");
    case RowRole::expanded:
        return row.isExpanded;
    case RowRole::toggleIdentifier:
        return QStringLiteral("processTree-toggle-%1").arg(row.pid);
    case RowRole::toggleLabel:
        return processToggleAccessibleLabel(row.isExpanded);
    case RowRole::toggleEnabled:
        return row.hasChildren;
    default:
        return {};
    }
}

QRect ProcessTreeDelegate::toggleRect(const QRect &rowRect, int depth)
{
    const int height = ProcessTreeColumns::rowHeight;
    return {rowRect.left() + indentOf(depth, rowRect.width()), rowRect.top() + (height - 28) / 2,
            ProcessTreeColumns::toggleWidth, 28};
}

QSize ProcessTreeDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {0, ProcessTreeColumns::rowHeight + ProcessTreeColumns::rowGap};
}

void ProcessTreeDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const
{
    const auto *model = static_cast<const ProcessTreeModel *>(index.model());
    const ProcessTreeRow &row = model->rowAt(index.row());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect box(option.rect.x(), option.rect.y(), option.rect.width(),
                    ProcessTreeColumns::rowHeight);
    if (row.isSelected) {
        QPainterPath path;
        path.addRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
        painter->fillPath(path, DashboardPalette::color(DashboardPalette::accentBackground, 0.55));
        painter->setPen(QPen(DashboardPalette::color(DashboardPalette::accent, 0.75), 1));
        painter->drawPath(path);
    } else if (option.state.testFlag(QStyle::State_HasFocus)) {
        painter->setPen(QPen(DashboardPalette::color(DashboardPalette::accent, 0.35), 1));
        painter->drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
    }

    const QRect toggle = toggleRect(box, row.depth);
    if (row.hasChildren) {
        const double glyph = dashboardScaledFontSize(9, m_layout.typographyScale);
        const QRectF glyphBox(toggle.center().x() - glyph / 2 + 0.5,
                              toggle.center().y() - glyph / 2 + 0.5, glyph, glyph);
        paintSystemSymbol(
            *painter,
            row.isExpanded ? QStringLiteral("chevron.down") : QStringLiteral("chevron.right"),
            glyphBox, QColor::fromRgb(DashboardPalette::textSecondary), SymbolWeight::semibold);
    }

    // Trailing cells, right to left.
    QRect cell(box.right() + 1, box.top(), 0, box.height());
    const auto nextCell = [&](int width) {
        cell = QRect(cell.left() - width, box.top(), width, box.height());
        return cell.adjusted(0, 0, -6, 0);
    };
    const QRect impact = nextCell(ProcessTreeColumns::impact);
    const QRect memory = nextCell(ProcessTreeColumns::memory);
    const QRect cpu = nextCell(ProcessTreeColumns::cpu);
    const QRect pid = nextCell(ProcessTreeColumns::pid);

    const QFont cellFont = dashboardFont(m_layout, 11, DashboardFontWeight::regular,
                                         DashboardFontDesign::monospacedDigits);
    painter->setPen(QColor::fromRgb(DashboardPalette::textSecondary));
    m_texts.draw(*painter, pid, Qt::AlignLeft, QString::number(row.pid), cellFont);
    painter->setPen(QColor::fromRgb(DashboardPalette::textPrimary));
    m_texts.draw(*painter, cpu, Qt::AlignLeft, row.cpu, cellFont);
    painter->setPen(QColor::fromRgb(DashboardPalette::textSecondary));
    m_texts.draw(*painter, memory, Qt::AlignLeft, row.memory, cellFont);
    painter->setPen(QColor::fromRgb(resourceImpactColor(row.impact)));
    m_texts.draw(*painter, impact, Qt::AlignLeft, resourceImpactLabel(row.impact),
                 dashboardFont(m_layout, 11, DashboardFontWeight::semibold));

    // The two lines, between the chevron and the cells.
    const int textLeft = toggle.right() + 1 + 4;
    const QRectF text(textLeft, box.top(), std::max(0, pid.left() - 8 - textLeft), box.height());
    const QFont nameFont = dashboardFont(m_layout, 12, DashboardFontWeight::medium);
    const QFont badgeFont = dashboardFont(m_layout, 9, DashboardFontWeight::medium);
    const QFont detailFont = dashboardFont(m_layout, 10);
    const double nameHeight = QFontMetricsF(nameFont).height();
    const double detailHeight = QFontMetricsF(detailFont).height();
    const double top = text.top() + (text.height() - nameHeight - 2 - detailHeight) / 2;

    double badgeWidth = 0;
    if (!row.badge.isEmpty())
        badgeWidth = QFontMetricsF(badgeFont).horizontalAdvance(row.badge) + 12;
    const double nameRoom = std::max(0.0, text.width() - (badgeWidth > 0 ? badgeWidth + 6 : 0));
    painter->setPen(QColor::fromRgb(DashboardPalette::textPrimary));
    const double nameWidth = m_texts.draw(*painter, QRectF(text.left(), top, nameRoom, nameHeight),
                                          Qt::AlignLeft, row.name, nameFont);
    if (badgeWidth > 0 && text.width() >= badgeWidth) {
        const double badgeHeight = QFontMetricsF(badgeFont).height() + 2;
        const QRectF pill(text.left() + nameWidth + 6, top + (nameHeight - badgeHeight) / 2,
                          badgeWidth, badgeHeight);
        const QRgb ink = row.isTarget ? DashboardPalette::danger : DashboardPalette::textSecondary;
        const QRgb fill =
            row.isTarget ? DashboardPalette::dangerBackground : DashboardPalette::mutedBackground;
        QPainterPath path;
        path.addRoundedRect(pill, pill.height() / 2, pill.height() / 2);
        painter->fillPath(path, QColor::fromRgb(fill));
        painter->setPen(QColor::fromRgb(ink));
        m_texts.draw(*painter, pill, Qt::AlignHCenter, row.badge, badgeFont);
    }
    painter->setPen(QColor::fromRgb(DashboardPalette::textTertiary));
    m_texts.draw(*painter, QRectF(text.left(), top + nameHeight + 2, text.width(), detailHeight),
                 Qt::AlignLeft, row.detail, detailFont);
    painter->restore();
}

ProcessTreeView::ProcessTreeView(QWidget *parent) : QListView(parent)
{
    setObjectName(QStringLiteral("processTree"));
    m_model = new ProcessTreeModel(this);
    m_delegate = new ProcessTreeDelegate(this);
    setModel(m_model);
    setItemDelegate(m_delegate);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::NoSelection);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalScrollBar()->setSingleStep(ProcessTreeColumns::rowHeight / 2);
    setViewportMargins(0, 2, 0, 2);
    viewport()->setAutoFillBackground(false);
    setAutoFillBackground(false);
    setAccessibleName(tr("进程组成"));
    setAccessibleRows(this, {.valueRole = RowRole::accessibleValue,
                             .selectedRole = RowRole::selected,
                             .expandableRole = RowRole::toggleEnabled,
                             .expandedRole = RowRole::expanded,
                             .toggleLabelRole = RowRole::toggleLabel,
                             .select =
                                 [this](const QModelIndex &index) {
                                     emit processPressed(m_model->rowAt(index.row()).key);
                                 },
                             .toggle =
                                 [this](const QModelIndex &index) {
                                     emit toggleRequested(m_model->rowAt(index.row()).pid);
                                 },
                             .toggleRect =
                                 [this](const QModelIndex &index, const QRect &row) {
                                     return ProcessTreeDelegate::toggleRect(
                                         row, m_model->rowAt(index.row()).depth);
                                 }});
}

void ProcessTreeView::setLayoutMetrics(const DashboardLayoutMetrics &layout)
{
    m_delegate->setLayoutMetrics(layout);
    viewport()->update();
}

int ProcessTreeView::rowOfPID(pid_t pid) const
{
    for (int i = 0; i < m_model->rowCount(); ++i) {
        if (m_model->rowAt(i).pid == pid)
            return i;
    }
    return -1;
}

QRect ProcessTreeView::rowRect(pid_t pid) const
{
    const int row = rowOfPID(pid);
    return row < 0 ? QRect() : visualRect(m_model->index(row));
}

QRect ProcessTreeView::toggleRect(pid_t pid) const
{
    const int row = rowOfPID(pid);
    if (row < 0)
        return {};
    return ProcessTreeDelegate::toggleRect(visualRect(m_model->index(row)),
                                           m_model->rowAt(row).depth);
}

void ProcessTreeView::mousePressEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    m_pressed = index;
    m_pressedOnToggle = false;
    if (index.isValid()) {
        const ProcessTreeRow &row = m_model->rowAt(index.row());
        // A chevron that is not shown takes no press: the row gets it.
        m_pressedOnToggle =
            row.hasChildren && ProcessTreeDelegate::toggleRect(visualRect(index), row.depth)
                                   .contains(event->position().toPoint());
        setCurrentIndex(index);
    }
    event->accept();
}

void ProcessTreeView::mouseReleaseEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool sameRow = index.isValid() && m_pressed.isValid() && index == m_pressed;
    const bool onToggle = m_pressedOnToggle;
    m_pressed = QPersistentModelIndex();
    m_pressedOnToggle = false;
    if (!sameRow || event->button() != Qt::LeftButton)
        return;
    const ProcessTreeRow &row = m_model->rowAt(index.row());
    if (onToggle)
        emit toggleRequested(row.pid);
    else
        emit processPressed(row.key);
}

void ProcessTreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    // A second press is a press: a quick double toggle opens and closes.
    mousePressEvent(event);
}

void ProcessTreeView::keyPressEvent(QKeyEvent *event)
{
    const QModelIndex current = currentIndex();
    if (current.isValid()) {
        const ProcessTreeRow &row = m_model->rowAt(current.row());
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            emit processPressed(row.key);
            return;
        case Qt::Key_Right:
            if (row.hasChildren && !row.isExpanded)
                emit toggleRequested(row.pid);
            return;
        case Qt::Key_Left:
            if (row.hasChildren && row.isExpanded)
                emit toggleRequested(row.pid);
            return;
        default:
            break;
        }
    }
    QListView::keyPressEvent(event);
}
