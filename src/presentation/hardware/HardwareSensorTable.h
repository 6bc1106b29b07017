#pragma once

#include "dashboard/DashboardTrends.h"
#include "presentation/hardware/HardwareTexts.h"

#include <QWidget>

#include <array>
#include <vector>

class HairLine;
class QVBoxLayout;
class TextLabel;

// One line of the table: four cells at the column widths the table gives,
// placed by hand so that the widths never feed back into the page's layout.
class HardwareSensorTableLine final : public QWidget {
    Q_OBJECT

public:
    HardwareSensorTableLine(double fontSize, int height, QWidget *parent = nullptr);

    void setCells(const std::array<QString, 4> &texts);
    void setCellColors(const std::array<QRgb, 4> &colors);
    void setColumns(const SensorTableColumns &columns);
    std::array<QString, 4> cells() const;
    // The cells' rectangles, for tests and for a reader of the layout.
    std::array<QRect, 4> cellGeometries() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeCells();

    SensorTableColumns m_columns;
    std::array<TextLabel *, 4> m_cells{};
};

// "传感器读数": the column header and a line per sensor status, in the
// store's order, with the location and the status word in its colour. The
// table is as tall as its lines (the page scrolls, never the table), and the
// columns are computed once from its width for the header and every line,
// so headings and cells always stand on the same x.
class HardwareSensorTable final : public QWidget {
    Q_OBJECT

public:
    explicit HardwareSensorTable(QWidget *parent = nullptr);

    void setStatuses(const std::vector<DashboardSensorStatus> &statuses);

    HardwareSensorTableLine *header() const { return m_header; }
    int lineCount() const { return static_cast<int>(m_lines.size()); }
    HardwareSensorTableLine *line(int index) const { return m_lines[std::size_t(index)]; }
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QVBoxLayout *m_rows;
    HardwareSensorTableLine *m_header;
    std::vector<HardwareSensorTableLine *> m_lines;
    std::vector<HairLine *> m_separators;
    std::vector<DashboardSensorStatus> m_statuses;
};
