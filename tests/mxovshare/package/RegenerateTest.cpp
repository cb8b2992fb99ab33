#include "mxovshare.h"

#include "common/Handles.h"
#include "FolderSnapshot.h"
#include "host/MessageBoxes.h"
#include "mxovpackage.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

using namespace mxovshare;

namespace {

std::vector<std::wstring> notices;

class RegenerateTest : public testing::Test {
protected:
    void SetUp() override {
        notices.clear();
        SetErrorSink([](const wchar_t* text) { notices.emplace_back(text); });
        m_folder.Write(L"mxinfo.ini", kInformation);
        m_folder.Write(L"doc.txt", "document");
        m_work.Write(L"p.mxov", "the old one");
    }
    void TearDown() override { SetErrorSink(nullptr); }

    void Regenerate(const std::wstring& text = L"Edited") {
        Utils::ReGenerateOrvandoFile(m_folder.PathWithSeparator(), Package(), text);
    }

    // Expects one notice with this text, and everything on the disk as it was.
    void ExpectRefusal(const std::wstring& culprit) const {
        ASSERT_EQ(notices.size(), 1u);
        EXPECT_NE(notices[0].find(culprit), std::wstring::npos) << std::filesystem::path(notices[0]).string();
        EXPECT_EQ(m_work.Read(L"p.mxov"), "the old one");
        EXPECT_EQ(m_work.EntryCount(), 1);
    }

    std::wstring Package() const { return m_work / L"p.mxov"; }
    std::wstring Value(const std::wstring& section, const std::wstring& key) const {
        return INIFile::GetKeyValueFromINI(section, key, m_folder / L"mxinfo.ini");
    }

