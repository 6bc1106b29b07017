#include "presentation/app/DashboardCommandLine.h"

#include "sampling/InterfaceLanguage.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace {

// The whole text must be one decimal number: no white space around it, nothing
// after it. A leading "+" is accepted, as by the usual number parsers.
std::optional<double> wholeNumber(const QString &text)
{
    std::string bytes = text.toStdString();
    std::string_view view = bytes;
    if (!view.empty() && view.front() == '+')
        view.remove_prefix(1);
    if (view.empty())
        return std::nullopt;
    double value = 0.0;
    const auto [end, error] = std::from_chars(view.data(), view.data() + view.size(), value);
    if (error != std::errc() || end != view.data() + view.size())
        return std::nullopt;
    return value;
}

} // namespace

std::optional<QSizeF> parseDashboardSize(const QStringList &arguments)
{
    const qsizetype index = arguments.indexOf(QStringLiteral("--dashboard-size"));
    if (index < 0 || index + 2 >= arguments.size())
        return std::nullopt;
    const std::optional<double> width = wholeNumber(arguments[index + 1]);
    const std::optional<double> height = wholeNumber(arguments[index + 2]);
    if (!width || !height || !std::isfinite(*width) || !std::isfinite(*height))
        return std::nullopt;
    if (!(*width > 0.0) || !(*height > 0.0))
        return std::nullopt;
    return QSizeF(std::clamp(*width, 960.0, kLargestDashboardSide),
                  std::clamp(*height, 640.0, kLargestDashboardSide));
}

DashboardSection parseDashboardPage(const QStringList &arguments)
{
    const qsizetype index = arguments.indexOf(QStringLiteral("--dashboard-page"));
    if (index < 0 || index + 1 >= arguments.size())
        return DashboardSection::overview;
    return dashboardSectionFromText(arguments[index + 1]).value_or(DashboardSection::overview);
}

QString dashboardUsageText()
{
    // Options and page names are syntax and stay as typed; the words around
    // them, the placeholders included, are the session's language.
    return TerminalText::translate(
        "DashboardCommandLine",
        "用法：kilnwarden [--dashboard-size 宽 高] [--dashboard-page 页面]\n"
        "      kilnwarden --help | --version\n"
        "页面：overview, liveDiagnosis, hardwareMonitor, eventHistory, settings\n"
        "没有显示器时，kilnwarden-report 在终端中打印同样的诊断。");
}

DashboardCommandResult parseDashboardCommand(const QStringList &arguments)
{
    DashboardCommand command = DashboardCommand::run;
    for (qsizetype index = 0; index < arguments.size(); ++index) {
        const QString &argument = arguments[index];
        if (argument == QLatin1String("--dashboard-size")) {
            index += std::min<qsizetype>(2, arguments.size() - index - 1);
        } else if (argument == QLatin1String("--dashboard-page")) {
            index += std::min<qsizetype>(1, arguments.size() - index - 1);
        } else if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            command = DashboardCommand::help;
        } else if (argument == QLatin1String("--version")) {
            if (command != DashboardCommand::help)
                command = DashboardCommand::version;
        } else {
            return {std::nullopt,
                    TerminalText::translate("DashboardCommandLine", "kilnwarden: 未知选项“%1”")
                        .arg(argument)};
        }
    }
    return {command, {}};
}
