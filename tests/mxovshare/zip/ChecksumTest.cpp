#include "zip/Checksum.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include <zlib.h>

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

TEST(Checksum, IsThatOfZlibForEveryLengthAndPlace) {
    const std::vector<std::uint8_t> noise = Noise(1000);
    for (std::size_t place = 0; place < 20; ++place) {
        for (std::size_t size = 0; size <= 600; ++size) {
            const Bytes bytes = Bytes(noise).subspan(place, size);
            ASSERT_EQ(Checksum(0, bytes), crc32_z(0, bytes.data(), size)) << place << ", " << size;
        }
    }
}

TEST(Checksum, IsThatOfZlibForEveryBit) {
    std::vector<std::uint8_t> bytes(200);
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
        bytes[bit / 8] = static_cast<std::uint8_t>(1 << bit % 8);
        ASSERT_EQ(Checksum(0, bytes), crc32_z(0, bytes.data(), bytes.size())) << bit;
        bytes[bit / 8] = 0;
    }
}

TEST(Checksum, GoesOnFromAnyOther) {
    const std::vector<std::uint8_t> noise = Noise(400'000);
    std::mt19937 generator(12);
    for (int i = 0; i < 300; ++i) {
        const auto before = static_cast<std::uint32_t>(generator());
        const Bytes bytes = Bytes(noise).first(generator() % noise.size());
        ASSERT_EQ(Checksum(before, bytes), crc32_z(before, bytes.data(), bytes.size())) << i;
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