    static constexpr const char* kInformation = "; made by hand\r\n[FILEINFO]\r\nGCode=GCode\\a.nc\r\n\r\n"
                                                "[FILE_HISTORY_3]\r\nOperation=Created\r\nBy=somebody\r\n";
    TempFolder m_folder;
    TempFolder m_work;
};

TEST_F(RegenerateTest, TheLargestNumberOfAnEntryIsNotOverwritten) {
    m_folder.Write(L"mxinfo.ini", "[FILE_HISTORY_2147483647]\r\nOperation=Created\r\n");
    Regenerate(L"First");
    Regenerate(L"Second");
    EXPECT_TRUE(notices.empty());
    EXPECT_EQ(Value(L"FILE_HISTORY_2147483647", L"Operation"), L"Created");
    EXPECT_EQ(Value(L"FILE_HISTORY_2147483646", L"Operation"), L"First");
    EXPECT_EQ(Value(L"FILE_HISTORY_2147483645", L"Operation"), L"Second");
}

TEST_F(RegenerateTest, AddsAHistoryEntryAndPacksTheFolder) {
    SYSTEMTIME before = {};
    GetLocalTime(&before);
    Regenerate(L"Edited by hand");
    EXPECT_TRUE(notices.empty());
    EXPECT_EQ(Value(L"FILE_HISTORY_4", L"Operation"), L"Edited by hand");
    EXPECT_EQ(Value(L"FILE_HISTORY_4", L"Remarks"), L"");
    wchar_t user[256];
    DWORD size = 256;
    ASSERT_TRUE(GetUserNameW(user, &size));
    EXPECT_EQ(Value(L"FILE_HISTORY_4", L"By"), user);
    int fields[6] = {};
    const std::wstring time = Value(L"FILE_HISTORY_4", L"Time");
    ASSERT_EQ(std::swscanf(time.c_str(), L"%d-%d-%d %d:%d:%d", &fields[0], &fields[1], &fields[2], &fields[3],
                           &fields[4], &fields[5]),
              6);
    EXPECT_EQ(time.size(), 19u);
    EXPECT_EQ(fields[0], before.wYear);

    ASSERT_TRUE(UnpackPackage(Package(), m_work / L"out").ok);
    EXPECT_EQ(TakeSnapshot(m_work / L"out"), TakeSnapshot(m_folder.Path()));
    EXPECT_EQ(m_folder.Read(L"mxinfo.ini").find(kInformation), 0u);
}

TEST_F(RegenerateTest, LeavesNothingOfItsOwnInTheFolder) {
    const std::wstring temporary = m_folder / L"mxinfo.ini.mxov-new";
    m_folder.Write(L"mxinfo.ini.mxov-new", "left behind by a crash");
    Regenerate();
    EXPECT_TRUE(notices.empty());
    EXPECT_FALSE(std::filesystem::exists(temporary));
    EXPECT_EQ(m_folder.EntryCount(), 2);
    EXPECT_EQ(m_work.EntryCount(), 1);
    std::vector<PackageEntry> entries;
    ASSERT_TRUE(ListPackage(Package(), entries).ok);
    EXPECT_EQ(entries.size(), 2u);
}

TEST_F(RegenerateTest, SavesWhileADocumentIsOpenInAnOfficeProgram) {
    m_folder.Write(L"~$doc.txt", "its lock");
    const HANDLE lock = CreateFileW((m_folder / L"~$doc.txt").c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    Regenerate();
    CloseHandle(lock);
    EXPECT_TRUE(notices.empty());
    std::vector<PackageEntry> entries;
    ASSERT_TRUE(ListPackage(Package(), entries).ok);
    EXPECT_EQ(entries.size(), 2u);
    EXPECT_EQ(m_folder.Read(L"~$doc.txt"), "its lock");
}

TEST_F(RegenerateTest, CountsOnFromTheHighestEntry) {
    Regenerate();
    Regenerate();
    EXPECT_EQ(INIFile::GetLastIndexOfSectionFromINI(L"FILE_HISTORY", m_folder / L"mxinfo.ini"), 5);
    EXPECT_EQ(INIFile::GetSectionNamesFromINI(L"FILE_HISTORY", m_folder / L"mxinfo.ini"),
              (std::vector<std::wstring>{L"FILE_HISTORY_3", L"FILE_HISTORY_4", L"FILE_HISTORY_5"}));
}

TEST_F(RegenerateTest, TakesTheInformationFileInPrivateWhenThereIsNoOther) {
    std::filesystem::create_directory(m_folder / L"Private");
    std::filesystem::rename(m_folder / L"mxinfo.ini", m_folder / L"Private\\mxinfo.ini");
    Utils::ReGenerateOrvandoFile(m_folder.Path(), Package(), L"Edited");
    EXPECT_TRUE(notices.empty());
    EXPECT_EQ(INIFile::GetKeyValueFromINI(L"FILE_HISTORY_4", L"Operation", m_folder / L"Private\\mxinfo.ini"),
              L"Edited");
    EXPECT_FALSE(std::filesystem::exists(m_folder / L"mxinfo.ini"));
    EXPECT_TRUE(VerifyPackage(Package()).ok);
}

TEST_F(RegenerateTest, NeverReplacesAPackageByAFolderThatIsNone) {
    std::filesystem::remove(m_folder / L"mxinfo.ini");
    Regenerate();
    ExpectRefusal(L"\nthere is no mxinfo.ini in the folder \"" + m_folder.Path());
    notices.clear();
    Utils::ReGenerateOrvandoFile(m_folder / L"gone", Package(), L"Edited");
    ExpectRefusal(m_folder / L"gone");
    EXPECT_FALSE(std::filesystem::exists(m_folder / L"gone"));
}

TEST_F(RegenerateTest, TakesTheHistoryBackWhenADocumentIsLocked) {
    const HANDLE lock =
        CreateFileW((m_folder / L"doc.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    Regenerate();
    CloseHandle(lock);
    ExpectRefusal(L"doc.txt\": ");
    EXPECT_EQ(m_folder.Read(L"mxinfo.ini"), kInformation);
    EXPECT_EQ(m_folder.EntryCount(), 2);
}

TEST_F(RegenerateTest, TakesTheHistoryBackWhenThePackageIsLockedAndSucceedsLater) {
    const HANDLE lock =
        CreateFileW(Package().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    Regenerate();
    CloseHandle(lock);
    ExpectRefusal(L"cannot replace \"" + Package() + L"\": ");
    EXPECT_EQ(m_folder.Read(L"mxinfo.ini"), kInformation);
    notices.clear();
    Regenerate();
    EXPECT_TRUE(notices.empty());
    EXPECT_TRUE(VerifyPackage(Package()).ok);
    EXPECT_EQ(INIFile::GetLastIndexOfSectionFromINI(L"FILE_HISTORY", m_folder / L"mxinfo.ini"), 4);
}

// A scanner opens a file as soon as it appears, and keeps it from being renamed for a moment.
class Scanner {
public:
    Scanner(std::wstring path, DWORD duration)
        : m_path(std::move(path)), m_thread([this, duration] { Scan(duration); }) {}
    ~Scanner() { m_thread.join(); }
    Scanner(const Scanner&) = delete;
    Scanner& operator=(const Scanner&) = delete;

    bool IsDone() const { return m_isDone; }

private:
    void Scan(DWORD duration) {
        constexpr ULONGLONG kPatience = 20'000;
        const ULONGLONG end = GetTickCount64() + kPatience;
        common::UniqueHandle file;
        while (!file && GetTickCount64() < end) {
            file =
                common::OwnFile(CreateFileW(m_path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                            nullptr, OPEN_EXISTING, 0, nullptr));
        }
        Sleep(duration);
        m_isDone = file != nullptr;
    }

    std::wstring m_path;
    std::atomic<bool> m_isDone = false;
    std::thread m_thread;
};

TEST_F(RegenerateTest, WaitsForAScannerThatHoldsTheNewPackage) {
    const Scanner scanner(Package() + L".mxov-new", 300);
    Regenerate(L"Scanned");
    EXPECT_TRUE(scanner.IsDone()) << "the new package was not held";
    EXPECT_TRUE(notices.empty());
    EXPECT_TRUE(VerifyPackage(Package()).ok);
    EXPECT_EQ(Value(L"FILE_HISTORY_4", L"Operation"), L"Scanned");
    EXPECT_EQ(m_work.EntryCount(), 1);
}

TEST_F(RegenerateTest, WaitsForAScannerThatHoldsTheNewInformationFile) {
    const Scanner scanner(m_folder / L"mxinfo.ini.mxov-new", 300);
    Regenerate(L"Scanned");
    EXPECT_TRUE(scanner.IsDone()) << "the new information file was not held";
    EXPECT_TRUE(notices.empty());
    EXPECT_TRUE(VerifyPackage(Package()).ok);
    EXPECT_NE(m_folder.Read(L"mxinfo.ini").find("Operation=Scanned"), std::string::npos);
    EXPECT_EQ(m_folder.EntryCount(), 2);
}

TEST_F(RegenerateTest, SavesNothingWhenTheInformationFileCannotBeWritten) {
    SetFileAttributesW((m_folder / L"mxinfo.ini").c_str(), FILE_ATTRIBUTE_READONLY);
    Regenerate();
    SetFileAttributesW((m_folder / L"mxinfo.ini").c_str(), FILE_ATTRIBUTE_NORMAL);
    ExpectRefusal(L"cannot write \"" + m_folder / L"mxinfo.ini" + L"\": ");
    EXPECT_EQ(m_folder.Read(L"mxinfo.ini"), kInformation);
    EXPECT_EQ(Value(L"FILE_HISTORY_4", L"Operation"), L"");
}

} // namespace
