// Information files that other programs lock, and that two processes edit.
#include "ChildProcess.h"
#include "common/Handles.h"
#include "common/SystemError.h"
#include "host/MessageBoxes.h"
#include "ini/IniStore.h"
#include "mxovshare.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <thread>

namespace mxovshare {
namespace {

const std::string kOneDocument = "[FILEINFO]\r\nGCode=NC\\a\r\n[REFERANCE_FILE_1]\r\nDescription=first\r\n";

common::UniqueHandle OpenForTest(const std::wstring& path, DWORD share) {
    return common::OwnFile(
        CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

// Holds a file without sharing it, for some milliseconds or until the end.
class TimedLock {
public:
    TimedLock(const std::wstring& path, DWORD duration) : m_file(OpenForTest(path, 0)) {
        EXPECT_TRUE(m_file);
        m_thread = std::thread([this, duration] {
            Sleep(duration);
            m_file.reset();
        });
    }
    ~TimedLock() { m_thread.join(); }
    TimedLock(const TimedLock&) = delete;
    TimedLock& operator=(const TimedLock&) = delete;

private:
    common::UniqueHandle m_file;
    std::thread m_thread;
};

// What "+" does.
IniOutcome AddDocument(IniStore& store, const std::wstring& file) {
    const std::wstring section =
        L"REFERANCE_FILE_" + std::to_wstring(store.LastIndex(L"REFERANCE_FILE", file) + 1);
    IniOutcome outcome;
    for (const wchar_t* key : {L"IsReferencedFile", L"Description", L"Timestamp", L"FilePath"}) {
        outcome = store.SetValue(section, key, L"new", file);
    }
    return outcome;
}

const std::string kAdded = kOneDocument + "[REFERANCE_FILE_2]\r\nIsReferencedFile=new\r\nDescription=new\r\n"
                                          "Timestamp=new\r\nFilePath=new\r\n";

class IniLock : public testing::Test {
protected:
    std::string Bytes() const { return m_folder.Read(L"mxinfo.ini"); }

    const TempFolder m_folder;
    const std::wstring m_file = m_folder.Write(L"mxinfo.ini", kOneDocument);
};

TEST_F(IniLock, ADocumentIsAddedBehindTheOthersHoweverLongTheLock) {
    for (const bool readBefore : {false, true}) {
        for (const DWORD duration : {60UL, 120UL, 250UL, 500UL, 750UL, 1000UL}) {
            m_folder.Write(L"mxinfo.ini", kOneDocument);
            IniStore store;
            if (readBefore) {
                store.Value(L"FILEINFO", L"GCode", m_file);
                Sleep(1);
            }
            IniOutcome outcome;
            {
                const TimedLock lock(m_file, duration);
                outcome = AddDocument(store, m_file);
            }
            EXPECT_EQ(outcome.error, static_cast<DWORD>(ERROR_SUCCESS)) << readBefore << ' ' << duration;
            EXPECT_EQ(Bytes(), kAdded) << readBefore << ' ' << duration;
        }
    }
}

TEST_F(IniLock, ALockThatLastsLeavesTheDocumentAsItWasReadLast) {
    IniStore store(20);
    store.Value(L"FILEINFO", L"GCode", m_file);
    Sleep(1);
    {
        const common::UniqueHandle lock = OpenForTest(m_file, 0);
        EXPECT_EQ(store.LastIndex(L"REFERANCE_FILE", m_file), 1);
        const IniOutcome outcome = AddDocument(store, m_file);
        EXPECT_EQ(outcome.error, static_cast<DWORD>(ERROR_SHARING_VIOLATION));
        EXPECT_FALSE(outcome.refused);
        EXPECT_EQ(store.Value(L"REFERANCE_FILE_1", L"Description", m_file), L"first");
        EXPECT_EQ(store.Value(L"REFERANCE_FILE_2", L"FilePath", m_file), L"new");
        EXPECT_EQ(store.LastIndex(L"REFERANCE_FILE", m_file), 2);
        EXPECT_FALSE(store.SaveKept());
    }
    EXPECT_EQ(Bytes(), kOneDocument);
    EXPECT_TRUE(store.SaveKept());
    EXPECT_EQ(Bytes(), kAdded);
}

TEST_F(IniLock, AFileThatWasNeverReadIsReportedOnceAndStaysAsItIs) {
    IniStore store(20);
    {
        const common::UniqueHandle lock = OpenForTest(m_file, 0);
        EXPECT_EQ(store.LastIndex(L"REFERANCE_FILE", m_file), 0);
        const IniOutcome first = store.SetValue(L"REFERANCE_FILE_1", L"Description", L"new", m_file);
        EXPECT_TRUE(first.refused);
        EXPECT_TRUE(first.firstRefused);
        EXPECT_EQ(first.error, static_cast<DWORD>(ERROR_SHARING_VIOLATION));
        const IniOutcome second = store.SetValue(L"REFERANCE_FILE_1", L"FilePath", L"new", m_file);
        EXPECT_TRUE(second.refused);
        EXPECT_FALSE(second.firstRefused);
        EXPECT_TRUE(store.RemoveSection(L"REFERANCE_FILE_1", m_file).refused);
    }
    // The number that the caller was given is still that of an empty file.
    EXPECT_TRUE(store.SetValue(L"REFERANCE_FILE_1", L"FilePath", L"new", m_file).refused);
    EXPECT_EQ(Bytes(), kOneDocument);
    EXPECT_EQ(AddDocument(store, m_file).error, static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_EQ(Bytes(), kAdded);
}

TEST_F(IniLock, ALockThatLastsIsWaitedForOnce) {
    IniStore store(300);
    const common::UniqueHandle lock = OpenForTest(m_file, 0);
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(store.Value(L"FILEINFO", L"GCode", m_file), L"");
    EXPECT_GE(GetTickCount64() - start, 280U);
    const ULONGLONG again = GetTickCount64();
    for (int i = 0; i < 20; ++i) {
        store.Value(L"FILEINFO", L"GCode", m_file);
        store.SetValue(L"FILEINFO", L"GCode", L"x", m_file);
    }
    EXPECT_LT(GetTickCount64() - again, 40U * 300U / 2);
}

TEST_F(IniLock, AnEditIsWrittenWhenItsStoreCloses) {
    {
        IniStore store(20);
        store.Value(L"FILEINFO", L"GCode", m_file);
        const common::UniqueHandle lock = OpenForTest(m_file, FILE_SHARE_READ);
        EXPECT_NE(AddDocument(store, m_file).error, static_cast<DWORD>(ERROR_SUCCESS));
    }
    // The lock went before the store.
    EXPECT_EQ(Bytes(), kAdded);
}

std::wstring NumbersOf(IniStore& store, const std::wstring& file) {
    std::wstring numbers;
    for (const std::wstring& name : store.SectionNames(L"REFERANCE_FILE_", file)) {
        numbers += name.substr(name.rfind(L'_') + 1) + L"=" + store.Value(name, L"Description", file) + L" ";
    }
    return numbers;
}

TEST_F(IniLock, ANumberThatSomebodyElseTookFirstIsNotOverwritten) {
    IniStore mine;
    IniStore theirs;
    ASSERT_EQ(mine.LastIndex(L"REFERANCE_FILE", m_file), 1);
    AddDocument(theirs, m_file);
    for (const wchar_t* key : {L"IsReferencedFile", L"Description"}) {
        mine.SetValue(L"REFERANCE_FILE_2", key, L"mine", m_file);
    }
    EXPECT_EQ(NumbersOf(mine, m_file), L"1=first 2=new 3=mine ");
    // Now that the sections are listed, the number means what it says.
    mine.SetValue(L"REFERANCE_FILE_2", L"Description", L"edited", m_file);
    EXPECT_EQ(NumbersOf(mine, m_file), L"1=first 2=edited 3=mine ");
    EXPECT_EQ(mine.Value(L"REFERANCE_FILE_2", L"IsReferencedFile", m_file), L"new");
}

TEST_F(IniLock, DocumentsAddedDuringALockGetOtherNumbersThanThoseOfTheLocksOwner) {
    IniStore store(20);
    store.Value(L"FILEINFO", L"GCode", m_file);
    {
        const common::UniqueHandle lock = OpenForTest(m_file, FILE_SHARE_READ | FILE_SHARE_WRITE);
        AddDocument(store, m_file);
        AddDocument(store, m_file);
        m_folder.Write(L"mxinfo.ini", kOneDocument + "[REFERANCE_FILE_2]\r\nDescription=theirs\r\n");
    }
    EXPECT_TRUE(store.SaveKept());
    IniStore fresh;
    EXPECT_EQ(NumbersOf(fresh, m_file), L"1=first 2=theirs 4=new 3=new ");
}

std::vector<std::wstring> g_reports;

class IniLockApi : public IniLock {
protected:
    IniLockApi() {
        g_reports.clear();
        m_before = SetErrorSink([](const wchar_t* text) { g_reports.emplace_back(text); });
    }
    ~IniLockApi() override { SetErrorSink(m_before); }

    ErrorSink m_before;
};

TEST_F(IniLockApi, AFileThatWasNeverReadIsReportedToTheUserOnce) {
    {
        const common::UniqueHandle lock = OpenForTest(m_file, 0);
        EXPECT_EQ(INIFile::GetLastIndexOfSectionFromINI(L"REFERANCE_FILE", m_file), 0);
        for (const wchar_t* key : {L"IsReferencedFile", L"Description", L"FilePath"}) {
            INIFile::AddRecordToINI(L"REFERANCE_FILE_1", key, L"new", m_file);
        }
        INIFile::RemoveSectionFromINI(L"REFERANCE_FILE_1", m_file);
    }
    INIFile::AddRecordToINI(L"REFERANCE_FILE_1", L"FilePath", L"new", m_file);
    EXPECT_EQ(g_reports,
              std::vector<std::wstring>{L"The information file \"" + m_file + L"\" could not be read: " +
                                        common::SystemErrorText(ERROR_SHARING_VIOLATION) +
                                        L".\n\nIt was left as it is; your change was not made."});
    EXPECT_EQ(Bytes(), kOneDocument);
}

TEST_F(IniLockApi, AnEditThatMetALockIsWrittenByItself) {
    INIFile::GetKeyValueFromINI(L"FILEINFO", L"GCode", m_file);
    {
        const common::UniqueHandle lock = OpenForTest(m_file, FILE_SHARE_READ);
        INIFile::AddRecordToINI(L"REFERANCE_FILE_1", L"Description", L"second", m_file);
        EXPECT_EQ(Bytes(), kOneDocument);
    }
    const ULONGLONG end = GetTickCount64() + 5000;
    while (Bytes() == kOneDocument && GetTickCount64() < end) {
        MSG message = {};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
        Sleep(10);
    }
    EXPECT_NE(Bytes().find("Description=second"), std::string::npos);
    EXPECT_TRUE(g_reports.empty());
}

// Edits a file as one of two processes, whose letter and number of edits are in the environment.
TEST(IniLockChild, DISABLED_EditsAgainAndAgain) {
    if (FileForChild().empty()) {
        return;
    }
    wchar_t name[8] = {};
    GetEnvironmentVariableW(L"MXOV_TEST_NAME", name, 8);
    const int count = _wtoi(name + 1);
    IniStore store;
    for (int i = 0; i < count; ++i) {
        store.SetValue(L"S_" + std::to_wstring(i % 50), std::wstring(1, name[0]) + std::to_wstring(i), L"x",
                       FileForChild());
    }
    bool saved = store.SaveKept();
    for (int attempt = 0; attempt < 1000 && !saved; ++attempt) { // the other one may be at it
        Sleep(5);
        saved = store.SaveKept();
    }
    EXPECT_TRUE(saved);
}

TEST(IniLockChild, DISABLED_AddsAgainAndAgain) {
    if (FileForChild().empty()) {
        return;
    }
    IniStore store;
    for (int i = 0; i < 40; ++i) {
        EXPECT_EQ(AddDocument(store, FileForChild()).error, static_cast<DWORD>(ERROR_SUCCESS));
    }
}

TEST_F(IniLock, TwoProcessesAddDocumentsUnderDifferentNumbers) {
    const ChildProcess one(L"IniLockChild.DISABLED_AddsAgainAndAgain", m_file);
    const ChildProcess other(L"IniLockChild.DISABLED_AddsAgainAndAgain", m_file);
    EXPECT_EQ(one.Wait(), 0U);
    EXPECT_EQ(other.Wait(), 0U);
    IniStore store;
    EXPECT_EQ(store.SectionNames(L"REFERANCE_FILE_", m_file).size(), 81U);
}

TEST_F(IniLock, TwoProcessesLoseNoEdit) {
    const int count = std::getenv("MXOV_LONG") != nullptr ? 5000 : 150;
    std::optional<ChildProcess> children[2];
    for (std::size_t i = 0; i < 2; ++i) {
        const std::wstring name = (i == 0 ? L"a" : L"b") + std::to_wstring(count);
        SetEnvironmentVariableW(L"MXOV_TEST_NAME", name.c_str());
        children[i].emplace(L"IniLockChild.DISABLED_EditsAgainAndAgain", m_file);
    }
    for (auto& child : children) {
        EXPECT_EQ(child->Wait(), 0U);
    }
    IniStore store;
    int missing = 0;
    for (const wchar_t name : {L'a', L'b'}) {
        for (int i = 0; i < count; ++i) {
            missing +=
                store.Value(L"S_" + std::to_wstring(i % 50), name + std::to_wstring(i), m_file) != L"x";
        }
    }
    EXPECT_EQ(missing, 0) << "of " << 2 * count;
    EXPECT_EQ(m_folder.EntryCount(), 1);
}

} // namespace
} // namespace mxovshare
