#include "zip/EntryReader.h"

#include "MemoryFile.h"
#include "zip/PackageError.h"
#include "zip/ZipDirectory.h"
#include "ZipForge.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

// The content of the package's first entry, or what is wrong with it.
std::string Unpacked(const std::string& zip) {
    const MemoryFile file(zip);
    const auto entries = ReadZipDirectory(file);
    std::string content;
    try {
        ReadEntry(file, entries[0], [&content](Bytes piece) { content.append(piece.begin(), piece.end()); });
    } catch (const PackageError& error) {
        EXPECT_LE(content.size(), entries[0].size);
        return error.what();
    }
    return content;
}

ForgedEntry WithSize(const std::string& content, std::uint32_t size) {
    ForgedEntry entry = MakeEntry("a.txt", content, true);
    entry.local.size = entry.central.size = size;
    return entry;
}

TEST(EntryReader, UnpacksStoredAndDeflatedContent) {
    EXPECT_EQ(Unpacked(ForgeZip({MakeEntry("a.txt", "stored")})), "stored");
    EXPECT_EQ(Unpacked(ForgeZip({MakeEntry("a.txt", std::string(5000, 'd'), true)})), std::string(5000, 'd'));
    EXPECT_EQ(Unpacked(ForgeZip({MakeEntry("a.txt", "", true)})), "");
}

TEST(EntryReader, RefusesAFalseChecksum) {
    for (const bool deflated : {false, true}) {
        ForgedEntry entry = MakeEntry("a.txt", "content", deflated);
        entry.local.crc32 = entry.central.crc32 ^= 1;
        EXPECT_EQ(Unpacked(ForgeZip({entry})), "entry \"a.txt\": its data does not meet its checksum");
    }
}

TEST(EntryReader, RefusesAFalseSize) {
    EXPECT_EQ(Unpacked(ForgeZip({WithSize("content", 6)})),
              "entry \"a.txt\": it unpacks to more than its stated size");
    EXPECT_EQ(Unpacked(ForgeZip({WithSize("content", 8)})),
              "entry \"a.txt\": it unpacks to less than its stated size");
    EXPECT_EQ(Unpacked(ForgeZip({WithSize(std::string(900'000, 'x'), 0)})),
              "entry \"a.txt\": it unpacks to more than its stated size");
}

TEST(EntryReader, RefusesDamagedData) {
    ForgedEntry noise = MakeEntry("a.txt", std::string(1000, 'x'), true);
    noise.data.assign(noise.data.size(), '\xFF');
    EXPECT_EQ(Unpacked(ForgeZip({noise})), "entry \"a.txt\": its data is damaged");

    ForgedEntry cut = MakeEntry("a.txt", "some longer content", true);
    cut.data.resize(cut.data.size() - 3);
    cut.local.packedSize = cut.central.packedSize -= 3;
    EXPECT_EQ(Unpacked(ForgeZip({cut})), "entry \"a.txt\": its data is cut off");

    ForgedEntry longer = MakeEntry("a.txt", "some longer content", true);
    longer.data += "more";
    longer.local.packedSize = longer.central.packedSize += 4;
    EXPECT_EQ(Unpacked(ForgeZip({longer})), "entry \"a.txt\": its data goes on behind its end");

    ForgedEntry none = MakeEntry("a.txt", "x", true);
    none.data.clear();
    none.local.packedSize = none.central.packedSize = 0;
    EXPECT_EQ(Unpacked(ForgeZip({none})), "entry \"a.txt\": its data is cut off");
}

TEST(EntryReader, ReadsNothingWholeBeyondTheLimit) {
    const MemoryFile file(ForgeZip({MakeEntry("a.txt", std::string(2048, 'x'), true)}));
    const auto entries = ReadZipDirectory(file);
    EXPECT_EQ(ReadWholeEntry(file, entries[0], 2048).size(), 2048u);
    EXPECT_THROW(ReadWholeEntry(file, entries[0], 2047), PackageError);
}

// A damaged package is refused or unpacks to the very same content; names alone may change.
TEST(EntryReader, NeverGivesOtherContentForAFlippedBit) {
    const std::string zip = ForgeZip({MakeEntry("a.txt", std::string(400, 'x') + "end", true)});
    int accepted = 0;
    for (std::size_t bit = 0; bit < zip.size() * 8; ++bit) {
        std::string damaged = zip;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        try {
            const MemoryFile file(damaged);
            for (const ZipEntry& entry : ReadZipDirectory(file)) {
                EXPECT_EQ(ReadWholeEntry(file, entry, 10'000), std::string(400, 'x') + "end") << bit;
            }
            ++accepted;
        } catch (const PackageError&) {
        }
    }
    EXPECT_LT(accepted, static_cast<int>(zip.size() * 8 / 3));
}

} // namespace
