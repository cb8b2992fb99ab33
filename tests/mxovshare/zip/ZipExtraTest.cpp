#include "zip/ZipExtra.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using namespace mxovshare;

namespace {

constexpr std::uint64_t kSecond = 10'000'000;
constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;

// The extra fields for a time in seconds since 1970.
std::string Extra(std::int64_t seconds) {
    std::vector<std::uint8_t> extra;
    AppendTimes({.fileTime = static_cast<std::uint64_t>(seconds + kSecondsTo1970) * kSecond, .dosTime = 0},
                extra);
    return {extra.begin(), extra.end()};
}

const std::string kTimestamp("UT\5\0\1", 5);

TEST(ZipExtra, StatesATimestampWhereItHasRoom) {
    EXPECT_TRUE(Extra(0).starts_with(kTimestamp + std::string(4, '\0')));
    EXPECT_TRUE(Extra(std::numeric_limits<std::int32_t>::max()).starts_with(kTimestamp + "\xFF\xFF\xFF\x7F"));
    EXPECT_TRUE(Extra(std::numeric_limits<std::int32_t>::min())
                    .starts_with(kTimestamp + std::string("\0\0\0\x80", 4)));
}

TEST(ZipExtra, StatesNoTimestampBeyondItsRange) {
    for (const std::int64_t seconds : {std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1,
                                       std::int64_t{std::numeric_limits<std::int32_t>::min()} - 1}) {
        const std::string extra = Extra(seconds);
        EXPECT_TRUE(extra.starts_with(std::string("\x0A\0", 2))) << seconds;
        ZipTime time;
        ReadTimes({reinterpret_cast<const std::uint8_t*>(extra.data()), extra.size()}, time);
        EXPECT_EQ(time.fileTime, static_cast<std::uint64_t>(seconds + kSecondsTo1970) * kSecond);
    }
}

} // namespace
