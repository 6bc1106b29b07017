#include "platform/linux/ProcPidFiles.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcessName.h"

#include "support/RowName.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using namespace std::string_view_literals;

struct CmdlineCase {
    const char *description;
    std::string_view bytes;
    QStringList expected;
};

void PrintTo(const CmdlineCase &row, std::ostream *out)
{
    *out << row.description;
}

class ProcPidCmdlineTest : public testing::TestWithParam<CmdlineCase> {};

TEST_P(ProcPidCmdlineTest, SplitsOnNulRuns)
{
    const CmdlineCase &row = GetParam();
    EXPECT_EQ(parseProcPidCmdline(QByteArrayView(row.bytes.data(), qsizetype(row.bytes.size()))),
              row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cmdlines, ProcPidCmdlineTest,
    testing::Values(CmdlineCase{"empty", ""sv, {}}, CmdlineCase{"only NULs", "\0\0\0"sv, {}},
                    CmdlineCase{"ordinary", "npm\0run\0dev\0"sv, {"npm", "run", "dev"}},
                    CmdlineCase{"empty arguments vanish", "make\0\0\0test\0\0"sv, {"make", "test"}},
                    CmdlineCase{"empty argv0 vanishes", "\0sh\0"sv, {"sh"}},
                    CmdlineCase{"no terminating NUL", "npm\0start"sv, {"npm", "start"}},
                    CmdlineCase{"rewritten title", "sshd: x@pts/0"sv, {"sshd: x@pts/0"}},
                    CmdlineCase{"invalid UTF-8 left out", "a\0\xff\0b\xc3\0c\0"sv, {"a", "c"}},
                    CmdlineCase{
                        "valid UTF-8 kept", "\xe6\xb8\xa9\0caf\xc3\xa9\0"sv, {"温", "café"}},
                    CmdlineCase{"invalid last argument without NUL", "a\0\xed\xa0\x80"sv, {"a"}}),
    RowName());

struct Utf8Case {
    const char *description;
    std::string_view bytes;
    bool valid;
};

void PrintTo(const Utf8Case &row, std::ostream *out)
{
    *out << row.description;
}

class Utf8ValidityTest : public testing::TestWithParam<Utf8Case> {};

TEST_P(Utf8ValidityTest, AcceptsOnlyWellFormedUtf8)
{
    EXPECT_EQ(isValidUtf8(GetParam().bytes), GetParam().valid);
}

INSTANTIATE_TEST_SUITE_P(
    Sequences, Utf8ValidityTest,
    testing::Values(Utf8Case{"empty", ""sv, true}, Utf8Case{"ASCII", "--token=abc"sv, true},
                    Utf8Case{"two bytes", "\xc3\xa9"sv, true},
                    Utf8Case{"three bytes", "\xe2\x82\xac"sv, true},
                    Utf8Case{"four bytes", "\xf0\x9f\x94\xa5"sv, true},
                    Utf8Case{"highest code point", "\xf4\x8f\xbf\xbf"sv, true},
                    Utf8Case{"stray continuation", "\x80"sv, false},
                    Utf8Case{"overlong two bytes", "\xc0\xaf"sv, false},
                    Utf8Case{"overlong three bytes", "\xe0\x80\xaf"sv, false},
                    Utf8Case{"overlong four bytes", "\xf0\x80\x80\xaf"sv, false},
                    Utf8Case{"surrogate", "\xed\xa0\x80"sv, false},
                    Utf8Case{"above U+10FFFF", "\xf4\x90\x80\x80"sv, false},
                    Utf8Case{"lead byte F5", "\xf5\x80\x80\x80"sv, false},
                    Utf8Case{"truncated sequence", "ab\xe2\x82"sv, false},
                    Utf8Case{"bad continuation", "\xe2\x28\xa1"sv, false},
                    Utf8Case{"Latin-1 text", "caf\xe9"sv, false}),
    RowName());

struct NumberCase {
    const char *description;
    std::string_view text;
    std::optional<std::uint64_t> expected;
};

void PrintTo(const NumberCase &row, std::ostream *out)
{
    *out << row.description;
}

TEST(ProcPidStatTest, ReadsTheFieldsAfterTheLastParenthesis)
{
    // pid (comm) state ppid pgrp session tty_nr tpgid flags minflt cminflt
    // majflt cmajflt utime stime cutime cstime priority nice threads
    // itrealvalue starttime vsize rss ...
    const std::string_view line = "42 (a) b (c)) S 7 40 39 34817 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 "
                                  "12300 10000000 321 18446744073709551615 1 1\n";
    const std::optional<ProcPidStat> stat = parseProcPidStat(line);
    ASSERT_TRUE(stat);
    EXPECT_EQ(*stat,
              (ProcPidStat{QStringLiteral("a) b (c)"), 7, 40, 39, 34817, 250, 50, 12300, 321}));

    struct Row {
        const char *description;
        std::string_view text;
    };
    const Row malformed[] = {
        {"no parentheses", "42 a S 7 40 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 12300 1 321"},
        {"cut before rss", "42 (a) S 7 40 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 12300 1"},
        {"negative rss", "42 (a) S 7 40 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 12300 1 -3"},
        {"negative utime", "42 (a) S 7 40 39 0 -1 0 0 0 0 0 -250 50 0 0 20 0 1 0 12300 1 3"},
        {"two blanks", "42 (a) S 7  40 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 12300 1 3"},
        {"junk field", "42 (a) S 7 4x 39 0 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 12300 1 3"},
        {"empty", ""},
    };
    for (const Row &row : malformed)
        EXPECT_EQ(parseProcPidStat(row.text), std::nullopt) << row.description;
}

class ProcPidIoTest : public testing::TestWithParam<NumberCase> {};

TEST_P(ProcPidIoTest, AddsStorageReadsAndWrites)
{
    EXPECT_EQ(parseProcPidIoDiskBytes(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Io, ProcPidIoTest,
    testing::Values(
        NumberCase{"kernel layout",
                   "rchar: 9\nwchar: 9\nsyscr: 1\nsyscw: 1\nread_bytes: 4096\nwrite_bytes: "
                   "8192\ncancelled_write_bytes: 4096\n",
                   12288},
        NumberCase{"cancelled writes do not pass for writes",
                   "read_bytes: 1\ncancelled_write_bytes: 5\n", std::nullopt},
        NumberCase{"no trailing newline", "write_bytes: 2\nread_bytes: 3", 5},
        NumberCase{"sum wraps like a counter", "read_bytes: 18446744073709551615\nwrite_bytes: 2\n",
                   1},
        NumberCase{"malformed value", "read_bytes: lots\nwrite_bytes: 1\n", std::nullopt},
        NumberCase{"empty", "", std::nullopt}),
    RowName());

} // namespace

namespace {

TEST(ProcessDisplayName, TheKernelsCutNameIsCompletedFromTheExecutable)
{
    struct Row {
        const char *comm;
        const char *executable;
        const char *expected;
    };
    const std::vector<Row> rows = {
        {"kilnwarden-repo", "/usr/bin/kilnwarden-report", "kilnwarden-report"},
        {"bash", "/usr/bin/bash", "bash"},
        {"pytest", "/usr/bin/python3.11", "pytest"}, // a renamed process keeps its own name
        {"", "/usr/bin/node", "node"},
        {"worker-pool-thr", "/usr/bin/python3", "worker-pool-thr"}, // 15 bytes, not a prefix
        {"kilnwarden-repo", "/usr/bin/kilnwarden-repo", "kilnwarden-repo"},
        {"", "/usr/bin/node (deleted)", "node"},
        {"memfd:sealed-91", "/memfd:sealed-91173221a7ea (deleted)", "memfd:sealed-91173221a7ea"},
        {"two\nlines\x1b[1m", "/usr/bin/two", "two?lines?[1m"}, // the identity reader's too
        {"",
         "/tmp/evil\xc2\x9b"
         "2J",
         "evil?2J"}, // U+009B, the one-character CSI
    };
    for (const auto &row : rows)
        EXPECT_EQ(processDisplayName(row.comm, row.executable), row.expected) << row.comm;
}

} // namespace
