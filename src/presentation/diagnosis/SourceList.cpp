#include "presentation/diagnosis/SourceList.h"

#include "presentation/diagnosis/DiagnosisTexts.h"
#include "presentation/diagnosis/RowMotion.h"
#include "presentation/kit/AccessibleRows.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/kit/DashboardPalette.h"

#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>

namespace {

constexpr int kRowHeight = 48;
constexpr int kRowGap = 4;
constexpr int kLeadingPadding = 10;
constexpr int kTrailingPadding = 8;
constexpr int kTargetColumn = 54;
constexpr int kTotalColumn = 48;

} // namespace

SourceListRow SourceListRow::of(const DashboardTask &task, bool isSelected)
{
    return {task.id,
            task.application,
            sourceRowSubtitle(task),
            wholePercentText(task.targetProcess.cpu),
            wholePercentText(task.cpu),
            isSelected,
            sourceRowAccessibleLabel(task)};
}

QVariant SourceListModel::rowData(const SourceListRow &row, int role) const
{
    if (role == Qt::DisplayRole)
        return row.application;
    return role == Qt::ToolTipRole ? row.accessibleLabel : QVariant();
}

SourceListDelegate::SourceListDelegate(RowMotion *motion, QObject *parent)
    : QStyledItemDelegate(parent), m_motion(motion)
{
}

void SourceListDelegate::setLayoutMetrics(const DashboardLayoutMetrics &layout)
{
    m_layout = layout;
}

int SourceListDelegate::rowPitch() const
{
    return kRowHeight + kRowGap;
}

QSize SourceListDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {0, rowPitch()};
}

void SourceListDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    const auto *model = static_cast<const SourceListModel *>(index.model());
    const SourceListRow &row = model->rowAt(index.row());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setOpacity(m_motion->opacityFor(row.key));
    QRectF box(option.rect.x(), option.rect.y() + m_motion->offsetFor(row.key), option.rect.width(),
               kRowHeight);

    QColor background = Qt::transparent;
    if (row.isSelected)
        background = QColor::fromRgb(DashboardPalette::accentBackground);
    else if (index.row() % 2 == 1)
        background = QColor::fromRgb(DashboardPalette::mutedBackground);
    if (background.alpha() > 0) {
        QPainterPath path;
        path.addRoundedRect(box, 8, 8);
        painter->fillPath(path, background);
    }
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        painter->setPen(QPen(DashboardPalette::color(DashboardPalette::accent, 0.5), 1));
        painter->drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
    }

    const QRectF content = box.adjusted(kLeadingPadding, 0, -kTrailingPadding, 0);
    const QRectF total(content.right() - kTotalColumn, content.top(), kTotalColumn,
                       content.height());
    const QRectF target(total.left() - kTargetColumn, content.top(), kTargetColumn,
                        content.height());
    const QRectF first(content.left(), content.top(),
                       std::max(0.0, target.left() - content.left() - 4), content.height());

    const QFont title = dashboardFont(m_layout, 12, DashboardFontWeight::medium);
    const QFont caption = dashboardFont(m_layout, 9);
    const double titleHeight = QFontMetricsF(title).height();
    const double captionHeight = QFontMetricsF(caption).height();
    const double top = first.top() + (first.height() - titleHeight - 2 - captionHeight) / 2;
    painter->setPen(QColor::fromRgb(DashboardPalette::textPrimary));
    m_texts.draw(*painter, QRectF(first.left(), top, first.width(), titleHeight), Qt::AlignLeft,
                 row.application, title);
    painter->setPen(QColor::fromRgb(DashboardPalette::textTertiary));
    m_texts.draw(*painter,
                 QRectF(first.left(), top + titleHeight + 2, first.width(), captionHeight),
                 Qt::AlignLeft, row.subtitle, caption);

    painter->setPen(QColor::fromRgb(row.isSelected ? DashboardPalette::accent
                                                   : DashboardPalette::textSecondary));
    m_texts.draw(*painter, target, Qt::AlignRight, row.targetCPU,
                 dashboardFont(m_layout, 11, DashboardFontWeight::semibold));
    m_texts.draw(*painter, total, Qt::AlignRight, row.totalCPU, dashboardFont(m_layout, 11));
    painter->restore();
}

SourceListView::SourceListView(QWidget *parent) : QListView(parent)
{
    setObjectName(QStringLiteral("sourceList"));
    m_model = new SourceListModel(this);
    m_motion = new RowMotion(this);
    m_delegate = new SourceListDelegate(m_motion, this);
    setModel(m_model);
    setItemDelegate(m_delegate);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::NoSelection);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalScrollBar()->setSingleStep(m_delegate->rowPitch() / 2);
    setMouseTracking(true);
    viewport()->setAutoFillBackground(false);
    setAutoFillBackground(false);
    setAccessibleName(tr("负载来源"));
    setAccessibleRows(this, {.valueRole = RowRole::accessibleValue,
                             .selectedRole = RowRole::selected,
                             .select = [this](const QModelIndex &index) {
                                 emit taskPressed(index.data(RowRole::key).toString());
                             }});
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        emit taskPressed(index.data(RowRole::key).toString());
    });
    // Return or Enter on the current row selects it, as a press does.
    connect(this, &QAbstractItemView::activated, this, [this](const QModelIndex &index) {
        emit taskPressed(index.data(RowRole::key).toString());
    });
}

void SourceListView::setRows(std::vector<SourceListRow> rows)
{
    QHash<QString, int> before;
    if (isVisible()) {
        for (int i = 0; i < m_model->rowCount(); ++i)
            before.insert(m_model->rowAt(i).key, i);
    }
    m_motion->capture(before);
    m_model->setRows(std::move(rows));
    QHash<QString, int> after;
    if (!before.isEmpty()) {
        for (int i = 0; i < m_model->rowCount(); ++i)
            after.insert(m_model->rowAt(i).key, i);
    }
    m_motion->start(after, m_delegate->rowPitch());
}

void SourceListView::setLayoutMetrics(const DashboardLayoutMetrics &layout)
{
    m_delegate->setLayoutMetrics(layout);
    viewport()->update();
}

QRect SourceListView::rowRect(const QString &key) const
{
    const int row = m_model->rowOf(key);
    return row < 0 ? QRect() : visualRect(m_model->index(row));
}
