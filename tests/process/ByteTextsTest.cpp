#include "process/ByteTexts.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(ByteTexts, ChooseTheUnitByTheInputAndAlwaysUseAPoint)
{
    // A locale with a decimal comma must not leak into these texts.
    const ScopedDefaultLocale german(QLocale(QLocale::German, QLocale::Germany));
    // clang-format off
    const std::pair<std::uint64_t, const char *> memory[] = {
        {0, "0 B"}, {999, "999 B"}, {1000, "1 KB"}, {999999, "1000 KB"}, {1500000, "2 MB"},
        {999999999, "1000 MB"}, {1000000000, "1.0 GB"}, {1500000000, "1.5 GB"}, {2500000, "2 MB"},
        {1250000000, "1.2 GB"}, {UINT64_MAX, "18446744073.7 GB"}};
    // clang-format on
    for (const auto &[bytes, text] : memory)
        EXPECT_EQ(memoryText(bytes), QLatin1String(text)) << bytes;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // clang-format off
    const std::pair<double, const char *> rates[] = {
        {0.0, "0 B/s"}, {999.4, "999 B/s"}, {999.5, "1000 B/s"}, {1000.0, "1 KB/s"},
        {1500000.0, "1.5 MB/s"}, {2500000000.0, "2.5 GB/s"},
        // printf's exact ties go to even: 1.25 and 2.5 are exact in binary.
        {1250000.0, "1.2 MB/s"}, {2500.0, "2 KB/s"}, {3500.0, "4 KB/s"}, {1.25e9, "1.2 GB/s"},
        {-5.0, "0 B/s"}, {0.4, "0 B/s"}, {nan, "0 B/s"}, {2e9, "2.0 GB/s"}};
    // clang-format on
    for (const auto &[rate, text] : rates)
        EXPECT_EQ(rateText(rate), QLatin1String(text)) << rate;
}

} // namespace
