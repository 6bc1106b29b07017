#include "presentation/report/ReportOptions.h"

#include "sampling/Cancellation.h"
#include "sampling/InterfaceLanguage.h"

#include <cmath>

QString reportUsageLine()
{
    return TerminalText::translate(
        "ReportOptions", "用法：kilnwarden-report [--samples 次数] [--interval 秒数] [--json]");
}

ReportOptionsResult parseReportOptions(const QStringList &arguments)
{
    ReportOptions options;
    for (qsizetype index = 0; index < arguments.size(); ++index) {
        const QString &argument = arguments[index];
        // Both "--samples 3" and "--samples=3" are accepted.
        QString name = argument;
        std::optional<QString> inlineValue;
        if (argument.startsWith(QLatin1String("--")) && argument.contains(QLatin1Char('='))) {
            name = argument.section(QLatin1Char('='), 0, 0);
            inlineValue = argument.section(QLatin1Char('='), 1);
        }
        auto takeValue = [&]() -> std::optional<QString> {
            if (inlineValue)
                return inlineValue;
            if (index + 1 < arguments.size())
                return arguments[++index];
            return std::nullopt;
        };

        if (name == QLatin1String("--json") && !inlineValue) {
            options.json = true;
        } else if ((name == QLatin1String("--help") || name == QLatin1String("-h")) &&
                   !inlineValue) {
            options.help = true;
        } else if (name == QLatin1String("--samples")) {
            const std::optional<QString> value = takeValue();
            bool ok = false;
            const int count = value ? value->toInt(&ok) : 0;
            if (!ok || count < 1)
                return {std::nullopt,
                        TerminalText::translate(
                            "ReportOptions",
                            "kilnwarden-report: --samples 需要不小于 1 的整数，而不是“%1”")
                            .arg(value.value_or(QString()))};
            options.samples = count;
        } else if (name == QLatin1String("--interval")) {
            const std::optional<QString> value = takeValue();
            bool ok = false;
            const double seconds = value ? value->toDouble(&ok) : 0.0;
            // Only what a timer can hold: about 31 years at most.
            if (!ok || !std::isfinite(seconds) || seconds <= 0.0 || seconds > kLongestSleepSeconds)
                return {std::nullopt,
                        TerminalText::translate("ReportOptions",
                                                "kilnwarden-report: --interval 需要大于 0 且不超过 "
                                                "%1 的秒数，而不是“%2”")
                            .arg(kLongestSleepSeconds, 0, 'f', 0)
                            .arg(value.value_or(QString()))};
            options.interval = seconds;
        } else {
            return {std::nullopt,
                    TerminalText::translate("ReportOptions", "kilnwarden-report: 未知选项“%1”")
                        .arg(argument)};
        }
    }
    return {options, {}};
}
