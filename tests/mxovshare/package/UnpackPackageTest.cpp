#include "mxovpackage.h"

#include "FolderSnapshot.h"
#include "Listeners.h"
#include "SectionList.h"
#include "TempFolder.h"
#include "ZipForge.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace mxovshare;

namespace {

// Entries that take long enough to be unpacked on several processors.
std::vector<ForgedEntry> LongEntries() {
    std::vector<ForgedEntry> entries;
    for (const char* name : {"1.nc", "2.nc", "a/3.nc", "a/b/4.nc", "5.nc"}) {
        entries.push_back(MakeEntry(name, std::string(1'500'000, *name), true));
    }
    return entries;
}

class UnpackPackageTest : public testing::Test {
protected:
    void SetUp() override {
        m_work.Write(L"p.mxov", ForgeZip({MakeEntry("mxinfo.ini", "[FILEINFO]"), MakeEntry("empty/"),
                                          MakeEntry("a/b/big.txt", std::string(1'000'000, 'b'), true),
                                          MakeEntry("last.txt", "last")}));
    }

    std::wstring Package() const { return m_work / L"p.mxov"; }

    TempFolder m_work;
};

TEST_F(UnpackPackageTest, MakesTheFoldersAboveItsOwn) {
    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"x\\y\\out").ok);
    EXPECT_EQ(m_work.Read(L"x\\y\\out\\last.txt"), "last");
    EXPECT_EQ(m_work.Read(L"x\\y\\out\\a\\b\\big.txt").size(), 1'000'000u);
    EXPECT_TRUE(std::filesystem::is_directory(m_work / L"x\\y\\out\\empty"));
}

TEST_F(UnpackPackageTest, TakesAnEmptyFolderAndASeparatorAtItsEnd) {
    std::filesystem::create_directory(m_work / L"out");
    EXPECT_TRUE(UnpackPackage(Package(), m_work / L"out\\").ok);
    EXPECT_EQ(m_work.Read(L"out\\last.txt"), "last");
}

TEST_F(UnpackPackageTest, LeavesAFolderWithContentAlone) {
    m_work.Write(L"out\\mine.txt", "mine");
    const auto before = TakeSnapshot(m_work.Path());
    const PackageResult result = UnpackPackage(Package(), m_work / L"out");
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.message, L"cannot unpack into \"" + m_work / L"out" + L"\": it is not empty");
    EXPECT_FALSE(UnpackPackage(Package(), m_work / L"out\\mine.txt").ok);
    EXPECT_EQ(TakeSnapshot(m_work.Path()), before);
}

TEST_F(UnpackPackageTest, ReadsTimesWithoutAZoneAsLocalTimes) {
    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"out").ok);
    SYSTEMTIME local = {2024, 1, 0, 1, 12, 0, 0, 0};
    SYSTEMTIME utc = {};
    FILETIME expected = {};
    TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc);
    SystemTimeToFileTime(&utc, &expected);
    const auto files = TakeSnapshot(m_work / L"out");
    EXPECT_EQ(files.at(L"last.txt").modified,
              static_cast<std::uint64_t>(expected.dwHighDateTime) << 32 | expected.dwLowDateTime);
}

TEST_F(UnpackPackageTest, IsCancelledAtAnyMomentWithoutATrace) {
    // What takes no more than a moment is unpacked in one piece.
    m_work.Write(L"p.mxov", ForgeZip(LongEntries()));
    const auto before = TakeSnapshot(m_work.Path());
    for (int passes = 0; passes < 100; ++passes) {
        CancellingProgress progress(passes);
        const PackageResult result = UnpackPackage(Package(), m_work / L"x\\out", &progress);
        if (!progress.HasCancelled()) {
            EXPECT_TRUE(result.ok);
            EXPECT_GT(passes, 6);
            return;
        }
        EXPECT_TRUE(result.cancelled);
        EXPECT_EQ(TakeSnapshot(m_work.Path()), before);
    }
    FAIL() << "it never came to its end";
}

