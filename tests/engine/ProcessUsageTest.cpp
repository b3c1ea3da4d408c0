// The /proc parsers, on recorded lines and on this process.

#include <gtest/gtest.h>

#include "engine/ProcessUsage.h"
#include "support/ProcStatus.h"

namespace orvane {
namespace process_usage_test {

// A real line of /proc/<pid>/stat, with a command name that holds blanks and
// a parenthesis.
constexpr const char* statLine =
    "4242 (odd) name) S 1 4242 4242 0 -1 4194560 1234 0 0 0 250 75 0 0 20 0 3 0 987654 "
    "123456789 2048 18446744073709551615 1 1 0 0 0 0 0 4096 0 0 0 0 17 1 0 0 0 0 0\n";

TEST(ProcessUsage, ParsesCpuTicksAndStartTime) {
    const auto times = ProcessUsage::parseStat(statLine);
    ASSERT_TRUE(times);
    EXPECT_EQ(times->cpuTicks, 325);
    EXPECT_EQ(times->startTicks, 987654);
}

TEST(ProcessUsage, RejectsTruncatedOrGarbledStat) {
    EXPECT_FALSE(ProcessUsage::parseStat(""));
    EXPECT_FALSE(ProcessUsage::parseStat("4242 (name S 1 2 3"));
    EXPECT_FALSE(ProcessUsage::parseStat("4242 (name) S 1 4242 4242 0 -1 4194560"));
    EXPECT_FALSE(ProcessUsage::parseStat(
        "4242 (name) S 1 4242 4242 0 -1 4194560 1234 0 0 0 abc 75 0 0 20 0 3 0 987654 1 2"));
}

TEST(ProcessUsage, ParsesResidentPagesOfStatm) {
    EXPECT_EQ(ProcessUsage::parseStatmResidentPages("52000 3100 1500 10 0 4000 0\n"), 3100);
    EXPECT_FALSE(ProcessUsage::parseStatmResidentPages("52000"));
    EXPECT_FALSE(ProcessUsage::parseStatmResidentPages("52000 x1"));
}

TEST(ProcessUsage, ReadsThisProcess) {
    const auto cpu = ProcessUsage::cpuSeconds();
    const auto age = ProcessUsage::ageSeconds();
    const auto resident = ProcessUsage::residentBytes();
    ASSERT_TRUE(cpu && age && resident);
    EXPECT_GE(*cpu, 0);
    EXPECT_GE(*age, 0);
    EXPECT_LT(*age, 3600);  // a test run is younger than an hour
    const auto kernel = test::residentMegabytesFromStatus();
    ASSERT_TRUE(kernel);
    EXPECT_NEAR(*resident / 1024 / 1024, *kernel, 1.0);
}

}  // namespace
}  // namespace orvane
