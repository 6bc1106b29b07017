// libFuzzer target over every text parser of the Linux layer and the command
// redaction. The first byte picks the parser, the rest is the text. Beyond
// "no crash, no sanitizer report", each branch checks what must hold for
// any input: what a parser returns is drawn from its input, nothing of an
// argument vector survives redaction but a table word, and no text of a
// process is shown with a control, separator or direction character in it.

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/HwmonSensorProbe.h"
#include "platform/linux/ProcDiskstatsDiskProbe.h"
#include "platform/linux/ProcMeminfoMemoryProbe.h"
#include "platform/linux/ProcPidFiles.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcPidStatus.h"
#include "platform/linux/ProcStat.h"
#include "platform/linux/ProcessName.h"
#include "platform/linux/SystemdApplicationUnit.h"
#include "presentation/report/ReportJson.h"
#include "process/ApplicationGrouping.h"
#include "process/CommandRedaction.h"
#include "process/ProcessNameOrder.h"
#include "process/TaskAssembly.h"
#include "process/TaskClassification.h"

#include <QJsonDocument>
#include <QLocale>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void require(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "property broken: %s\n", what);
        std::abort();
    }
}

bool contains(std::string_view text, const QString &part)
{
    return std::string_view(text).find(part.toStdString()) != std::string_view::npos;
}

// "exe \x1f arg1 \0 arg2 ... \x1f cwd": three fields, the arguments NUL-separated.
void fuzzRedaction(std::string_view text)
{
    const std::size_t first = text.find('\x1f');
    const std::string_view exe = text.substr(0, first);
    std::string_view rest = first == std::string_view::npos ? "" : text.substr(first + 1);
    const std::size_t second = rest.find('\x1f');
    const std::string_view argv = rest.substr(0, second);
    const std::optional<QString> cwd =
        second == std::string_view::npos
            ? std::nullopt
            : std::optional<QString>(QString::fromUtf8(rest.substr(second + 1).data(),
                                                       qsizetype(rest.size() - second - 1)));
    const QString executable = QString::fromUtf8(exe.data(), qsizetype(exe.size()));
    const QStringList arguments = parseProcPidCmdline(QByteArrayView(argv.data(), argv.size()));
    const RedactedCommandSummary summary{redactedCommandText(executable, arguments),
                                         projectOfWorkingDirectory(cwd)};

    // The command is the executable's file name, a table word, or both.
    static const QStringList table = {"build", "dev",   "lint", "run",
                                      "serve", "start", "test", "watch"};
    QString name = executable;
    while (name.endsWith(QLatin1Char('/')))
        name.chop(1);
    name = name.mid(name.lastIndexOf(QLatin1Char('/')) + 1);
    bool shaped = summary.command == name || summary.command == QStringLiteral("未知任务");
    for (const QString &word : table) {
        shaped =
            shaped || summary.command == word || summary.command == name + QLatin1Char(' ') + word;
    }
    require(shaped, "a redacted command holds argument text");

    // A project comes from the working directory alone: one whole component.
    if (summary.project) {
        require(cwd.has_value(), "a project without a working directory");
        require(!summary.project->isEmpty() && !summary.project->contains(QLatin1Char('/')),
                "a project that is not one component");
        require(cwd->split(QLatin1Char('/')).contains(*summary.project),
                "a project that is not a component of the working directory");
    }
}

// What may never reach a screen, a terminal or a screen reader: controls
// (Cc), line and paragraph separators (Zl, Zp) and the characters that turn
// text direction. Stated here on its own, apart from the rule it checks.
bool isShowable(const QString &text)
{
    for (const QChar character : text) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            return false;
        for (const char16_t bidi :
             {u'\u061C', u'\u200E', u'\u200F', u'\u202A', u'\u202B', u'\u202C', u'\u202D',
              u'\u202E', u'\u2066', u'\u2067', u'\u2068', u'\u2069'}) {
            if (character == QChar(bidi))
                return false;
        }
    }
    return true;
}

void requireShowable(const std::vector<DashboardProcessNode> &nodes)
{
    for (const DashboardProcessNode &node : nodes) {
        require(isShowable(node.name) && isShowable(node.command) &&
                    isShowable(node.project.value_or(QString())),
                "a process tree row shows a control, separator or direction character");
        requireShowable(node.children);
    }
}

