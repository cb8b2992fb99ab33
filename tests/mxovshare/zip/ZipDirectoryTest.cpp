#include "zip/ZipDirectory.h"

#include "MemoryFile.h"
#include "zip/PackageError.h"
#include "ZipForge.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

// What refuses the package; "accepted" when nothing does.
std::string Refusal(const std::string& zip, const ZipLimits& limits = {}) {
    try {
        ReadZipDirectory(MemoryFile(zip), limits);
    } catch (const PackageError& error) {
        return error.what();
    }
    return "accepted";
}

std::string RefusalOf(const ForgedEntry& entry) {
    return Refusal(ForgeZip({entry}));
}

// Expects a refusal that names the entry "a.txt" and holds the reason.
void ExpectRefused(const ForgedEntry& entry, const std::string& reason) {
    const std::string refusal = RefusalOf(entry);
    EXPECT_NE(refusal.find(reason), std::string::npos) << refusal;
    EXPECT_NE(refusal.find("\"a.txt\""), std::string::npos) << refusal;
}

TEST(ZipDirectory, ReadsAnHonestPackage) {
    const std::string zip = ForgeZip({MakeEntry("mxinfo.ini", "[FILEINFO]"), MakeEntry("empty/"),
                                      MakeEntry("GCode/a.nc", std::string(500, 'G'), true)});
    const auto entries = ReadZipDirectory(MemoryFile(zip));
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].name, "mxinfo.ini");
    EXPECT_EQ(entries[0].size, 10u);
    EXPECT_EQ(zip.substr(entries[0].dataOffset, 10), "[FILEINFO]");
    EXPECT_EQ(entries[1].name, "empty");
    EXPECT_TRUE(entries[1].isFolder);
    EXPECT_EQ(entries[2].size, 500u);
    EXPECT_LT(entries[2].packedSize, 50u);
}

TEST(ZipDirectory, ReadsPackagesWithoutEntriesAndWithAComment) {
    EXPECT_EQ(Refusal(ForgeZip({})), "accepted");
    ForgedEnd end;
    end.comment = "PK\5\6 said nobody";
    EXPECT_EQ(Refusal(ForgeZip({MakeEntry("a.txt")}, end)), "accepted");
}

TEST(ZipDirectory, RefusesWhatIsNoPackage) {
    EXPECT_NE(Refusal("").find("too short"), std::string::npos);
    EXPECT_NE(Refusal(std::string(5000, 'x')).find("not a package"), std::string::npos);
    EXPECT_NE(Refusal(ForgeZip({MakeEntry("a.txt")}) + "tail").find("not a package"), std::string::npos);
}

TEST(ZipDirectory, RefusesEveryTruncation) {
    const std::string zip = ForgeZip({MakeEntry("a.txt"), MakeEntry("b.txt", std::string(300, 'b'), true)});
    for (std::size_t size = 0; size < zip.size(); ++size) {
        EXPECT_NE(Refusal(zip.substr(0, size)), "accepted") << size;
    }
}

TEST(ZipDirectory, RefusesEndRecordsThatLie) {
    const std::vector<ForgedEntry> entries = {MakeEntry("a.txt"), MakeEntry("b.txt")};
    ForgedEnd more, fewer, longer, shorter, earlier, later, disk;
    more.countError = 1;
    fewer.countError = -1;
    longer.sizeError = 1;
    shorter.sizeError = -1;
    earlier.offsetError = -1;
    later.offsetError = 1;
    disk.disk = 1;
    for (const ForgedEnd& end : {more, fewer, longer, shorter, earlier, later, disk}) {
        EXPECT_NE(Refusal(ForgeZip(entries, end)), "accepted");
    }
    ForgedEnd many;
    many.countError = 60000;
    EXPECT_NE(Refusal(ForgeZip(entries, many)).find("more entries than"), std::string::npos);
}

TEST(ZipDirectory, RefusesForbiddenNamesAndPrintsThemOnOneLine) {
    EXPECT_EQ(RefusalOf(MakeEntry("../evil.txt")),
              "entry \"../evil.txt\": the name leads through \".\" or \"..\"");
    EXPECT_EQ(RefusalOf(MakeEntry("a\n\xFF")), "entry \"a\\x0A\\xFF\": the name is not valid UTF-8");
    EXPECT_EQ(RefusalOf(MakeEntry("/")), "entry \"\": the name is empty");
    EXPECT_LT(RefusalOf(MakeEntry(std::string(60000, 'x'))).size(), 500u);
}

