// What of the old package goes into the new one as it is.
#include "mxovpackage.h"

#include "FolderSnapshot.h"
#include "TempFolder.h"
#include "ZipForge.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

using namespace mxovshare;

namespace {

constexpr SYSTEMTIME kTime = {2024, 5, 3, 15, 7, 31, 50, 0};

class ReuseCandidatesTest : public testing::Test {
protected:
    void SetUp() override {
        m_folder.Write(L"mxinfo.ini", "[FILEINFO]");
        Write(m_content);
    }

    void Write(const std::string& content, const SYSTEMTIME& time = kTime) const {
        m_folder.Write(L"doc.txt", content);
        m_folder.SetTime(L"doc.txt", time);
    }

    // An old package in which the document stands uncompressed, as this library would never pack it.
    static ForgedEntry Stored(const std::string& content) {
        FILETIME time = {};
        SystemTimeToFileTime(&kTime, &time);
        const std::uint64_t ticks = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
        ForgedEntry entry = MakeEntry("doc.txt", content);
        entry.central.extra = entry.local.extra = Number(0x000A, 2) + Number(32, 2) + Number(0, 4) +
                                                  Number(1, 2) + Number(24, 2) + Number(ticks, 8) +
                                                  Number(ticks, 8) + Number(ticks, 8);
        return entry;
    }

    // Packs the folder over an old package; returns whether the document was taken from there.
    bool IsTakenFrom(const std::string& oldPackage) {
        m_work.Write(L"p.mxov", oldPackage);
        const PackageResult result = CreatePackage(m_folder.Path(), Package());
        EXPECT_TRUE(result.ok);
        EXPECT_TRUE(UnpackPackage(Package(), m_work / L"out").ok);
        EXPECT_EQ(TakeSnapshot(m_work / L"out"), TakeSnapshot(m_folder.Path()));
        RemoveTree(m_work / L"out");
        EXPECT_EQ(m_work.EntryCount(), 1);
        std::vector<PackageEntry> entries;
        EXPECT_TRUE(ListPackage(Package(), entries).ok);
        return entries.size() == 2 && entries[1].packedSize == entries[1].size;
    }

    static std::string Noise(std::size_t size) {
        std::mt19937 generator(9);
        std::string noise(size, '\0');
        for (char& byte : noise) {
            byte = static_cast<char>(generator());
        }
        return noise;
    }

    std::wstring Package() const { return m_work / L"p.mxov"; }