TEST_F(UnpackPackageTest, LeavesNothingOfADamagedPackage) {
    ForgedEntry bad = MakeEntry("z.txt", std::string(1'000'000, 'z'), true);
    bad.local.crc32 = bad.central.crc32 ^= 1;
    m_work.Write(L"bad.mxov", ForgeZip({MakeEntry("a/b/first.txt"), MakeEntry("empty/"), bad}));
    std::filesystem::create_directory(m_work / L"kept");
    const auto before = TakeSnapshot(m_work.Path());
    for (const wchar_t* target : {L"new\\folder", L"kept"}) {
        const PackageResult result = UnpackPackage(m_work / L"bad.mxov", m_work / target);
        EXPECT_EQ(result.message,
                  L"\"" + m_work / L"bad.mxov" + L"\": entry \"z.txt\": its data does not meet its checksum");
        EXPECT_EQ(TakeSnapshot(m_work.Path()), before);
    }
    EXPECT_FALSE(VerifyPackage(m_work / L"bad.mxov").ok);
    std::vector<PackageEntry> entries;
    EXPECT_TRUE(ListPackage(m_work / L"bad.mxov", entries).ok);
}

TEST_F(UnpackPackageTest, UnpacksLongEntriesSideBySide) {
    m_work.Write(L"p.mxov", ForgeZip(LongEntries()));
    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"out").ok);
    for (const ForgedEntry& entry : LongEntries()) {
        const std::wstring name(entry.central.name.begin(), entry.central.name.end());
        EXPECT_EQ(m_work.Read(L"out/" + name), std::string(1'500'000, entry.central.name[0]));
    }
}

TEST_F(UnpackPackageTest, ReportsTheFirstDamagedEntryAndLeavesNothingOfThoseBesideIt) {
    std::vector<ForgedEntry> entries = LongEntries();
    for (const std::size_t damaged : {1, 3}) {
        entries[damaged].local.crc32 = entries[damaged].central.crc32 ^= 1;
    }
    m_work.Write(L"p.mxov", ForgeZip(entries));
    const auto before = TakeSnapshot(m_work.Path());
    const PackageResult result = UnpackPackage(Package(), m_work / L"out");
    EXPECT_EQ(result.message, L"\"" + Package() + L"\": entry \"2.nc\": its data does not meet its checksum");
    EXPECT_EQ(TakeSnapshot(m_work.Path()), before);
}

TEST_F(UnpackPackageTest, NamesAPackageThatCannotBeOpened) {
    std::vector<PackageEntry> entries;
    for (const std::wstring& file :
         {m_work / L"nowhere.mxov", m_work.Path(), std::wstring(L"NUL"), std::wstring()}) {
        const PackageResult result = ListPackage(file, entries);
        EXPECT_FALSE(result.ok);
        EXPECT_NE(result.message.find(L"\"" + file + L"\""), std::wstring::npos);
        EXPECT_FALSE(UnpackPackage(file, m_work / L"out").ok);
        EXPECT_FALSE(std::filesystem::exists(m_work / L"out"));
    }
}

SectionList SectionsIn(const TempFolder& work, const std::string& zip) {
    Information information;
    EXPECT_TRUE(ReadInformation(work.Write(L"i.mxov", zip), information).ok);
    return ListOf(information);
}

TEST_F(UnpackPackageTest, ReadsTheInformationFileWithoutUnpacking) {
    const std::string text = "[FILEINFO]\r\nGCode=GCode\\a.nc\r\n[FILE_HISTORY_1]\r\nBy=me\r\n";
    const auto sections = SectionsIn(m_work, ForgeZip({MakeEntry("MXINFO.INI", text, true)}));
    ASSERT_EQ(sections.size(), 2u);
    EXPECT_EQ(sections[0].name, L"FILEINFO");
    EXPECT_EQ(sections[0].values[0], std::pair(std::wstring(L"GCode"), std::wstring(L"GCode\\a.nc")));
    EXPECT_EQ(sections[1].values[0].second, L"me");
    EXPECT_EQ(m_work.EntryCount(), 2);
}

TEST_F(UnpackPackageTest, PrefersTheInformationFileInTheRoot) {
    const ForgedEntry inner = MakeEntry("Private/mxinfo.ini", "[PRIVATE]\r\na=b\r\n");
    const ForgedEntry root = MakeEntry("mxinfo.ini", "[ROOT]\r\na=b\r\n");
    EXPECT_EQ(SectionsIn(m_work, ForgeZip({inner, root}))[0].name, L"ROOT");
    EXPECT_EQ(SectionsIn(m_work, ForgeZip({inner}))[0].name, L"PRIVATE");
    EXPECT_TRUE(SectionsIn(m_work, ForgeZip({MakeEntry("a.txt")})).empty());
}

} // namespace