TEST(ZipDirectory, RefusesLinksAndSpecialFiles) {
    ForgedEntry link = MakeEntry("a.txt", "/etc/passwd");
    link.attributes = 0120777u << 16;
    ExpectRefused(link, "link");
    link.attributes = 0020666u << 16;
    ExpectRefused(link, "special");
    link.attributes = 0x400;
    ExpectRefused(link, "link");
    link.attributes = 0040755u << 16;
    ExpectRefused(link, "special");
    link.attributes = 0100644u << 16;
    EXPECT_EQ(RefusalOf(link), "accepted");
}

TEST(ZipDirectory, RefusesWhatItCannotUnpack) {
    for (const std::uint16_t flag : {0x0001, 0x0041, 0x2000}) {
        ForgedEntry entry = MakeEntry("a.txt");
        entry.local.flags = entry.central.flags = static_cast<std::uint16_t>(flag | 0x0800);
        ExpectRefused(entry, "encrypted");
    }
    ForgedEntry method = MakeEntry("a.txt");
    method.local.method = method.central.method = 14;
    ExpectRefused(method, "unknown method 14");
    ForgedEntry disk = MakeEntry("a.txt");
    disk.disk = 1;
    ExpectRefused(disk, "another disk");
    ForgedEntry folder = MakeEntry("a.txt");
    folder.local.name = folder.central.name = "a.txt/";
    ExpectRefused(folder, "folder that holds data");
}

TEST(ZipDirectory, RefusesHeadersThatContradictTheDirectory) {
    const auto refuse = [](void (*change)(ForgedHeader&)) {
        ForgedEntry entry = MakeEntry("a.txt", std::string(100, 'a'), true);
        change(entry.local);
        ExpectRefused(entry, "its header contradicts the directory");
    };
    refuse([](ForgedHeader& header) { header.name = "b.txt"; });
    refuse([](ForgedHeader& header) { header.method = 0; });
    refuse([](ForgedHeader& header) { header.crc32 ^= 1; });
    refuse([](ForgedHeader& header) { header.size += 1; });
    refuse([](ForgedHeader& header) { header.packedSize -= 1; });
    refuse([](ForgedHeader& header) { header.flags |= 8; });
    refuse([](ForgedHeader& header) { header.flags |= 1; });
}

TEST(ZipDirectory, ReadsDataDescriptorsAndRefusesFalseOnes) {
    ForgedEntry entry = MakeEntry("a.txt", std::string(100, 'a'), true);
    const ForgedHeader honest = entry.central;
    entry.local.flags = entry.central.flags = 0x0808;
    entry.local.crc32 = entry.local.packedSize = entry.local.size = 0;
    const std::string packed = entry.data;
    const std::string narrow = Number(honest.packedSize, 4) + Number(honest.size, 4);
    const std::string wide = Number(honest.packedSize, 8) + Number(honest.size, 8);
    for (const std::string& sizes : {narrow, wide}) {
        for (const std::string mark : {"PK\7\10", ""}) {
            entry.data = packed;
            entry.data.append(mark).append(Number(honest.crc32, 4)).append(sizes);
            EXPECT_EQ(RefusalOf(entry), "accepted");
            entry.data[packed.size() + mark.size()] ^= 1;
            ExpectRefused(entry, "descriptor");
        }
    }
    entry.data = packed;
    ExpectRefused(entry, "descriptor");
}

TEST(ZipDirectory, RefusesSizesThatCannotBe) {
    ForgedEntry stored = MakeEntry("a.txt");
    stored.central.size = stored.local.size += 1;
    ExpectRefused(stored, "contradict");
    ForgedEntry deflated = MakeEntry("a.txt", "x", true);
    deflated.central.size = deflated.local.size = 1'000'000;
    ExpectRefused(deflated, "more than its data can hold");
    ForgedEntry wide = MakeEntry("a.txt");
    wide.central.size = 0xFFFFFFFF;
    ExpectRefused(wide, "ZIP64");
}

TEST(ZipDirectory, RefusesOverlaps) {
    ForgedEntry first = MakeEntry("a.txt");
    ForgedEntry second = MakeEntry("b.txt");
    second.offset = 0;
    EXPECT_NE(Refusal(ForgeZip({first, second})), "accepted");

    // The second header lies inside the data of the first.
    const std::string inner = ForgeZip({MakeEntry("b.txt", "inner")});
    ForgedEntry outer = MakeEntry("a.txt", inner);
    ForgedEntry hidden = MakeEntry("b.txt", "inner");
    hidden.offset = 35;
    EXPECT_NE(Refusal(ForgeZip({outer, hidden})).find("overlaps"), std::string::npos);

    // A duplicate header is reported with its name.
    ForgedEntry again = MakeEntry("a.txt");
    again.offset = 0;
    EXPECT_NE(Refusal(ForgeZip({first, again})).find("occurs twice"), std::string::npos);

    ForgedEntry beyond = MakeEntry("a.txt");
    beyond.offset = 100'000;
    ExpectRefused(beyond, "overlaps");
    ForgedEntry nowhere = MakeEntry("a.txt");
    nowhere.offset = 3;
    ExpectRefused(nowhere, "header is missing");
}

