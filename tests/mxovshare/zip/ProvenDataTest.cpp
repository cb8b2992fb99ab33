#include "zip/ProvenData.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

ZipEntry Deflated(std::uint64_t size, std::uint32_t crc32) {
    ZipEntry entry;
    entry.method = 8;
    entry.size = size;
    entry.packedSize = size / 2;
    entry.crc32 = crc32;
    return entry;
}

TEST(ProvenData, KnowsWhatWasAddedAndNothingElse) {
    ProvenData data;
    const ZipEntry entry = Deflated(1000, 7);
    EXPECT_FALSE(data.Has(entry, 5));
    data.Add(entry, 5);
    EXPECT_TRUE(data.Has(entry, 5));
    EXPECT_FALSE(data.Has(entry, 6));
    EXPECT_FALSE(data.Has(Deflated(1000, 8), 5));
    EXPECT_FALSE(data.Has(Deflated(1002, 7), 5));
    ZipEntry longer = entry;
    ++longer.packedSize;
    EXPECT_FALSE(data.Has(longer, 5));
    data.Forget();
    EXPECT_FALSE(data.Has(entry, 5));
}

TEST(ProvenData, HoldsWhatIsNotPackedAgainstItsOwnChecksum) {
    ProvenData data;
    ZipEntry entry = Deflated(1000, 7);
    entry.method = 0;
    entry.packedSize = entry.size;
    EXPECT_TRUE(data.Has(entry, 7));
    data.Add(entry, 8);
    EXPECT_FALSE(data.Has(entry, 8));
}

TEST(ProvenData, RemembersNoMoreThanItMay) {
    ProvenData data;
    for (std::size_t i = 0; i <= ProvenData::kMost; ++i) {
        data.Add(Deflated(2 * i, 1), 2);
    }
    EXPECT_TRUE(data.Has(Deflated(2 * ProvenData::kMost, 1), 2));
    EXPECT_FALSE(data.Has(Deflated(2, 1), 2));
}

} // namespace
