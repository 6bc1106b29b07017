#include "presentation/history/IncidentStatusPill.h"

#include "presentation/history/IncidentTexts.h"
#include "presentation/kit/DashboardPalette.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

PillLabel::Style incidentStatusPillStyle(DashboardIncidentStatus status, IncidentPillPlace place)
{
    const QRgb color = incidentStatusColor(status);
    PillLabel::Style style;
    style.fontSize = 11;
    style.weight = DashboardFontWeight::medium;
    style.text = QColor::fromRgb(color);
    style.background = DashboardPalette::color(color, 0.11);
    style.horizontalPadding = place == IncidentPillPlace::tableRow ? 9 : 10;
    style.verticalPadding = place == IncidentPillPlace::tableRow ? 4 : 5;
    style.dotDiameter = 7;
    return style;
}

double incidentStatusPillWidth(DashboardIncidentStatus status, const QFont &font)
{
    const PillLabel::Style style = incidentStatusPillStyle(status, IncidentPillPlace::tableRow);
    return QFontMetricsF(font).horizontalAdvance(incidentStatusLabel(status)) +
           2 * style.horizontalPadding + style.dotDiameter + style.dotSpacing;
}

double widestIncidentStatusPillWidth(const QFont &font)
{
    double widest = 0;
    for (int status = 0; status <= int(DashboardIncidentStatus::actionFailed); ++status)
        widest = std::max(widest,
                          incidentStatusPillWidth(DashboardIncidentStatus(status), font));
    return widest;
}

void paintIncidentStatusPill(QPainter &painter, const QRectF &cell, DashboardIncidentStatus status,
                             const QFont &font)
{
    const PillLabel::Style style = incidentStatusPillStyle(status, IncidentPillPlace::tableRow);
    const QString label = incidentStatusLabel(status);
    const QFontMetricsF metrics(font);
    const double natural = incidentStatusPillWidth(status, font);
    const double height = metrics.height() + 2 * style.verticalPadding;
    const QRectF pill(cell.left(), cell.center().y() - height / 2.0,
                      std::min(natural, cell.width()), height);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath capsule;
    capsule.addRoundedRect(pill, height / 2.0, height / 2.0);
    painter.fillPath(capsule, style.background);
    double x = pill.left() + style.horizontalPadding;
    painter.setPen(Qt::NoPen);
    painter.setBrush(style.text);
    painter.drawEllipse(QPointF(x + style.dotDiameter / 2.0, pill.center().y()),
                        style.dotDiameter / 2.0, style.dotDiameter / 2.0);
    x += style.dotDiameter + style.dotSpacing;
    painter.setPen(style.text);
    painter.setFont(font);
    const QRectF text(x, pill.top(), pill.right() - style.horizontalPadding - x + 1, pill.height());
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     metrics.elidedText(label, Qt::ElideRight, text.width()));
    painter.restore();
}
