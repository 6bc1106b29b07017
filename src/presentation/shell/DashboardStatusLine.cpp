#include "presentation/shell/DashboardStatusLine.h"

#include "dashboard/DashboardStore.h"
#include "sampling/Text.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <cmath>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DashboardStatusLine)
};

} // namespace

QString numericDateTimeText(TimePoint time)
{
    const QLocale locale = interfaceLocale();
    const double seconds = time.secondsSince1970;
    if (!std::isfinite(seconds))
        return {};
    const QDateTime dateTime =
        QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(seconds * 1000.0)));
    // The locale's long time carries the zone ("t"); the standard time of day
    // is that without the zone.
    QString timeFormat = locale.timeFormat(QLocale::LongFormat);
    timeFormat.remove(QLatin1Char('t'));
    timeFormat = timeFormat.trimmed();
    return locale.toString(dateTime.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
           locale.toString(dateTime.time(), timeFormat);
}

QString latestSampleText(const DashboardStore &store)
{
    if (!store.latestSystemSample())
        return Words::tr("等待首次采样");
    return numericDateTimeText(store.latestSystemSample()->timestamp);
}

QString dashboardStatusLine(DashboardSection section, const DashboardStore &store)
{
    switch (section) {
    case DashboardSection::overview: {
        const QString state =
            store.liveTasks().empty()
                ? Words::tr("设备整体状态正常")
                : Words::tr("%1 个进程需要关注")
                      .arg(formatLocaleInteger(static_cast<long long>(store.liveTasks().size())));
        return Words::tr("最新采样：%1 · %2").arg(latestSampleText(store), state);
    }
    case DashboardSection::liveDiagnosis:
        return Words::tr("最新采样：%1 · 定位当前用户进程，并解释可能影响温度的持续负载")
            .arg(latestSampleText(store));
    case DashboardSection::hardwareMonitor: {
        QString source = Words::tr("Linux hwmon 传感器");
        if (const auto &sample = store.latestSystemSample();
            sample && sample->temperatureCelsius.isAvailable())
            source = sample->temperatureCelsius.sourceText();
        return Words::tr("来自 %1 · 采样间隔 2 秒 · 本机处理").arg(source);
    }
    case DashboardSection::eventHistory:
        return Words::tr("共记录 %1 个事件 · 数据仅保存在本次会话")
            .arg(formatLocaleInteger(static_cast<long long>(store.incidents().size())));
    case DashboardSection::settings:
        break;
    }
    return Words::tr("配置与诊断数据仅在本机处理");
}
