#pragma once

#include "dashboard/DashboardTrends.h"
#include "presentation/hardware/HardwareTexts.h"

#include <QWidget>

#include <array>
#include <vector>

class HairLine;
class QVBoxLayout;
class TextLabel;

// One line of the table: four cells at the table's column widths, placed by
// hand from the line's own width so that the widths never feed back into the
// page's layout.
class HardwareSensorTableLine final : public QWidget {
    Q_OBJECT

public:
    HardwareSensorTableLine(double fontSize, int height, QWidget *parent = nullptr);

    void setCells(const std::array<QString, 4> &texts);
    void setCellColors(const std::array<QRgb, 4> &colors);
    std::array<QString, 4> cells() const;
    // The cells' rectangles, for tests and for a reader of the layout.
    std::array<QRect, 4> cellGeometries() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    std::array<TextLabel *, 4> m_cells{};
};

// "传感器读数": the column header and a line per sensor status, in the
// store's order, with the location and the status word in its colour.
class HardwareSensorTable final : public QWidget {
    Q_OBJECT

public:
    explicit HardwareSensorTable(QWidget *parent = nullptr);

    void setStatuses(const std::vector<DashboardSensorStatus> &statuses);

    HardwareSensorTableLine *header() const { return m_header; }
    int lineCount() const { return static_cast<int>(m_lines.size()); }
    HardwareSensorTableLine *line(int index) const { return m_lines[std::size_t(index)]; }

private:
    QVBoxLayout *m_rows;
    HardwareSensorTableLine *m_header;
    std::vector<HardwareSensorTableLine *> m_lines;
    std::vector<HairLine *> m_separators;
    std::vector<DashboardSensorStatus> m_statuses;
};
