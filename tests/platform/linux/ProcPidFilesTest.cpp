#include "platform/linux/ProcPidFiles.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcessName.h"
#include "support/FixtureTable.h"

#include <gtest/gtest.h>

namespace {

// Rows of tests/fixtures/tables/proc-pid-*: each file's bytes in, the
// parser's value out; an empty file gives nothing.
std::optional<std::uint64_t> number(const std::optional<QByteArray> &field)
{
    return field ? std::optional(field->toULongLong()) : std::nullopt;
}

TEST(ProcPidFiles, ParsersOverTheirTables)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("proc-pid-cmdlines"))) {
        QStringList expected;
        for (std::size_t index = 1; index < row.fields.size(); ++index)
            expected << *row.text(index);
        EXPECT_EQ(parseProcPidCmdline(QByteArrayView(row.fields[0])), expected) << row.where;
    }
    for (const FixtureRow &row : fixtureTable(QStringLiteral("proc-pid-stat-malformed")))
        EXPECT_EQ(parseProcPidStat(row.view(0)), std::nullopt) << row.where;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("proc-pid-statm-resident-bytes"))) {
        EXPECT_EQ(parseProcPidStatmResidentBytes(row.view(0), row.fields[1].toULongLong()),
                  number(row.field(2)))
            << row.where;
    }
    for (const FixtureRow &row : fixtureTable(QStringLiteral("proc-pid-io-disk-bytes")))
        EXPECT_EQ(parseProcPidIoDiskBytes(row.view(0)), number(row.field(1))) << row.where;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("process-display-names"))) {
        EXPECT_EQ(processDisplayName(*row.text(0), *row.text(1)), row.text(2)) << row.where;
    }
    EXPECT_TRUE(parseProcPidCmdline({}).isEmpty());
    EXPECT_EQ(parseProcPidStat(""), std::nullopt);
    EXPECT_EQ(parseProcPidStatmResidentBytes("", 4096), std::nullopt);
    EXPECT_EQ(parseProcPidIoDiskBytes(""), std::nullopt);
}

TEST(ProcPidStatTest, ReadsTheFieldsAfterTheLastParenthesis)
{
    // pid (comm) state ppid pgrp session tty_nr tpgid flags minflt cminflt
    // majflt cmajflt utime stime cutime cstime priority nice threads
    // itrealvalue starttime ...
    const std::string_view line = "42 (a) b (c)) S 7 40 39 34817 -1 0 0 0 0 0 250 50 0 0 20 0 1 0 "
                                  "12300 10000000 321 18446744073709551615 1 1\n";
    EXPECT_EQ(parseProcPidStat(line),
              (ProcPidStat{QStringLiteral("a) b (c)"), 7, 40, 39, 34817, 250, 50, 12300}));
}

} // namespace
