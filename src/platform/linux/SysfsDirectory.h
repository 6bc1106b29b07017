#pragma once

#include "platform/linux/FileReading.h"

#include <QByteArray>

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

// How the sysfs readers get at file contents. The running program reads the
// kernel's files; tests pass a reader that refuses or loses chosen files, the
// only way to show a refusal when the tests run as root (root reads a file of
// mode 000 without complaint).
using KernelFileReader = std::function<FileReadResult(const QByteArray &path)>;

// readKernelFile, as a KernelFileReader.
KernelFileReader systemFileReader();

// The entry names of a directory, without "." and "..", in the order the
// file system gives them; absent when the directory cannot be opened.
std::optional<std::vector<QByteArray>> listDirectory(const QByteArray &path);

// True when the kernel has put the device at `devicePath` (ending in '/') to
// sleep: its power/runtime_status is "suspended". Reading that file leaves the
// device asleep; reading almost any other file of it would wake it, and keep
// a laptop's second GPU powered.
bool deviceAsleep(const QByteArray &devicePath, const KernelFileReader &read);

// The entries "<prefix><n>" of a directory with n a decimal number, sorted by
// n: hwmon2 before hwmon10. Entries with more after the number ("card0-DP-1")
// are left out.
struct NumberedEntry {
    QByteArray name;
    unsigned long long number = 0;
};
std::vector<NumberedEntry> numberedEntries(const std::vector<QByteArray> &names,
                                           std::string_view prefix);

// The n of "<prefix><n><suffix>", e.g. 3 for "temp3_input"; absent otherwise.
std::optional<unsigned long long> numberBetween(std::string_view name, std::string_view prefix,
                                                std::string_view suffix);
