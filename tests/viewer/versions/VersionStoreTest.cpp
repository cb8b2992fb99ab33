#include "versions/VersionStore.h"

#include "common/Policies.h"
#include "package/Paths.h"
#include "PolicyValue.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace viewer;

namespace {

constexpr std::size_t kDocuments = 20;
constexpr std::size_t kDocumentSize = std::size_t{256} << 10;

// Cannot be compressed.
std::string Noise(unsigned seed, std::size_t size = kDocumentSize) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    std::ranges::generate(bytes, [&random] { return static_cast<char>(random()); });
    return bytes;
}

// Longer than all other files of the package.
std::string Program(int save) {
    return "N10 M30 " + Noise(static_cast<unsigned>(save), 500);
}

// A package that is saved several times, and a store for its versions.
class VersionStoreTest : public testing::Test {
protected:
    VersionStoreTest() {
        m_folder.Write(L"job\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n");
        m_folder.Write(L"job\\GCode\\a.nc", "N10 M30");
        m_folder.Write(L"job\\GCode\\b.nc", "N10 G0 X1");
    }

    void Save() { ASSERT_TRUE(mxovshare::CreatePackage(m_folder / L"job", Package()).ok); }

    void SaveWith(const std::wstring& name, std::string_view bytes) {
        m_folder.Write(L"job\\" + name, bytes);
        Save();
    }

    [[nodiscard]] mxovshare::PackageResult Keep(mxovshare::PackageProgress* progress = nullptr) {
        return m_store.Keep(Package(), m_limits, progress);
    }

    // Saves and keeps `count` times, each time with another program.
    void SaveAndKeep(int count) {
        for (int i = 0; i < count; ++i) {
            SaveWith(L"GCode\\a.nc", Program(++m_saves));
            const mxovshare::PackageResult kept = Keep();
            ASSERT_TRUE(kept.ok) << kept.message.c_str();
        }
    }

    [[nodiscard]] std::wstring Package() const { return m_folder / L"job.mxov"; }
    [[nodiscard]] std::vector<Version> Versions() const { return m_store.Read(Package()).versions; }

    [[nodiscard]] std::vector<std::wstring> Stored() const {
        std::vector<std::wstring> names;
        for (const FolderEntry& entry : EntriesOf(m_store.FolderOf(Package()))) {
            names.push_back(entry.name);
        }
        std::ranges::sort(names);
        return names;
    }

    [[nodiscard]] std::uint64_t StoredSize() const {
        std::uint64_t size = 0;
        for (const std::wstring& name : Stored()) {
            size += m_folder.Read(InStore(name)).size();
        }
        return size;
    }

    // Relative to the folder of the test.
    [[nodiscard]] std::wstring InStore(const std::wstring& name) const {
        return (m_store.FolderOf(Package()) + L"\\" + name).substr(m_folder.Path().size() + 1);
    }

    [[nodiscard]] mxovshare::PackageResult Restore(const Version& version) const {
        return m_store.Restore(Package(), version.files, m_folder / L"restored");
    }

    void ExpectOnlyWhole() const {
        for (const std::wstring& name : Stored()) {
            EXPECT_TRUE(name.ends_with(kListExtension) || name.ends_with(kContentsExtension)) << name.c_str();
        }
    }

    TempFolder m_folder;
    VersionStore m_store{m_folder / L"store"};
    VersionLimits m_limits;
    int m_saves = 0;
};

// Cancels at one of its calls.
class CancelAt : public mxovshare::PackageProgress {
public:
    explicit CancelAt(int call) : m_left(call) {}
    bool OnProgress(const std::wstring&, std::uint64_t, std::uint64_t) override { return m_left-- > 0; }
    [[nodiscard]] bool IsReached() const { return m_left < 0; }

private:
    int m_left;
};

} // namespace

TEST_F(VersionStoreTest, ItLiesInNoFolderOfASession) {
    const PolicyValue policy(common::kUnpackFolderPolicy, m_folder / L"chosen");
    EXPECT_EQ(VersionStore::UserFolder(), m_folder / L"chosen\\MXOVVersions");
}

TEST_F(VersionStoreTest, PackagesHaveFoldersOfTheirOwnWhateverTheCase) {
    EXPECT_EQ(m_store.FolderOf(L"C:\\jobs\\a.mxov"), m_store.FolderOf(L"c:\\JOBS\\a.mxov"));
    EXPECT_NE(m_store.FolderOf(L"C:\\jobs\\a.mxov"), m_store.FolderOf(L"C:\\other\\a.mxov"));
}

