#include "zip/Checksum.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace mxovshare;

namespace {

std::vector<std::uint8_t> Noise(std::size_t size) {
    std::mt19937 generator(11);
    std::vector<std::uint8_t> noise(size);
    for (std::uint8_t& byte : noise) {
        byte = static_cast<std::uint8_t>(generator());
    }
    return noise;
}

TEST(Checksum, IsCrc32) {
    const std::string digits = "123456789";
    const Bytes bytes(reinterpret_cast<const std::uint8_t*>(digits.data()), digits.size());
    EXPECT_EQ(Checksum(0, bytes), 0xCBF43926u);
    EXPECT_EQ(Checksum(0, {}), 0u);
}

TEST(Checksum, ContinuesFromAnyOther) {
    const std::vector<std::uint8_t> noise = Noise(40'000);
    const Bytes bytes(noise);
    for (std::size_t cut = 0; cut <= noise.size(); cut += 401) {
        ASSERT_EQ(Checksum(Checksum(0, bytes.first(cut)), bytes.subspan(cut)), Checksum(0, bytes)) << cut;
    }
}

TEST(Checksum, IsCombinedFromThoseOfTwoParts) {
    const std::vector<std::uint8_t> noise = Noise(3000);
    const Bytes bytes(noise);
    for (const std::size_t cut : {0, 1, 64, 1500, 2999, 3000}) {
        EXPECT_EQ(CombinedChecksum(Checksum(0, bytes.first(cut)), Checksum(0, bytes.subspan(cut)),
                                   static_cast<std::uint32_t>(noise.size() - cut)),
                  Checksum(0, bytes));
    }
}

} // namespace
