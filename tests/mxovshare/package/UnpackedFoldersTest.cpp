// Package files that somebody else changes while they are open here, and saves that fail.
#include "package/UnpackedFolders.h"
#include "files/AtomicFile.h"
#include "host/MessageBoxes.h"
#include "mxovpackage.h"
#include "package/PackageStamp.h"
#include "package/ReplacementGuard.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

using namespace mxovshare;

namespace {

int questions = 0;
bool answer = false;
std::vector<std::wstring> folderNotices;

class UnpackedFoldersTest : public testing::Test {
protected:
    void SetUp() override {
        questions = 0;
        answer = false;
        folderNotices.clear();
        SetErrorSink([](const wchar_t* text) { folderNotices.emplace_back(text); });
        SetQuestionSink([](const std::wstring& text) {
            EXPECT_NE(text.find(L"p.mxov"), std::wstring::npos);
            ++questions;
            return answer;
        });
        m_source.Write(L"mxinfo.ini", "[FILEINFO]\r\nGCode=GCode\\a.nc\r\n");
        m_source.Write(L"a.txt", "mine");
        ASSERT_TRUE(CreatePackage(m_source.Path(), Package()).ok);
        ASSERT_TRUE(UnpackPackage(Package(), Folder()).ok);
    }
    void TearDown() override {
        SetErrorSink(nullptr);
        SetQuestionSink(nullptr);
    }

    std::wstring Package() const { return m_work / L"p.mxov"; }
    std::wstring Folder() const { return m_work / L"open"; }
    void Save() const { Utils::ReGenerateOrvandoFile(Folder() + L"\\", Package(), L"Edited"); }
    void ChangeAsAnother() const {
        m_source.Write(L"b.txt", "theirs");
        ASSERT_TRUE(CreatePackage(m_source.Path(), Package()).ok);
    }
    bool Holds(const std::wstring& name) const {
        std::vector<PackageEntry> entries;
        EXPECT_TRUE(ListPackage(Package(), entries).ok);
        return std::ranges::any_of(entries, [&](const PackageEntry& entry) { return entry.name == name; });
    }

