#pragma once

#include <QByteArrayView>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <string_view>

// Parsers for the small per-process files of procfs. Pure functions over the
// file's bytes; readers hand them what they read.

// /proc/<pid>/statm: its second field, the resident pages, times `pageSize`,
// in bytes. statm is exact, unlike field 24 of stat, which the kernel has
// since let drift from it. Nothing when the first two fields are not both
// decimal or the product does not fit 64 bits.
std::optional<std::uint64_t> parseProcPidStatmResidentBytes(std::string_view text,
                                                            std::uint64_t pageSize);

// /proc/<pid>/io: "read_bytes" plus "write_bytes", the bytes this process made
// the storage layer fetch and write, added with wrap-around like any running
// counter. Nothing when either line is missing or malformed.
std::optional<std::uint64_t> parseProcPidIoDiskBytes(std::string_view text);

// /proc/<pid>/cmdline: arguments separated by NUL bytes. Runs of NUL bytes are
// skipped, so empty arguments vanish; an argument that is not valid UTF-8 is
// left out rather than shown repaired; a last argument without a terminating
// NUL is kept, since a process that rewrites its title (setproctitle) leaves
// its text unterminated. Index 0 is the program's own argv[0].
QStringList parseProcPidCmdline(QByteArrayView bytes);
