#include "presentation/history/IncidentListPanel.h"

#include "presentation/history/IncidentListModel.h"
#include "presentation/history/IncidentRowDelegate.h"
#include "presentation/history/IncidentRowMotion.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/AccessibleRows.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/SystemSymbols.h"

#include <QCoreApplication>
#include <QEvent>
#include <QListView>
#include <QMouseEvent>
#include <QStackedWidget>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(IncidentListPanel)
};

QWidget *makeEmptyState()
{
    using namespace DashboardPalette;
    auto *state = new QWidget;
    auto *symbol =
        new SymbolView(QStringLiteral("clock.badge.checkmark"), 30, QColor::fromRgb(success));
    symbol->setFixedSize(36, 36);
    auto *title = new TextLabel(Words::tr("本次会话暂无匹配事件"), 14, DashboardFontWeight::medium,
                                textPrimary);
    auto *message = new TextLabel(Words::tr("真实热压力、持续负载或结束任务后，事件会出现在这里。"),
                                  12, DashboardFontWeight::regular, textTertiary);
    message->setWordWrap(true);
    for (TextLabel *label : {title, message})
        label->setAlignment(Qt::AlignHCenter);
    attach(state, column(10, {24, 24, 24, 24},
                         {flexible(), LayoutItem(symbol, 0, Qt::AlignHCenter), title, message,
                          flexible()}));
    setAccessibility(state, QStringLiteral("eventHistoryEmptyState"), title->fullText(),
                     message->fullText());
    return state;
}

} // namespace

IncidentListPanel::IncidentListPanel(IncidentListModel &model, QWidget *parent)
    : QWidget(parent), m_model(model)
{
    using namespace DashboardPalette;
    auto *heading = new TextLabel(tr("事件记录"), 18, DashboardFontWeight::semibold, textPrimary);
    auto *order = new TextLabel(tr("按时间倒序"), 11, DashboardFontWeight::regular, textTertiary);
    auto *headingRow = new QWidget;
    headingRow->setFixedHeight(40);
    attach(headingRow, row(10, {},
                           {LayoutItem(heading, 0, Qt::AlignVCenter), flexible(),
                            LayoutItem(order, 0, Qt::AlignVCenter)}));

    auto *captions = new QWidget;
    captions->setFixedHeight(32);
    auto *captionRow = row(0, {}, {});
    const char *captionTexts[] = {QT_TRANSLATE_NOOP("IncidentListPanel", "时间"),
                                  QT_TRANSLATE_NOOP("IncidentListPanel", "事件"),
                                  QT_TRANSLATE_NOOP("IncidentListPanel", "进程"),
                                  QT_TRANSLATE_NOOP("IncidentListPanel", "峰值"),
                                  QT_TRANSLATE_NOOP("IncidentListPanel", "结果")};
    for (std::size_t column = 0; column < m_captions.size(); ++column) {
        m_captions[column] =
            new TextLabel(tr(captionTexts[column]), 11, DashboardFontWeight::medium, textSecondary);
        m_captions[column]->setElided(true);
        captionRow->addWidget(m_captions[column], 0, Qt::AlignVCenter);
    }
    captionRow->addStretch(1);
    attach(captions, captionRow);

    m_delegate = new IncidentRowDelegate(this);
    m_view = new QListView;
    m_view->setObjectName(QStringLiteral("eventHistoryList"));
    m_view->setAccessibleName(tr("事件记录"));
    m_view->setModel(&m_model);
    m_view->setItemDelegate(m_delegate);
    m_view->setUniformItemSizes(true);
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setSelectionMode(QAbstractItemView::NoSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setCursor(Qt::PointingHandCursor);
    QPalette viewPalette = m_view->palette();
    viewPalette.setColor(QPalette::Base, QColor::fromRgb(pageBackground));
    m_view->setPalette(viewPalette);
    connect(m_view, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        emit incidentClicked(index.data(RowRole::key).toUuid());
    });

    setAccessibleRows(m_view, {.valueRole = RowRole::accessibleValue,
                               .selectedRole = RowRole::selected,
                               .select = [this](const QModelIndex &index) {
                                   emit incidentClicked(index.data(RowRole::key).toUuid());
                               }});
    m_view->viewport()->installEventFilter(this);
    m_motion = new IncidentRowMotion(m_view->viewport());
    m_delegate->setMotion(m_motion);

    m_emptyState = makeEmptyState();
    m_stack = new QStackedWidget;
    // The captions follow the list's width even while the empty state hides
    // the list, so they do not move when the first incident arrives.
    m_stack->installEventFilter(this);
    m_stack->addWidget(m_view);
    m_stack->addWidget(m_emptyState);

    attach(this, column(0, {}, {headingRow, captions, new HairLine, LayoutItem(m_stack, 1)}));

    for (auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(&m_model, signal, this, &IncidentListPanel::showListOrEmptyState);
    connect(&m_model, &QAbstractItemModel::modelReset, this,
            &IncidentListPanel::showListOrEmptyState);
    showListOrEmptyState();
}

void IncidentListPanel::placeCaptions()
{
    if (!m_stack)
        return;
    // Over the rows' own columns, which give up the scroll bar's room. A
    // hidden list's viewport keeps a stale width: then the rows will be as
    // wide as the stack, where an empty list shows no bar.
    const int rowWidth = m_stack->currentWidget() == m_view ? m_view->viewport()->width()
                                                            : m_stack->contentsRect().width();
    const std::array<int, kEventHistoryColumnCount> widths =
        m_delegate->columnWidths(m_view, rowWidth);
    for (std::size_t column = 0; column < m_captions.size(); ++column) {
        const int inset = column == 0 ? kEventHistoryLeadingInset : 0;
        m_captions[column]->setContentsMargins(inset, 0, 0, 0);
        m_captions[column]->setFixedWidth(widths[column]);
    }
}

bool IncidentListPanel::eventFilter(QObject *watched, QEvent *event)
{
    if ((watched == m_view->viewport() || watched == m_stack) && event->type() == QEvent::Resize)
        placeCaptions();
    if (watched == m_view->viewport()) {
        if (event->type() == QEvent::MouseButtonPress) {
            const auto *press = static_cast<QMouseEvent *>(event);
            const QModelIndex index = m_view->indexAt(press->position().toPoint());
            if (index.isValid() && press->button() == Qt::LeftButton)
                m_motion->pressed(index.data(RowRole::key).toUuid());
        } else if (event->type() == QEvent::MouseButtonRelease) {
            m_motion->released();
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool IncidentListPanel::showsEmptyState() const
{
    return m_stack->currentWidget() == m_emptyState;
}

void IncidentListPanel::showListOrEmptyState()
{
    m_stack->setCurrentWidget(m_model.rowCount() > 0 ? static_cast<QWidget *>(m_view)
                                                     : m_emptyState);
    placeCaptions();
}

void IncidentListPanel::animateSelection(const QUuid &from, const QUuid &to)
{
    m_motion->selectionChanged(from, to);
}

bool IncidentListPanel::isAnimating() const
{
    return m_motion->isRunning();
}

void IncidentListPanel::applyLayout(const DashboardLayoutMetrics &layout)
{
    const bool resized = m_delegate->horizontalSize() != layout.horizontalSize;
    m_delegate->setHorizontalSize(layout.horizontalSize);
    placeCaptions();
    // The view caches the uniform row size; a new class changes it. Fonts
    // follow the typography scale, so the rows are repainted either way.
    if (resized && m_model.rowCount() > 0)
        emit m_delegate->sizeHintChanged(m_model.index(0));
    m_view->viewport()->update();
}