// "comm \x1f exe \x1f arg1 \0 arg2 ... \x1f cwd \x1f desktop entry": a parent
// and its child with these texts, as the readers give them, through the
// grouping and the task assembly. Every text the task shows is printable;
// the JSON of the process holds no such character either, and reads back
// as the process's own text.
void fuzzShownTexts(std::string_view text)
{
    std::vector<std::string_view> fields;
    for (int index = 0; index < 4; ++index) {
        const std::size_t end = text.find('\x1f');
        fields.push_back(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    fields.push_back(text);
    const auto utf8 = [](std::string_view part) {
        return QString::fromUtf8(part.data(), qsizetype(part.size()));
    };
    ProcessMetric parent;
    parent.identity = {2, TimePoint::fromSecondsSince1970(1000.0), utf8(fields[1])};
    parent.name = processDisplayName(utf8(fields[0]), parent.identity.executablePath);
    parent.command = {redactedCommandText(
                          executablePathShown(parent.identity.executablePath),
                          parseProcPidCmdline(QByteArrayView(fields[2].data(), fields[2].size()))),
                      projectOfWorkingDirectory(fields[3].empty()
                                                    ? std::nullopt
                                                    : std::optional<QString>(utf8(fields[3])))};
    if (!fields[4].empty()) {
        parent.applicationPath = QStringLiteral("/usr/share/applications/x.desktop");
        parent.applicationName = parseDesktopEntryName(fields[4]).value_or(QString());
    }
    parent.cpuPercent = 60.0;
    ProcessMetric child = parent;
    child.identity.pid = 3;
    child.parentPID = 2;
    child.cpuPercent = 30.0;

    const ProcessNameOrder order(QLocale::c());
    TickTexts texts(order);
    for (const ApplicationLoad &load : groupApplicationLoads({parent, child})) {
        const DashboardTask task =
            assembleTask(load, TaskClassification::classify(load, &texts), texts);
        require(isShowable(task.application) && isShowable(task.detail) &&
                    isShowable(task.targetProcess.name) && isShowable(task.diagnosis.title) &&
                    isShowable(task.diagnosis.recommendation),
                "a task shows a control, separator or direction character");
        requireShowable(task.processTree);
    }

    const QByteArray json = compactJson(processMetricJson(parent));
    require(isShowable(QString::fromUtf8(json)), "the JSON prints a control character");
    const QJsonObject back = QJsonDocument::fromJson(json).object();
    require(back[QStringLiteral("name")].toString() == parent.name,
            "the JSON does not read back as the process's own name");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string_view text(reinterpret_cast<const char *>(data + 1), size - 1);
    switch (data[0] % 14) {
    case 0:
        if (const auto stat = parseProcPidStat(text))
            require(text.find(')') != std::string_view::npos, "a stat without its name's end");
        break;
    case 1:
        // A page size that overflows with any resident count above 1.
        parseProcPidStatmResidentBytes(text, 4096);
        parseProcPidStatmResidentBytes(text, std::uint64_t(1) << 63);
        break;
    case 2:
        parseProcPidIoDiskBytes(text);
        break;
    case 3:
        for (const QString &argument :
             parseProcPidCmdline(QByteArrayView(text.data(), text.size())))
            require(!argument.isEmpty() && !argument.contains(QChar(0)),
                    "an empty argument or one holding a NUL");
        break;
    case 4:
        systemdCgroupPath(text);
        if (const auto id = applicationIDFromCgroup(text))
            require(!id->isEmpty() && !id->contains(QLatin1Char('/')),
                    "an ApplicationID that is empty or crosses a path");
        break;
    case 5:
        parseMeminfo(text);
        break;
    case 6:
        // Invalid UTF-8 in a name is repaired, so only valid text can be
        // found again as it stands.
        for (const DiskstatsLine &line : parseDiskstats(text))
            require(!line.name.isEmpty() && !line.name.contains(QLatin1Char(' ')) &&
                        (!QByteArrayView(text.data(), qsizetype(text.size())).isValidUtf8() ||
                         contains(text, line.name)),
                    "a disk name not taken whole from its line");
        break;
    case 7:
        if (const auto ticks = parseProcStatCPUTicks(text)) {
            for (const double value : {ticks->user, ticks->system, ticks->idle, ticks->nice})
                require(std::isfinite(value) && value >= 0.0, "a negative or broken tick count");
        }
        parseProcStatBootTime(text);
        break;
    case 8:
        // An escaped line break stays in the name; the shown texts' branch
        // checks that it never reaches the screen.
        parseDesktopEntryName(text);
        break;
    case 9:
        if (const auto tgid = parseProcPidStatusThreadGroup(text))
            require(*tgid > 0, "a thread group id below 1");
        break;
    case 10: {
        const QByteArray bytes(text.data(), qsizetype(text.size()));
        const SensorChannelValue value = sensorFileValue({bytes, 0}, 1000.0);
        require(!value.value || std::isfinite(*value.value), "a sensor value that is not finite");
        if (const auto number = parseDecimal(text))
            require(contains(text, QString::number(*number).remove(QLatin1Char('-'))),
                    "a decimal not written in its text");
        parseUnsignedDecimal(text);
        break;
    }
    case 11:
        applicationIDFromUnitName(text);
        break;
    case 12:
        fuzzRedaction(text);
        break;
    default:
        fuzzShownTexts(text);
        break;
    }
    return 0;
}
