#include "presentation/hardware/HardwareSensorTable.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"

#include <QResizeEvent>

#include <cmath>

HardwareSensorTableLine::HardwareSensorTableLine(double fontSize, int height, QWidget *parent)
    : QWidget(parent)
{
    setFixedHeight(height);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    for (TextLabel *&cell : m_cells) {
        cell = new TextLabel(QString(), fontSize, DashboardFontWeight::regular,
                             DashboardPalette::textPrimary, this);
        cell->setElided(true);
        cell->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        setAccessibilityHidden(cell);
    }
}

void HardwareSensorTableLine::setCells(const std::array<QString, 4> &texts)
{
    for (std::size_t i = 0; i < m_cells.size(); ++i)
        m_cells[i]->setText(texts[i]);
    setAccessibleName(QStringList(texts.begin(), texts.end()).join(QLatin1Char(' ')));
}

void HardwareSensorTableLine::setCellColors(const std::array<QRgb, 4> &colors)
{
    for (std::size_t i = 0; i < m_cells.size(); ++i)
        m_cells[i]->setColor(QColor::fromRgb(colors[i]));
}

std::array<QString, 4> HardwareSensorTableLine::cells() const
{
    std::array<QString, 4> texts;
    for (std::size_t i = 0; i < m_cells.size(); ++i)
        texts[i] = m_cells[i]->fullText();
    return texts;
}

std::array<QRect, 4> HardwareSensorTableLine::cellGeometries() const
{
    std::array<QRect, 4> rects;
    for (std::size_t i = 0; i < m_cells.size(); ++i)
        rects[i] = m_cells[i]->geometry();
    return rects;
}

void HardwareSensorTableLine::setColumns(const SensorTableColumns &columns)
{
    if (columns == m_columns)
        return;
    m_columns = columns;
    placeCells();
}

void HardwareSensorTableLine::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeCells();
}

void HardwareSensorTableLine::placeCells()
{
    const double widths[] = {m_columns.sensor, m_columns.location, m_columns.reading,
                             m_columns.status};
    double x = 0.0;
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
        const int left = static_cast<int>(std::lround(x));
        const int right = static_cast<int>(std::lround(x + widths[i]));
        // A cell keeps a small gap before the next column so texts never touch.
        const int gap = i + 1 < m_cells.size() ? 8 : 0;
        m_cells[i]->setGeometry(left, 0, std::max(0, right - left - gap), height());
        x += widths[i];
    }
}

HardwareSensorTable::HardwareSensorTable(QWidget *parent) : QWidget(parent)
{
    auto *title = new TextLabel(tr("传感器读数"), 18, DashboardFontWeight::semibold,
                                DashboardPalette::textPrimary);
    setAccessibleRole(title, QAccessible::Heading);
    auto *live =
        new TextLabel(tr("实时"), 12, DashboardFontWeight::regular, DashboardPalette::success);
    auto *heading = new QWidget;
    heading->setFixedHeight(32);
    auto *headingRow = row(10, {}, {title, live, flexible()});
    headingRow->setAlignment(title, Qt::AlignVCenter);
    headingRow->setAlignment(live, Qt::AlignVCenter);
    attach(heading, headingRow);

    m_header = new HardwareSensorTableLine(11, 28);
    m_header->setCells({tr("传感器"), tr("位置"), tr("当前读数"), tr("状态")});
    const QRgb secondary = DashboardPalette::textSecondary;
    m_header->setCellColors({secondary, secondary, secondary, secondary});

    m_rows = column(0, {}, {});
    attach(this, column(0, {}, {heading, m_header, m_rows, flexible()}));
    setAccessibility(this, QStringLiteral("hardwareSensorTable"), tr("传感器读数"));
}

void HardwareSensorTable::setStatuses(const std::vector<DashboardSensorStatus> &statuses)
{
    if (statuses == m_statuses && !m_lines.empty())
        return;
    m_statuses = statuses;
    // At most seven lines: widgets are kept and only added or hidden.
    while (m_lines.size() < statuses.size()) {
        auto *separator = new HairLine;
        auto *line = new HardwareSensorTableLine(13, 34);
        setAccessibleRole(line, QAccessible::Row);
        m_rows->addWidget(separator);
        m_rows->addWidget(line);
        line->setColumns(sensorTableColumns(width()));
        m_separators.push_back(separator);
        m_lines.push_back(line);
    }
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const bool shown = i < statuses.size();
        m_lines[i]->setVisible(shown);
        m_separators[i]->setVisible(shown);
        if (!shown)
            continue;
        const DashboardSensorStatus &status = statuses[i];
        const SensorStatusLook look = sensorStatusLook(status.availability);
        m_lines[i]->setCells(
            {status.title, sensorLocationText(status), status.currentValue, look.text});
        m_lines[i]->setCellColors({DashboardPalette::textPrimary, DashboardPalette::textSecondary,
                                   DashboardPalette::textPrimary, look.color});
        setAccessibility(m_lines[i], QStringLiteral("hardwareSensor-") + status.id);
    }
}

QSize HardwareSensorTable::minimumSizeHint() const
{
    // At least 205 high, and never shorter than its lines: an explicit
    // minimum height would replace the layout's and let lines be cut.
    const QSize laidOut = QWidget::minimumSizeHint();
    return {laidOut.width(), std::max(205, laidOut.height())};
}

void HardwareSensorTable::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // Header and lines span the table's whole width, so one computation
    // serves them all.
    const SensorTableColumns columns = sensorTableColumns(width());
    m_header->setColumns(columns);
    for (HardwareSensorTableLine *line : m_lines)
        line->setColumns(columns);
}
