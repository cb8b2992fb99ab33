#include "mxovpackage.h"

#include "files/AtomicFile.h"
#include "FolderSnapshot.h"
#include "Listeners.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <thread>

using namespace mxovshare;

namespace {

class CreatePackageTest : public testing::Test {
protected:
    void SetUp() override {
        m_folder.Write(L"mxinfo.ini", "[FILEINFO]");
        m_folder.Write(L"doc.txt", std::string(6'000'000, 'd'));
        m_work.Write(L"p.mxov", "the old one");
    }

    // Expects the old package whole, and nothing else beside it.
    void ExpectUntouched() const {
        EXPECT_EQ(m_work.Read(L"p.mxov"), "the old one");
        EXPECT_EQ(m_work.EntryCount(), 1);
    }

    void ExpectFailure(const PackageResult& result, const std::wstring& culprit) const {
        EXPECT_FALSE(result.ok);
        EXPECT_FALSE(result.cancelled);
        EXPECT_NE(result.message.find(culprit), std::wstring::npos)
            << std::filesystem::path(result.message).string();
        EXPECT_EQ(result.message.find_first_of(L"\r\n"), std::wstring::npos);
        ExpectUntouched();
    }

    std::wstring Package() const { return m_work / L"p.mxov"; }

    TempFolder m_folder;
    TempFolder m_work;
};

TEST_F(CreatePackageTest, ReplacesTheOldPackage) {
    EXPECT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    std::vector<PackageEntry> entries;
    EXPECT_TRUE(ListPackage(Package(), entries).ok);
    EXPECT_EQ(entries.size(), 2u);
    EXPECT_EQ(m_work.EntryCount(), 1);
}

TEST_F(CreatePackageTest, LeavesOutTheLocksOfOfficePrograms) {
    m_folder.Write(L"sheets\\plan.docx", "a document that is open");
    m_folder.Write(L"sheets\\~$plan.docx", "its lock");
    m_folder.Write(L"tools\\.~lock.tools.ods#", "another one");
    m_folder.Write(L"~$folder\\a~$.txt", "no lock");
    m_folder.Write(L".~lock.txt", "no lock either");
    const HANDLE lock = CreateFileW((m_folder / L"sheets\\~$plan.docx").c_str(), GENERIC_READ | GENERIC_WRITE,
                                    0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    const PackageResult result = CreatePackage(m_folder.Path(), Package());
    CloseHandle(lock);
    EXPECT_TRUE(result.ok);
    std::vector<PackageEntry> entries;
    ASSERT_TRUE(ListPackage(Package(), entries).ok);
    std::vector<std::wstring> names;
    std::ranges::transform(entries, std::back_inserter(names), &PackageEntry::name);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"mxinfo.ini", L".~lock.txt", L"doc.txt",
                                                L"sheets\\plan.docx", L"tools", L"~$folder\\a~$.txt"}));
}

TEST_F(CreatePackageTest, RefusesWhatIsNoFolder) {
    ExpectFailure(CreatePackage(m_folder / L"nowhere", Package()), L"nowhere");
    ExpectFailure(CreatePackage(m_folder / L"doc.txt", Package()), L"doc.txt\": it is a file");
}