TEST(ZipDirectory, RefusesNamesThatMeetOnADisk) {
    const auto refusal = [](const std::string& first, const std::string& second) {
        return Refusal(ForgeZip({MakeEntry(first), MakeEntry("between"), MakeEntry(second)}));
    };
    EXPECT_NE(refusal("a.txt", "a.txt").find("occurs twice"), std::string::npos);
    EXPECT_NE(refusal("Docs/a.txt", "docs/A.TXT").find("differs only in case"), std::string::npos);
    EXPECT_NE(refusal("\xC3\xA4", "\xC3\x84").find("differs only in case"), std::string::npos);
    EXPECT_NE(refusal("a", "A/").find("differs only in case"), std::string::npos);
    EXPECT_NE(refusal("a", "A/b").find("which is a file"), std::string::npos);
    EXPECT_NE(refusal("a/b/c", "a/b").find("which is a file"), std::string::npos);
    EXPECT_EQ(refusal("a/", "a/b"), "accepted");
    EXPECT_EQ(refusal("a", "a-b/c"), "accepted");
    EXPECT_EQ(refusal("Docs/a", "docs/b"), "accepted");
}

TEST(ZipDirectory, RefusesMoreThanItsLimits) {
    const std::string zip =
        ForgeZip({MakeEntry("a.txt", std::string(300'000, 'a'), true), MakeEntry("b.txt")});
    ZipLimits limits;
    limits.freeExpansion = 300'007;
    EXPECT_EQ(Refusal(zip, limits), "accepted");
    limits.freeExpansion = 300'006;
    EXPECT_EQ(Refusal(zip, limits).find("entry \"b.txt\": the package would unpack to more than"), 0u);
    limits.expansion = 1000;
    EXPECT_EQ(Refusal(zip, limits), "accepted");
    limits.total = 300'000;
    EXPECT_NE(Refusal(zip, limits), "accepted");
    limits = {};
    limits.entries = 2;
    EXPECT_EQ(Refusal(zip, limits), "accepted");
    limits.entries = 1;
    EXPECT_NE(Refusal(zip, limits).find("more than 1 entries"), std::string::npos);
}

TEST(ZipDirectory, ReadsZip64AndRefusesContradictions) {
    ForgedEntry entry = MakeEntry("a.txt");
    const std::string extra = Number(1, 2) + Number(16, 2) + Number(7, 8) + Number(7, 8);
    for (ForgedHeader* header : {&entry.local, &entry.central}) {
        header->size = header->packedSize = 0xFFFFFFFF;
        header->extra = extra;
    }
    EXPECT_EQ(RefusalOf(entry), "accepted");
    entry.local.extra = Number(1, 2) + Number(16, 2) + Number(8, 8) + Number(7, 8);
    ExpectRefused(entry, "contradicts");
    entry.local.extra = extra;
    entry.central.extra = extra.substr(0, 12);
    ExpectRefused(entry, "ZIP64");
}

TEST(ZipDirectory, TakesTheMostExactTime) {
    ForgedEntry entry = MakeEntry("a.txt");
    EXPECT_EQ(ReadZipDirectory(MemoryFile(ForgeZip({entry})))[0].modified.fileTime, 0u);
    EXPECT_EQ(ReadZipDirectory(MemoryFile(ForgeZip({entry})))[0].modified.dosTime, 0x58216000u);
    const std::string timestamp = Number(0x5455, 2) + Number(5, 2) + Number(1, 1) + Number(1'700'000'000, 4);
    entry.central.extra = timestamp;
    EXPECT_EQ(ReadZipDirectory(MemoryFile(ForgeZip({entry})))[0].modified.fileTime, 133'444'736'000'000'000u);
    entry.central.extra = timestamp + Number(0x000A, 2) + Number(32, 2) + Number(0, 4) + Number(1, 2) +
                          Number(24, 2) + Number(133'444'736'001'234'567, 8) + Number(0, 16);
    EXPECT_EQ(ReadZipDirectory(MemoryFile(ForgeZip({entry})))[0].modified.fileTime, 133'444'736'001'234'567u);
}

} // namespace
