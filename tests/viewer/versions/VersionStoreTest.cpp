// Keeping versions, and how many.
#include "common/Policies.h"
#include "package/Paths.h"
#include "PolicyValue.h"
#include "VersionStoreFixture.h"

using namespace viewer;

namespace {

constexpr std::size_t kDocuments = 20;
constexpr std::size_t kDocumentSize = std::size_t{256} << 10;

class VersionStoreTest : public VersionStoreFixture {};

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
        m_folder.Write(L"job\\Sheets\\" + std::to_wstring(i) + L".pdf", Noise(i, kDocumentSize));
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