TEST_F(CreatePackageTest, NamesAFileThatIsLocked) {
    const HANDLE lock =
        CreateFileW((m_folder / L"doc.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    ExpectFailure(CreatePackage(m_folder.Path(), Package()),
                  L"cannot open \"" + m_folder / L"doc.txt" + L"\": ");
    CloseHandle(lock);
}

TEST_F(CreatePackageTest, PacksAFileThatAnotherProgramHasOpen) {
    const HANDLE open = CreateFileW((m_folder / L"doc.txt").c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(open, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    CloseHandle(open);
}

TEST_F(CreatePackageTest, NamesAPackageThatIsLockedAndSucceedsWhenItIsFree) {
    const HANDLE lock =
        CreateFileW(Package().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    ExpectFailure(CreatePackage(m_folder.Path(), Package()), L"cannot replace \"" + Package() + L"\": ");
    CloseHandle(lock);
    EXPECT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
}

TEST_F(CreatePackageTest, LeavesAReadOnlyPackageAsItIs) {
    SetFileAttributesW(Package().c_str(), FILE_ATTRIBUTE_READONLY);
    ExpectFailure(CreatePackage(m_folder.Path(), Package()), L"cannot write \"" + Package() + L"\": ");
    SetFileAttributesW(Package().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(CreatePackageTest, NamesAFolderThatDoesNotTakeThePackage) {
    ExpectFailure(CreatePackage(m_folder.Path(), m_work / L"nowhere\\p.mxov"), L"nowhere\\p.mxov");
}

TEST_F(CreatePackageTest, WritesOverWhatACrashLeftBehind) {
    const std::wstring temporary = AtomicFile::TemporaryPath(Package());
    m_work.Write(std::filesystem::path(temporary).filename().wstring(), std::string(4'000'000, '?'));
    EXPECT_EQ(m_work.EntryCount(), 2);
    EXPECT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    EXPECT_EQ(m_work.EntryCount(), 1);
    EXPECT_TRUE(VerifyPackage(Package()).ok);
}

TEST_F(CreatePackageTest, LeavesOutWhatACrashLeftBesideADocument) {
    m_folder.Write(L"sub\\a.txt", "a");
    m_folder.Write(L"sub\\a.txt.mxov-new", "half of it");
    m_folder.Write(L"doc.txt.MXOV-NEW", "half of it");
    ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    std::vector<PackageEntry> entries;
    ASSERT_TRUE(ListPackage(Package(), entries).ok);
    EXPECT_EQ(entries.size(), 3u);
}

TEST_F(CreatePackageTest, RefusesNamesThatAreReservedForTemporaryFiles) {
    const std::wstring name =
        std::filesystem::path(AtomicFile::TemporaryPath(L"lone.txt")).filename().wstring();
    m_folder.Write(name, "x");
    ExpectFailure(CreatePackage(m_folder.Path(), Package()), L"lone.txt.mxov-new\": the name is reserved");
}

// Rewrites a document with one letter after another until it is destroyed.
class Rewriting {
public:
    explicit Rewriting(const std::wstring& path, DWORD milliseconds)
        : m_thread([this, path, milliseconds] {
              const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                              nullptr, OPEN_EXISTING, 0, nullptr);
              const ULONGLONG end = GetTickCount64() + milliseconds;
              for (char letter = 'a'; !m_stop && GetTickCount64() < end; letter ^= 3) {
                  const std::string block(100'000, letter);
                  SetFilePointer(file, 0, nullptr, FILE_BEGIN);
                  for (int i = 0; i < 60; ++i) {
                      DWORD written = 0;
                      WriteFile(file, block.data(), static_cast<DWORD>(block.size()), &written, nullptr);
                      m_blocks += written == block.size() ? 1 : 0;
                  }
              }
              CloseHandle(file);
          }) {
        while (m_blocks < 60) {
            Sleep(1);
        }
    }
    ~Rewriting() {
        m_stop = true;
        m_thread.join();
    }

private:
    std::atomic<bool> m_stop = false;
    std::atomic<int> m_blocks = 0;
    std::thread m_thread;
};

TEST_F(CreatePackageTest, PacksADocumentAgainThatIsRewrittenMeanwhile) {
    Rewriting rewriting(m_folder / L"doc.txt", 400);
    ASSERT_TRUE(CreatePackage(m_folder.Path(), Package()).ok);
    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"out").ok);
    const std::string content = m_work.Read(L"out\\doc.txt");
    ASSERT_EQ(content.size(), 6'000'000u);
    EXPECT_EQ(content.find_first_not_of(content[0]), std::string::npos);
}

TEST_F(CreatePackageTest, RefusesADocumentThatIsRewrittenAllTheTime) {
    Rewriting rewriting(m_folder / L"doc.txt", INFINITE);
    ExpectFailure(CreatePackage(m_folder.Path(), Package()), L"doc.txt\": another program keeps changing it");
}

TEST_F(CreatePackageTest, IsCancelledAtAnyMomentWithoutATrace) {
    for (int passes = 0; passes < 100; ++passes) {
        CancellingProgress progress(passes);
        const PackageResult result = CreatePackage(m_folder.Path(), Package(), &progress);
        if (!progress.HasCancelled()) {
            EXPECT_TRUE(result.ok);
            EXPECT_GT(passes, 8);
            return;
        }
        EXPECT_TRUE(result.cancelled);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.message, L"");
        ExpectUntouched();
    }
    FAIL() << "it never came to its end";
}

} // namespace