    TempFolder m_source;
    TempFolder m_work;
};

TEST_F(UnpackedFoldersTest, OwnSavesAreNotAskedAbout) {
    Save();
    Save();
    EXPECT_EQ(questions, 0);
    EXPECT_TRUE(folderNotices.empty());
    EXPECT_FALSE(TakeSaveFailure(Folder()));
}

TEST_F(UnpackedFoldersTest, RemarksAreThoseOfTheNextSaveThatSucceeds) {
    const auto remarks = [this](int entry) {
        return INIFile::GetKeyValueFromINI(L"FILE_HISTORY_" + std::to_wstring(entry), L"Remarks",
                                           Folder() + L"\\mxinfo.ini");
    };
    SetSaveRemarks(Folder(), L"Threads deeper");
    ChangeAsAnother();
    Save();
    EXPECT_EQ(folderNotices.size(), 1u);
    answer = true;
    Save();
    Save();
    EXPECT_EQ(remarks(1), L"Threads deeper");
    EXPECT_EQ(remarks(2), L"");
}

TEST_F(UnpackedFoldersTest, NoKeepsWhatTheOtherOneSaved) {
    ChangeAsAnother();
    Save();
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(folderNotices.size(), 1u);
    EXPECT_TRUE(Holds(L"b.txt"));
    EXPECT_TRUE(INIFile::GetSectionNamesFromINI(L"FILE_HISTORY", Folder() + L"\\mxinfo.ini").empty());
    EXPECT_TRUE(TakeSaveFailure(Folder()));
    EXPECT_FALSE(TakeSaveFailure(Folder()));
}

TEST_F(UnpackedFoldersTest, YesReplacesItAndIsNotAskedAgain) {
    ChangeAsAnother();
    answer = true;
    Save();
    EXPECT_FALSE(Holds(L"b.txt"));
    Save();
    EXPECT_EQ(questions, 1);
}

TEST_F(UnpackedFoldersTest, AnotherFileOfTheSameSizeAndTimeIsNoticed) {
    ASSERT_TRUE(CopyFileW(Package().c_str(), (m_work / L"copy").c_str(), TRUE));
    ASSERT_TRUE(MoveFileExW((m_work / L"copy").c_str(), Package().c_str(), MOVEFILE_REPLACE_EXISTING));
    Save();
    EXPECT_EQ(questions, 1);
}

// Replaces the package as soon as a save has begun to write its successor.
class ReplacingDuringSave {
public:
    explicit ReplacingDuringSave(const std::wstring& package, const std::wstring& other)
        : m_thread([this, package, other] {
              const std::wstring successor = AtomicFile::TemporaryPath(package);
              while (!m_stop && GetFileAttributesW(successor.c_str()) == INVALID_FILE_ATTRIBUTES) {
              }
              m_done = MoveFileExW(other.c_str(), package.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
          }) {}
    // Whether the package was replaced.
    bool Finish() {
        m_stop = true;
        m_thread.join();
        return m_done;
    }

private:
    std::atomic<bool> m_stop = false;
    std::atomic<bool> m_done = false;
    std::thread m_thread;
};

TEST_F(UnpackedFoldersTest, AReplacementDuringTheSaveIsAskedAbout) {
    m_work.WriteSized(L"open\\large.bin", 30'000'000);
    m_source.Write(L"b.txt", "theirs");
    for (const bool replace : {false, true}) {
        questions = 0;
        answer = replace;
        ASSERT_TRUE(CreatePackage(m_source.Path(), m_work / L"other").ok);
        // A save reads the old package, and Wine replaces no file that is open.
        ASSERT_TRUE(DeleteFileW(Package().c_str()));
        ReplacingDuringSave other(Package(), m_work / L"other");
        Save();
        ASSERT_TRUE(other.Finish());
        EXPECT_EQ(questions, 1);
        EXPECT_EQ(Holds(L"b.txt"), !replace);
        EXPECT_EQ(Holds(L"large.bin"), replace);
        EXPECT_EQ(m_work.EntryCount(), 2); // the package and the folder
        EXPECT_EQ(TakeSaveFailure(Folder()), !replace);
        ResumeFolder(Folder(), Package(), StampOfPackage(Package()));
    }
}

TEST_F(UnpackedFoldersTest, AMissingPackageAndAnotherOneAreWrittenWithoutAsking) {
    ASSERT_TRUE(DeleteFileW(Package().c_str()));
    Save();
    m_work.Write(L"other.mxov", "something");
    Utils::ReGenerateOrvandoFile(Folder(), m_work / L"other.mxov", L"Copied");
    EXPECT_EQ(questions, 0);
    EXPECT_TRUE(folderNotices.empty());
}

TEST_F(UnpackedFoldersTest, AResumedFolderIsGuardedByTheKeptStamp) {
    const std::wstring stamp = StampOfFolder(Folder() + L"\\");
    EXPECT_EQ(stamp, StampOfPackage(Package()));
    ResumeFolder(m_source.Path(), Package(), stamp);
    EXPECT_EQ(StampOfFolder(m_source.Path()), stamp);
    Save(); // from elsewhere
    Utils::ReGenerateOrvandoFile(m_source.Path(), Package(), L"Edited");
    EXPECT_EQ(questions, 1);
}

TEST_F(UnpackedFoldersTest, AFailedSaveIsKnownUntilItIsTakenOrMendedBySaving) {
    const std::wstring hindrance = m_work / L"none\\p.mxov";
    Utils::ReGenerateOrvandoFile(Folder(), hindrance, L"Edited");
    EXPECT_EQ(folderNotices.size(), 1u);
    Save();
    EXPECT_FALSE(TakeSaveFailure(Folder()));
    Utils::ReGenerateOrvandoFile(Folder(), hindrance, L"Edited");
    EXPECT_TRUE(TakeSaveFailure(Folder()));
    EXPECT_TRUE(StampOfFolder(m_work / L"unknown").empty());
}

} // namespace
