#include "platform/linux/ProcPidFiles.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcessName.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_view_literals;

QByteArrayView view(std::string_view bytes)
{
    return QByteArrayView(bytes.data(), qsizetype(bytes.size()));
}

TEST(ProcPidCmdline, SplitsOnNulRunsAndLeavesOutInvalidUtf8)
{
    const std::tuple<const char *, std::string_view, QStringList> rows[] = {
        {"empty", ""sv, {}},
        {"only NULs", "\0\0\0"sv, {}},
        {"ordinary", "npm\0run\0dev\0"sv, {"npm", "run", "dev"}},
        {"empty arguments vanish", "make\0\0\0test\0\0"sv, {"make", "test"}},
        {"empty argv0 vanishes", "\0sh\0"sv, {"sh"}},
        {"no terminating NUL", "npm\0start"sv, {"npm", "start"}},
        {"rewritten title", "sshd: x@pts/0"sv, {"sshd: x@pts/0"}},
        {"invalid UTF-8 left out", "a\0\xff\0b\xc3\0c\0"sv, {"a", "c"}},
        {"valid UTF-8 kept", "\xe6\xb8\xa9\0caf\xc3\xa9\0"sv, {"温", "café"}},
        {"invalid last argument without NUL", "a\0\xed\xa0\x80"sv, {"a"}},
    };
    for (const auto &[description, bytes, expected] : rows)
        EXPECT_EQ(parseProcPidCmdline(view(bytes)), expected) << description;
}

TEST(ProcPidStatTest, ReadsTheFieldsAfterTheLastParenthesis)
{
    // pid (comm) state ppid pgrp session tty_nr tpgid flags minflt cminflt
    // majflt cmajflt utime stime cutime cstime priority nice threads
    // itrealvalue starttime ...
    const std::string_view line = "42 (a) b (c)) S 7 40 39 34817 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 "
                                  "12300 10000000 321 18446744073709551615 1 1\n";
    const std::optional<ProcPidStat> stat = parseProcPidStat(line);
    ASSERT_TRUE(stat);
    EXPECT_EQ(*stat, (ProcPidStat{QStringLiteral("a) b (c)"), 7, 40, 39, 34817, 250, 50, 12300}));

    const std::pair<const char *, std::string_view> malformed[] = {
        {"no parentheses", "42 a S 7 40 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 12300 1 321"},
        {"cut before starttime", "42 (a) S 7 40 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0"},
        {"negative starttime", "42 (a) S 7 40 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 -9 1 3"},
        {"negative utime", "42 (a) S 7 40 39 0 -1 0 0 0 0 0 -250 50 0 0 20 0 1 0 12300 1 3"},
        {"two blanks", "42 (a) S 7  40 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 12300 1 3"},
        {"junk field", "42 (a) S 7 4x 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 12300 1 3"},
        {"empty", ""},
    };
    for (const auto &[description, text] : malformed)
        EXPECT_EQ(parseProcPidStat(text), std::nullopt) << description;
}

TEST(ProcPidStatm, ResidentBytesAreTheSecondFieldTimesThePageSize)
{
    constexpr std::uint64_t page = 4096;
    const std::tuple<const char *, std::string_view, std::uint64_t, std::optional<std::uint64_t>>
        rows[] = {
            {"kernel layout", "2441 270 180 20 0 610 0\n", page, 270 * page},
            {"16 KiB pages", "2441 270 180 20 0 610 0\n", 16384, 270 * 16384},
            {"no newline, two fields only", "9 3", page, 3 * page},
            {"nothing resident", "0 0 0 0 0 0 0\n", page, 0},
            {"largest that fits", "1 4503599627370495 0\n", page, 4503599627370495 * page},
            {"product beyond 64 bits", "1 4503599627370496 0\n", page, std::nullopt},
            {"field beyond 64 bits", "1 18446744073709551616 0\n", 1, std::nullopt},
            {"resident field missing", "2441\n", page, std::nullopt},
            {"negative", "2441 -270 0\n", page, std::nullopt},
            {"junk in the resident field", "2441 27x0 0\n", page, std::nullopt},
            {"junk in the size field", "size 270 0\n", page, std::nullopt},
            {"empty", "", page, std::nullopt},
        };
    for (const auto &[description, text, pageSize, expected] : rows)
        EXPECT_EQ(parseProcPidStatmResidentBytes(text, pageSize), expected) << description;
}

TEST(ProcPidIo, AddsStorageReadsAndWrites)
{
    const std::tuple<const char *, std::string_view, std::optional<std::uint64_t>> rows[] = {
        {"kernel layout",
         "rchar: 9\nwchar: 9\nsyscr: 1\nsyscw: 1\nread_bytes: 4096\nwrite_bytes: "
         "8192\ncancelled_write_bytes: 4096\n",
         12288},
        {"cancelled writes do not pass for writes", "read_bytes: 1\ncancelled_write_bytes: 5\n",
         std::nullopt},
        {"no trailing newline", "write_bytes: 2\nread_bytes: 3", 5},
        {"sum wraps like a counter", "read_bytes: 18446744073709551615\nwrite_bytes: 2\n", 1},
        {"malformed value", "read_bytes: lots\nwrite_bytes: 1\n", std::nullopt},
        {"empty", "", std::nullopt},
    };
    for (const auto &[description, text, expected] : rows)
        EXPECT_EQ(parseProcPidIoDiskBytes(text), expected) << description;
}

TEST(ProcessDisplayName, TheKernelsCutNameIsCompletedFromTheExecutable)
{
    const std::tuple<const char *, const char *, const char *> rows[] = {
        {"kilnwarden-repo", "/usr/bin/kilnwarden-report", "kilnwarden-report"},
        {"bash", "/usr/bin/bash", "bash"},
        {"pytest", "/usr/bin/python3.11", "pytest"}, // a renamed process keeps its own name
        {"", "/usr/bin/node", "node"},
        {"worker-pool-thr", "/usr/bin/python3", "worker-pool-thr"}, // 15 bytes, not a prefix
        {"kilnwarden-repo", "/usr/bin/kilnwarden-repo", "kilnwarden-repo"},
        {"", "/usr/bin/node (deleted)", "node"},
        {"memfd:sealed-91", "/memfd:sealed-91173221a7ea (deleted)", "memfd:sealed-91173221a7ea"},
        // The process's own text, for both readers; only what shows it makes it printable.
        {"two\nlines\x1b[1m", "/usr/bin/two", "two\nlines\x1b[1m"},
        {"",
         "/tmp/evil\xc2\x9b"
         "2J",
         "evil\xc2\x9b"
         "2J"}, // U+009B, the one-character CSI
    };
    for (const auto &[comm, executable, expected] : rows)
        EXPECT_EQ(processDisplayName(comm, executable), expected) << comm;
}

} // namespace