TEST_F(VersionStoreTest, TenSavesWithOneDocumentChangedTakeTheRoomOfOne) {
    for (unsigned i = 0; i < kDocuments; ++i) {
        m_folder.Write(L"job\\Sheets\\" + std::to_wstring(i) + L".pdf", Noise(i));
    }
    Save();
    ASSERT_TRUE(Keep().ok);
    const std::uint64_t one = StoredSize();
    EXPECT_GT(one, kDocuments * kDocumentSize);
    for (unsigned save = 1; save < 10; ++save) {
        SaveWith(L"GCode\\a.nc", Noise(1000 + save, 1000));
        ASSERT_TRUE(Keep().ok);
    }
    EXPECT_EQ(Versions().size(), 10U);
    EXPECT_LT(StoredSize(), one + 72'000); // a program, an information file, and two lists of files
}

TEST_F(VersionStoreTest, AVersionStatesWhoWhenWhyAndWhat) {
    SaveWith(L"mxinfo.ini",
             "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n"
             "[FILE_HISTORY_1]\r\nOperation=Created\r\nBy=Ann\r\n"
             "[FILE_HISTORY_2]\r\nOperation=Updated\r\nBy=Bob \"the boss\"\r\nRemarks='Ü' | 日本\r\n");
    ASSERT_TRUE(Keep().ok);
    const std::vector<Version> versions = Versions();
    ASSERT_EQ(versions.size(), 1U);
    const Version& version = versions.front();
    EXPECT_EQ(version.package, Package());
    EXPECT_EQ(version.operation, L"Updated");
    EXPECT_EQ(version.by, L"Bob \"the boss\"");
    EXPECT_EQ(version.remarks, L"'Ü' | 日本");
    WIN32_FILE_ATTRIBUTE_DATA about = {};
    ASSERT_TRUE(GetFileAttributesExW(Package().c_str(), GetFileExInfoStandard, &about));
    EXPECT_EQ(CompareFileTime(&version.saved, &about.ftLastWriteTime), 0);
    ASSERT_EQ(version.files.size(), 3U);
    EXPECT_EQ(version.files[1].name, L"GCode\\a.nc");
    EXPECT_EQ(version.files[1].size, 7U);
    EXPECT_EQ(version.files[1].contents, version.id);
}

TEST_F(VersionStoreTest, AnEarlierVersionIsRestoredByteForByte) {
    Save();
    ASSERT_TRUE(Keep().ok);
    SaveWith(L"GCode\\a.nc", "N20 M30");
    ASSERT_TRUE(Keep().ok);
    SaveAndKeep(1);
    const std::vector<Version> versions = Versions();
    ASSERT_EQ(versions.size(), 3U);
    const mxovshare::PackageResult restored = Restore(versions[1]);
    ASSERT_TRUE(restored.ok) << restored.message.c_str();
    EXPECT_EQ(m_folder.Read(L"restored\\GCode\\a.nc"), "N20 M30");
    EXPECT_EQ(m_folder.Read(L"restored\\GCode\\b.nc"), "N10 G0 X1");
    EXPECT_EQ(m_folder.Read(L"restored\\mxinfo.ini"), m_folder.Read(L"job\\mxinfo.ini"));
    EXPECT_FALSE(FolderExists(m_folder / L"restored.part") || FileExists(m_folder / L"restored.new"));
}

TEST_F(VersionStoreTest, TheSameStateIsKeptOnce) {
    Save();
    ASSERT_TRUE(Keep().ok);
    Save();
    ASSERT_TRUE(Keep().ok);
    EXPECT_EQ(Versions().size(), 1U);
}

TEST_F(VersionStoreTest, WhatComesBackIsNotStoredAgain) {
    Save();
    ASSERT_TRUE(Keep().ok);
    SaveAndKeep(1);
    SaveWith(L"GCode\\a.nc", "N10 M30");
    ASSERT_TRUE(Keep().ok);
    const std::vector<Version> versions = Versions();
    ASSERT_EQ(versions.size(), 3U);
    EXPECT_EQ(versions[2].files[1].contents, versions[0].id);
    EXPECT_FALSE(FileExists(ContentsPath(m_store.FolderOf(Package()), versions[2].id)));
}

TEST_F(VersionStoreTest, BeyondTheLimitTheOldestOfADayAreDroppedWithTheirContents) {
    m_limits.versions = 3;
    SaveAndKeep(6);
    EXPECT_EQ(Versions().size(), 4U); // one of this day more
    const std::vector<Version> versions = Versions();
    for (const Version& version : versions) {
        ASSERT_TRUE(Restore(version).ok);
    }
    EXPECT_EQ(m_folder.Read(L"restored\\GCode\\a.nc"), Program(6));
    EXPECT_EQ(m_folder.Read(L"restored\\GCode\\b.nc"), "N10 G0 X1");
    // The first one stays for what did not change since, without its program.
    std::vector<mxovshare::PackageEntry> entries;
    ASSERT_TRUE(mxovshare::ListPackage(
                    ContentsPath(m_store.FolderOf(Package()), versions[0].files[2].contents), entries)
                    .ok);
    EXPECT_TRUE(std::ranges::none_of(
        entries, [](const mxovshare::PackageEntry& entry) { return entry.name == L"GCode\\a.nc"; }));
    EXPECT_EQ(Stored().size(), 4U + 5U);
}

TEST_F(VersionStoreTest, InAllTheyTakeNoMoreThanTheLimit) {
    const auto save = [this](unsigned seed) { SaveWith(L"plan.pdf", Noise(seed, 100'000)); };
    m_limits.bytes = 350'000;
    for (unsigned seed = 0; seed < 6; ++seed) {
        save(seed);
        ASSERT_TRUE(Keep().ok);
    }
    EXPECT_EQ(Versions().size(), 3U);
    EXPECT_LE(StoredSize(), m_limits.bytes);
    ASSERT_TRUE(Restore(Versions().back()).ok);
    EXPECT_EQ(m_folder.Read(L"restored\\plan.pdf"), Noise(5, 100'000));
    // The versions of other packages count as well.
    const std::wstring other = m_folder / L"other.mxov";
    ASSERT_TRUE(CopyFileW(Package().c_str(), other.c_str(), FALSE));
    ASSERT_TRUE(m_store.Keep(other, m_limits).ok);
    EXPECT_EQ(Versions().size(), 2U);
    EXPECT_EQ(m_store.Read(other).versions.size(), 1U);
}

TEST_F(VersionStoreTest, APackageThatIsTooLargeIsNotKept) {
    m_limits.bytes = 50'000;
    SaveWith(L"plan.pdf", Noise(1, 100'000));
    const mxovshare::PackageResult kept = Keep();
    EXPECT_FALSE(kept.ok);
    EXPECT_EQ(kept.message, L"it takes more room than all earlier versions may have");
    EXPECT_EQ(Stored(), std::vector<std::wstring>{});
}

TEST_F(VersionStoreTest, AFileThatIsNoPackageIsReported) {
    m_folder.Write(L"job.mxov", "Dear Sir");
    const mxovshare::PackageResult kept = Keep();
    EXPECT_FALSE(kept.ok);
    EXPECT_NE(kept.message.find(L"job.mxov"), std::wstring::npos);
    EXPECT_FALSE(FolderExists(m_store.FolderOf(Package())));
}

TEST_F(VersionStoreTest, ADamagedListIsNamedAndTheOthersAreThere) {
    SaveAndKeep(3);
    const std::wstring id = Versions()[1].id;
    const std::wstring list = InStore(id + kListExtension);
    const std::string bytes = m_folder.Read(list);
    for (const std::string& damaged :
         {std::string(), std::string(5000, '\0'), bytes.substr(0, bytes.size() - 20),
          bytes + "9=nonsense\r\n", std::string("[VERSION]\r\nCount=1\r\n")}) {
        m_folder.Write(list, damaged);
        const VersionList read = m_store.Read(Package());
        EXPECT_EQ(read.versions.size(), 2U);
        EXPECT_EQ(read.damaged, std::vector<std::wstring>{id});
        EXPECT_TRUE(Restore(read.versions.back()).ok);
    }
    SaveAndKeep(1);
    EXPECT_EQ(Versions().size(), 3U);
}

TEST_F(VersionStoreTest, MissingAndDamagedContentsAreReportedInOneLine) {
    SaveAndKeep(2);
    const std::vector<Version> versions = Versions();
    const std::wstring contents = InStore(versions[0].id + kContentsExtension);
    const std::string bytes = m_folder.Read(contents);
    ASSERT_TRUE(DeleteFileW((m_folder / contents).c_str()));
    const auto message = [&] {
        const mxovshare::PackageResult result = Restore(versions[1]);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.message.find(L'\n'), std::wstring::npos);
        return result.message;
    };
    EXPECT_NE(message().find(versions[0].id + kContentsExtension), std::wstring::npos);
    m_folder.Write(contents, bytes.substr(0, bytes.size() / 2));
    EXPECT_FALSE(message().empty());
    std::string changed = bytes;
    const std::size_t place = changed.find("N10 G0");
    ASSERT_NE(place, std::string::npos);
    changed[place] ^= 1;
    m_folder.Write(contents, changed);
    EXPECT_FALSE(message().empty());
    m_folder.Write(contents, m_folder.Read(InStore(versions[1].id + kContentsExtension)));
    EXPECT_EQ(message(), L"the content of mxinfo.ini is missing");
}

TEST_F(VersionStoreTest, ACancelAtAnyMomentLeavesTheVersionsBeforeIt) {
    SaveAndKeep(1);
    SaveWith(L"plan.pdf", Noise(1, 3'000'000));
    for (int call = 0;; ++call) {
        CancelAt progress(call);
        const mxovshare::PackageResult kept = Keep(&progress);
        ASSERT_EQ(kept.ok, !progress.IsReached()) << kept.message.c_str();
        ExpectOnlyWhole();
        ASSERT_EQ(Versions().size(), kept.ok ? 2U : 1U);
        if (kept.ok) {
            EXPECT_GT(call, 1);
            break;
        }
        EXPECT_EQ(Stored().size(), 2U);
    }
}

// What is on the disk when the process ends between two steps.
TEST_F(VersionStoreTest, WhatACrashLeftIsRemovedAndNoVersionIsLost) {
    SaveAndKeep(2);
    const std::vector<Version> versions = Versions();
    const std::string contents = m_folder.Read(InStore(versions[0].id + kContentsExtension));
    m_folder.Write(InStore(L"01DC000000000001.files.mxov-new"), contents.substr(0, 100));
    m_folder.Write(InStore(L"01DC000000000002.files"), contents);
    m_folder.Write(InStore(L"01DC000000000002.ini.new"), "[VERSION]");
    EXPECT_EQ(Versions().size(), 2U);
    SaveAndKeep(1);
    EXPECT_EQ(Versions().size(), 3U);
    EXPECT_EQ(Stored().size(), 6U);
    ExpectOnlyWhole();
    DropVersion(m_store.FolderOf(Package()), versions[0].id); // and a crash before its contents are removed
    EXPECT_EQ(Versions().size(), 2U);
    SaveAndKeep(1);
    for (const Version& version : Versions()) {
        EXPECT_TRUE(Restore(version).ok);
    }
}

TEST_F(VersionStoreTest, AClockThatWasSetBackKeepsTheOrder) {
    SaveAndKeep(1);
    Version later = Versions().front();
    later.id = L"7FFFFFFFFFFFFFFF";
    ASSERT_EQ(WriteVersion(m_store.FolderOf(Package()), later), DWORD{ERROR_SUCCESS});
    SaveAndKeep(1);
    const std::vector<std::wstring> ids = VersionIds(m_store.FolderOf(Package()));
    ASSERT_EQ(ids.size(), 3U);
    EXPECT_EQ(ids.back(), L"8000000000000000");
    EXPECT_TRUE(Restore(Versions().back()).ok);
    EXPECT_EQ(m_folder.Read(L"restored\\GCode\\a.nc"), Program(2));
}

TEST_F(VersionStoreTest, ProgramsAreNotRestoredWhereTheyAreRefused) {
    SaveWith(L"setup.exe", "MZ");
    ASSERT_TRUE(Keep().ok);
    const Version version = Versions().front();
    {
        const PolicyValue policy(common::kRefuseProgramsPolicy, 1);
        const mxovshare::PackageResult restored = Restore(version);
        EXPECT_FALSE(restored.ok);
        EXPECT_NE(restored.message.find(L"setup.exe"), std::wstring::npos);
        EXPECT_FALSE(FileExists(m_folder / L"restored\\setup.exe"));
    }
    EXPECT_TRUE(Restore(version).ok);
}
