// The exported functions beside the platform's profile functions, through the built library.
#include "mxovshare.h"

#include "ChildProcess.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

namespace mxovshare {
namespace {

constexpr wchar_t kEdited[] = L"MXOV_TEST_EDITED"; // events between a test and its child
constexpr wchar_t kUnlocked[] = L"MXOV_TEST_UNLOCKED";

// The platform keeps a file in memory; this makes it look again.
void Flush(const std::wstring& file) {
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, file.c_str());
}

std::wstring PlatformValue(const std::wstring& key, const std::wstring& file) {
    Flush(file);
    std::wstring value(0x10000, L'\0');
    value.resize(GetPrivateProfileStringW(L"s", key.c_str(), L"", value.data(), 0xFFFF, file.c_str()));
    return value;
}

void SetPlatformValue(const std::wstring& key, const std::wstring& value, const std::wstring& file) {
    Flush(file);
    ASSERT_TRUE(WritePrivateProfileStringW(L"s", key.c_str(), value.c_str(), file.c_str()));
    Flush(file);
}

const std::wstring kOrdinary[] = {L"v",
                                  L"two words",
                                  L"",
                                  L" blank first",
                                  L"blank last ",
                                  L"\ttab ",
                                  L"   ",
                                  L"\"quoted\"",
                                  L"'quoted'",
                                  L"\"\"",
                                  L"'",
                                  L"\"",
                                  L"a \"b\" c",
                                  L"\"a\" b",
                                  L"it's",
                                  L"a=b=c",
                                  L"; no comment",
                                  L"a ; b # c",
                                  L"[s]",
                                  L"C:\\new\\table.txt",
                                  L"\\\\server\\share\\n",
                                  L"%TEMP%\\x",
                                  L"\\esc",
                                  L"tab\tinside",
                                  L"caf\xE9 \xFC\xDF",
                                  L"\x4E2D\x6587 \xD83D\xDD27"};

// Stands for another text in UTF-8 when it is written in the ANSI code page.
const std::wstring kAmbiguous = L"\xC3\xA9";

class INIFileBesidePlatform : public testing::TestWithParam<std::string_view> {
protected:
    const TempFolder m_folder;
    const std::wstring m_file = m_folder.Write(L"mxinfo.ini", GetParam());
};

TEST_P(INIFileBesidePlatform, PlatformReadsOrdinaryValues) {
    for (const std::wstring& value : kOrdinary) {
        INIFile::AddRecordToINI(L"s", L"k", value, m_file);
        EXPECT_EQ(PlatformValue(L"k", m_file), value);
        EXPECT_EQ(INIFile::GetKeyValueFromINI(L"s", L"k", m_file), value);
    }
}

TEST_P(INIFileBesidePlatform, PlatformReadsAmbiguousValues) {
    INIFile::AddRecordToINI(L"s", L"k", kAmbiguous, m_file);
    EXPECT_EQ(PlatformValue(L"k", m_file), kAmbiguous);
    EXPECT_EQ(INIFile::GetKeyValueFromINI(L"s", L"k", m_file), kAmbiguous);
}

TEST_P(INIFileBesidePlatform, ReadsWhatThePlatformWrites) {
    for (const std::wstring& value : kOrdinary) {
        SetPlatformValue(L"k", value, m_file);
        EXPECT_EQ(INIFile::GetKeyValueFromINI(L"s", L"k", m_file), PlatformValue(L"k", m_file));
    }
}

TEST_P(INIFileBesidePlatform, ThePlatformLeavesEscapedValuesWhole) {
    const std::wstring value = L" one\r\ntwo \x2028\xD800 \\esc:\" ";
    INIFile::AddRecordToINI(L"s", L"k", value, m_file);
    SetPlatformValue(L"j", L"1", m_file);
    EXPECT_EQ(INIFile::GetKeyValueFromINI(L"s", L"k", m_file), value);
    EXPECT_EQ(INIFile::GetKeyValueFromINI(L"s", L"j", m_file), L"1");
    EXPECT_EQ(PlatformValue(L"one", m_file), L"");
}

TEST_P(INIFileBesidePlatform, EveryValueComesBack) {
    const std::wstring values[] = {L"\r",
                                   L"\n",
                                   L"\x1A",
                                   L"a\x1",
                                   L"\\esc:",
                                   L"\\esc:\\n",
                                   L"\"\n\"",
                                   L"\xD800",
                                   L"\xDC00\xD800",
                                   L"\xFEFF",
                                   L"\xFFFE\xFFFF",
                                   L"\x85\x2029",
                                   std::wstring(40'000, L'x'),
                                   std::wstring(40'000, L'\n')};
    for (const std::wstring& value : values) {
        INIFile::AddRecordToINI(L"s", L"k", value, m_file);
        EXPECT_EQ(INIFile::GetKeyValueFromINI(L"s", L"k", m_file), value);
    }
}

INSTANTIATE_TEST_SUITE_P(Files, INIFileBesidePlatform,
                         testing::Values("", "[s]\r\nk=1\r\n[t]\r\nx=1\r\n", "; no last line end\n[s]\nk",
                                         std::string_view("\xFF\xFE[\0s\0]\0\n\0", 10),
                                         "\xEF\xBB\xBF[s]\r\n"));

TEST(INIFile, AgreesWithThePlatformOnOddFiles) {
    const std::string_view lines[] = {
        "k=v",         "  k \t=  v w \t", "k=\"v\"",  "k='v'",        "k=\"v'",      "k=\"",       "k=\"\"",
        "k=\"\"v\"\"", "k=\" v \" ",      "k",        "k=",           "=v",          "k=a\rb=c",   "x=a\rk=c",
        "k=\013a\014", "k=\032a\032",     "k=a\032b", "k=\240a\240",  "k=\034a\034", "; k=1\nk=2", ";\nk=2",
        "[s2\nk=9",    "k=1\nk=2",        "K=1",      "k=1 ; c",      "[s]\nk=1",    "[S]\nk=1",   "[s\nk=3",
        "k==v",        "k=[t]",           "k\t= v\n", "[t] ; x\nk=1", "[t]k=1\nk=2", "k=a\xE9"};
    const TempFolder folder;
    for (const std::string_view line : lines) {
        if (IsDBCSLeadByte(static_cast<BYTE>(line.back()))) {
            continue; // there the platform takes the line end for the second half of a character
        }
        for (const std::string start :
             {"[s]\r\n", "[ s ]\r\n", "  [s] x\n", "[s]\r", "\n\n[S]\n\n", "[t]\nk=0\n[s]\n"}) {
            const std::string bytes = start + std::string(line) + "\n[u]\nk=7\n";
            const std::wstring file = folder.Write(L"odd.ini", bytes);
            EXPECT_EQ(INIFile::GetKeyValueFromINI(L"s", L"k", file), PlatformValue(L"k", file)) << bytes;
            EXPECT_EQ(folder.Read(L"odd.ini"), bytes);
            DeleteFileW(file.c_str());
        }
    }
}

TEST(INIFileChild, DISABLED_EditsALockedFileAndEnds) {
    if (FileForChild().empty()) {
        return;
    }
    INIFile::GetKeyValueFromINI(L"s", L"k", FileForChild());
    INIFile::AddRecordToINI(L"s", L"k", L"new", FileForChild());
    EXPECT_EQ(INIFile::GetKeyValueFromINI(L"s", L"k", FileForChild()), L"new");
    SetEvent(OpenEventW(EVENT_MODIFY_STATE, FALSE, kEdited));
    WaitForSingleObject(OpenEventW(SYNCHRONIZE, FALSE, kUnlocked), 20'000);
}

TEST(INIFile, AnEditThatMetALockIsWrittenWhenTheProcessEnds) {
    const TempFolder folder;
    const std::wstring file = folder.Write(L"mxinfo.ini", "[s]\nk=old\n");
    const common::UniqueHandle edited(CreateEventW(nullptr, TRUE, FALSE, kEdited));
    const common::UniqueHandle unlocked(CreateEventW(nullptr, TRUE, FALSE, kUnlocked));
    common::UniqueHandle lock = common::OwnFile(
        CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    const ChildProcess child(L"INIFileChild.*", file);
    EXPECT_EQ(WaitForSingleObject(edited.get(), 30'000), WAIT_OBJECT_0);
    EXPECT_EQ(folder.Read(L"mxinfo.ini"), "[s]\nk=old\n");
    lock.reset();
    SetEvent(unlocked.get());
    EXPECT_EQ(child.Wait(), 0U);
    EXPECT_EQ(folder.Read(L"mxinfo.ini"), "[s]\nk=new\n");
}

TEST(INIFile, ListsNumbersAndRemovesSections) {
    const TempFolder folder;
    const std::wstring file =
        folder.Write(L"mxinfo.ini", "[FILEINFO]\r\n[REFERANCE_FILE_1]\r\nk=1\r\n[REFERANCE_FILE_2]\r\n"
                                    "[REFERANCE_FILE_3]\r\n[FILE_HISTORY_1]\r\n");
    INIFile::RemoveSectionFromINI(L"referance_file_2", file);
    EXPECT_EQ(INIFile::GetSectionNamesFromINI(L"REFERANCE_FILE", file),
              (std::vector<std::wstring>{L"REFERANCE_FILE_1", L"REFERANCE_FILE_3"}));
    EXPECT_EQ(INIFile::GetLastIndexOfSectionFromINI(L"REFERANCE_FILE", file), 3);
    EXPECT_EQ(INIFile::GetLastIndexOfSectionFromINI(L"NONE", file), 0);
    EXPECT_EQ(folder.Read(L"mxinfo.ini"),
              "[FILEINFO]\r\n[REFERANCE_FILE_1]\r\nk=1\r\n[REFERANCE_FILE_3]\r\n[FILE_HISTORY_1]\r\n");
    EXPECT_EQ(INIFile::GetKeyValueFromINI(L"REFERANCE_FILE_2", L"k", file), L"");
    EXPECT_EQ(INIFile::GetKeyValueFromINI(L"s", L"k", folder / L"none.ini"), L"");
    EXPECT_EQ(folder.EntryCount(), 1);
}

} // namespace
} // namespace mxovshare
