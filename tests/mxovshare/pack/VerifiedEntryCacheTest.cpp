#include "pack/VerifiedEntryCache.h"

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

TEST(VerifiedEntryCache, KnowsWhatWasAddedAndNothingElse) {
    VerifiedEntryCache data;
    const ZipEntry entry = Deflated(1000, 7);
    EXPECT_FALSE(data.Contains(entry, 5));
    data.Add(entry, 5);
    EXPECT_TRUE(data.Contains(entry, 5));
    EXPECT_FALSE(data.Contains(entry, 6));
    EXPECT_FALSE(data.Contains(Deflated(1000, 8), 5));
    EXPECT_FALSE(data.Contains(Deflated(1002, 7), 5));
    ZipEntry longer = entry;
    ++longer.packedSize;
    EXPECT_FALSE(data.Contains(longer, 5));
    data.Clear();
    EXPECT_FALSE(data.Contains(entry, 5));
}

TEST(VerifiedEntryCache, HoldsWhatIsNotPackedAgainstItsOwnChecksum) {
    VerifiedEntryCache data;
    ZipEntry entry = Deflated(1000, 7);
    entry.method = 0;
    entry.packedSize = entry.size;
    EXPECT_TRUE(data.Contains(entry, 7));
    data.Add(entry, 8);
    EXPECT_FALSE(data.Contains(entry, 8));
}

TEST(VerifiedEntryCache, RemembersNoMoreThanItMay) {
    VerifiedEntryCache data;
    for (std::size_t i = 0; i <= VerifiedEntryCache::kMaxEntries; ++i) {
        data.Add(Deflated(2 * i, 1), 2);
    }
    EXPECT_TRUE(data.Contains(Deflated(2 * VerifiedEntryCache::kMaxEntries, 1), 2));
    EXPECT_FALSE(data.Contains(Deflated(2, 1), 2));
}

} // namespace