    const std::string m_content = std::string(300'000, 'd') + std::string(300'000, 'e');
    TempFolder m_folder;
    TempFolder m_work;
};

TEST_F(ReuseCandidatesTest, TakesWhatIsTheSame) {
    EXPECT_TRUE(IsTakenFrom(ForgeZip({MakeEntry("other.txt"), Stored(m_content)})));
}

TEST_F(ReuseCandidatesTest, ComparesTheContentEvenWhenSizeAndTimeAreTheSame) {
    std::string other = m_content;
    other[400'000] = '?';
    EXPECT_FALSE(IsTakenFrom(ForgeZip({Stored(other)})));
}

// Several threads take a part of it each.
TEST_F(ReuseCandidatesTest, ComparesALargeDocumentToItsEnd) {
    std::string content;
    content.resize(20'000'000, 'd');
    Write(content);
    EXPECT_TRUE(IsTakenFrom(ForgeZip({Stored(content)})));
    for (const std::size_t place : {0, 9'000'000, 19'999'999}) {
        std::string other = content;
        other[place] = '?';
        EXPECT_FALSE(IsTakenFrom(ForgeZip({Stored(other)}))) << place;
    }
}

TEST_F(ReuseCandidatesTest, PacksAnewWhatWasWrittenSince) {
    SYSTEMTIME later = kTime;
    later.wSecond += 1;
    Write(m_content, later);
    EXPECT_FALSE(IsTakenFrom(ForgeZip({Stored(m_content)})));
    Write(m_content + "f");
    EXPECT_FALSE(IsTakenFrom(ForgeZip({Stored(m_content)})));
}

TEST_F(ReuseCandidatesTest, TakesNothingFromAnEntryOfAnotherName) {
    ForgedEntry entry = Stored(m_content);
    entry.local.name = entry.central.name = "DOC.TXT";
    EXPECT_FALSE(IsTakenFrom(ForgeZip({entry})));
}

TEST_F(ReuseCandidatesTest, PacksEverythingAnewWhenTheOldDataIsDamaged) {
    ForgedEntry entry = Stored(m_content);
    entry.data[500'000] = '?';
    EXPECT_FALSE(IsTakenFrom(ForgeZip({entry})));
}

// What was unpacked once is not unpacked again after it was copied; damage is still noticed.
TEST_F(ReuseCandidatesTest, PacksEverythingAnewWhenKnownDataWasDamagedSince) {
    std::string text;
    for (int i = 0; i < 50'000; ++i) {
        text += std::to_string(i * i % 1009) + "\r\n";
    }
    Write(text);
    m_folder.Write(L"noise.bin", Noise(700'000));
    ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"opened").ok);
    RemoveTree(m_work / L"opened");
    const std::string sound = m_work.Read(L"p.mxov");
    for (const double part : {0.001, 0.01, 0.02, 0.5, 0.9}) {
        std::string damaged = sound;
        damaged[static_cast<std::size_t>(static_cast<double>(sound.size()) * part)] ^= 0x10;
        m_work.Write(L"p.mxov", damaged);
        ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok) << part;
        EXPECT_TRUE(VerifyPackage(Package()).ok) << part;
        EXPECT_EQ(m_work.Read(L"p.mxov"), sound) << part;
    }
}

TEST_F(ReuseCandidatesTest, ListsTheInformationFileFirstWhateverChanged) {
    for (int i = 0; i < 5; ++i) {
        m_folder.Write(L"more\\" + std::to_wstring(i), Noise(3'000'000));
    }
    ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    m_folder.Write(L"mxinfo.ini", "[FILEINFO]\r\nGCode=a");
    m_folder.Write(L"more\\3", "changed");
    ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    std::vector<PackageEntry> entries;
    ASSERT_TRUE(ListPackage(Package(), entries).ok);
    std::vector<std::wstring> names;
    names.reserve(entries.size());
    for (const PackageEntry& entry : entries) {
        names.push_back(entry.name);
    }
    EXPECT_EQ(names, (std::vector<std::wstring>{L"mxinfo.ini", L"doc.txt", L"more\\0", L"more\\1", L"more\\2",
                                                L"more\\3", L"more\\4"}));
    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"out").ok);
    EXPECT_EQ(TakeSnapshot(m_work / L"out"), TakeSnapshot(m_folder.Path()));
}

TEST_F(ReuseCandidatesTest, PacksEverythingAnewOverWhatIsNoPackage) {
    EXPECT_FALSE(IsTakenFrom(ForgeZip({Stored(m_content)}) + "x"));
}

TEST_F(ReuseCandidatesTest, NeverTakesWhatExpandsOutOfProportion) {
    const std::string zeros(4'000'000, '\0');
    Write(zeros);
    ForgedEntry entry = MakeEntry("doc.txt", zeros, true);
    entry.central.extra = entry.local.extra = Stored("").central.extra;
    m_work.Write(L"p.mxov", ForgeZip({entry}));
    ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    std::vector<PackageEntry> entries;
    ASSERT_TRUE(ListPackage(Package(), entries).ok);
    EXPECT_GE(entries[1].packedSize, zeros.size() / 200);
}

TEST_F(ReuseCandidatesTest, GivesTheSamePackageAsPackingAnew) {
    for (int i = 0; i < 20; ++i) {
        m_folder.Write(L"more\\" + std::to_wstring(i),
                       std::string(static_cast<std::size_t>(i) * 100'000, 'x'));
    }
    ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    const std::string once = m_work.Read(L"p.mxov");
    ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    EXPECT_EQ(m_work.Read(L"p.mxov"), once);
    ASSERT_TRUE(CreatePackage(m_folder.Path(), m_work / L"new.mxov").ok);
    EXPECT_EQ(m_work.Read(L"new.mxov"), once);
}

} // namespace
