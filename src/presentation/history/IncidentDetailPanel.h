#pragma once

#include "dashboard/DashboardIncident.h"
#include "presentation/kit/DashboardWidgets.h"

#include <functional>
#include <optional>

class QScrollArea;
class QVariantAnimation;

// The details of the selected incident: its status, title, start and
// duration, the recorded values, the advice, and the way to the live
// diagnosis. Without a selection it shows what the panel is for.
class IncidentDetailPanel final : public RoundedBox {
    Q_OBJECT

public:
    explicit IncidentDetailPanel(std::function<void()> openDiagnosis, QWidget *parent = nullptr);

    // Shows `incident` (none: the placeholder). An open incident's duration
    // runs to `latestSampleTime`.
    void showIncident(const DashboardIncident *incident, std::optional<TimePoint> latestSampleTime);
    // In the compact class the page scrolls and the panel grows with its
    // content; otherwise the panel has its height and scrolls within.
    void setGrowsWithContent(bool grows);
    // Fades the content in over the selection's 0.14 s ease-out: when the
    // user picks an incident, not when a sample updates the one shown.
    void fadeIn();
    bool isFading() const;

    bool showsPlaceholder() const;
    QString startAndDurationText() const;
    QString adviceText() const;
    QString valueText(const QString &label) const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fitHeightToContent();

    QScrollArea *m_scroll;
    QWidget *m_content;
    QWidget *m_placeholder;
    QWidget *m_details;
    PillLabel *m_status;
    TextLabel *m_title;
    TextLabel *m_startAndDuration;
    std::vector<std::pair<TextLabel *, TextLabel *>> m_values; // label, value
    TextLabel *m_advice;
    QVariantAnimation *m_fade;
    bool m_growsWithContent = false;
};
