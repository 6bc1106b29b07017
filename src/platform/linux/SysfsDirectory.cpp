#include "platform/linux/SysfsDirectory.h"

#include <algorithm>
#include <cctype>
#include <memory>

#include <dirent.h>

KernelFileReader systemFileReader()
{
    return [](const QByteArray &path) { return readKernelFile(path); };
}

std::optional<std::vector<QByteArray>> listDirectory(const QByteArray &path)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> directory(::opendir(path.constData()), &::closedir);
    if (!directory)
        return std::nullopt;
    std::vector<QByteArray> names;
    while (const dirent *entry = ::readdir(directory.get())) {
        const std::string_view name(entry->d_name);
        if (name == "." || name == "..")
            continue;
        names.emplace_back(entry->d_name);
    }
    return names;
}

bool deviceAsleep(const QByteArray &devicePath, const KernelFileReader &read)
{
    const FileReadResult status = read(devicePath + "power/runtime_status");
    return status.bytes && status.bytes->trimmed() == "suspended";
}

std::optional<unsigned long long> numberBetween(std::string_view name, std::string_view prefix,
                                                std::string_view suffix)
{
    if (name.size() <= prefix.size() + suffix.size() || !name.starts_with(prefix) ||
        !name.ends_with(suffix))
        return std::nullopt;
    const std::string_view digits =
        name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
    if (!std::all_of(digits.begin(), digits.end(),
                     [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }))
        return std::nullopt;
    return parseUnsignedDecimal(digits);
}

std::vector<NumberedEntry> numberedEntries(const std::vector<QByteArray> &names,
                                           std::string_view prefix)
{
    std::vector<NumberedEntry> entries;
    for (const QByteArray &name : names) {
        if (const auto number = numberBetween(asView(name), prefix, {}))
            entries.push_back({name, *number});
    }
    std::sort(entries.begin(), entries.end(),
              [](const NumberedEntry &a, const NumberedEntry &b) { return a.number < b.number; });
    return entries;
}
