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
    VerifiedEntryCache cache;
    const ZipEntry entry = Deflated(1000, 7);
    EXPECT_NE(cache.PackedChecksum(entry), 5u);
    cache.Add(entry, 5);
    EXPECT_EQ(cache.PackedChecksum(entry), 5u);
    EXPECT_NE(cache.PackedChecksum(entry), 6u);
    EXPECT_NE(cache.PackedChecksum(Deflated(1000, 8)), 5u);
    EXPECT_NE(cache.PackedChecksum(Deflated(1002, 7)), 5u);
    ZipEntry longer = entry;
    ++longer.packedSize;
    EXPECT_NE(cache.PackedChecksum(longer), 5u);
    cache.Clear();
    EXPECT_NE(cache.PackedChecksum(entry), 5u);
}

TEST(VerifiedEntryCache, HoldsWhatIsNotPackedAgainstItsOwnChecksum) {
    VerifiedEntryCache cache;
    ZipEntry entry = Deflated(1000, 7);
    entry.method = 0;
    entry.packedSize = entry.size;
    EXPECT_EQ(cache.PackedChecksum(entry), 7u);
    cache.Add(entry, 8);
    EXPECT_NE(cache.PackedChecksum(entry), 8u);
}

TEST(VerifiedEntryCache, RemembersNoMoreThanItMay) {
    VerifiedEntryCache cache;
    for (std::size_t i = 0; i <= VerifiedEntryCache::kMaxEntries; ++i) {
        cache.Add(Deflated(2 * i, 1), 2);
    }
    EXPECT_EQ(cache.PackedChecksum(Deflated(2 * VerifiedEntryCache::kMaxEntries, 1)), 2u);
    EXPECT_NE(cache.PackedChecksum(Deflated(2, 1)), 2u);
}

} // namespace
