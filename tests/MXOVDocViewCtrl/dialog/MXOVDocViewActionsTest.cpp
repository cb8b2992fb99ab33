// What "+" and a double click do.
#include "ActionsFixture.h"

#include "common/ComPtr.h"
#include "FileDialogCalls.h"
#include "ImportHook.h"
#include "package/RecordLists.h"
#include "RealMouse.h"
#include "shell/HostText.h"

#include <thread>

#include <commctrl.h>
#include <mxovshare.h>
#include <ole2.h>
#include <shobjidl.h>

using namespace docview;

namespace {

constexpr const wchar_t* kExtensionKey = L".mxovtest";
constexpr const wchar_t* kTypeKey = L"mxovtest.document";

/// The program that the desktop associates with ".mxovtest": it copies the document it is given to a known
/// place.
class TestAssociation {
public:
    explicit TestAssociation(const std::wstring& target) {
        const std::wstring command = L"cmd.exe /c copy /y \"%1\" \"" + target + L"\"";
        Write(kExtensionKey, L"mxovtest.document");
        Write(std::wstring(kTypeKey) + L"\\shell\\open\\command", command);
    }
    ~TestAssociation() {
        RegDeleteTreeW(HKEY_CLASSES_ROOT, kExtensionKey);
        RegDeleteTreeW(HKEY_CLASSES_ROOT, kTypeKey);
    }
    TestAssociation(const TestAssociation&) = delete;
    TestAssociation& operator=(const TestAssociation&) = delete;

private:
    static void Write(const std::wstring& key, const std::wstring& value) {
        EXPECT_EQ(RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, value.c_str(),
                                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }
};

/// Opens a file without sharing it, and closes it some milliseconds after a dialog is gone.
std::thread LockBeyond(HWND dialog, const std::wstring& path, DWORD duration) {
    const HANDLE lock =
        CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(lock, INVALID_HANDLE_VALUE);
    return std::thread([=] {
        while (IsWindow(dialog)) {
            Sleep(1);
        }
        Sleep(duration);
        CloseHandle(lock);
    });
}

HRESULT STDMETHODCALLTYPE NoState(IFileDialogCustomize* /*dialog*/, DWORD /*id*/, BOOL* checked) {
    *checked = FALSE;
    return E_FAIL;
}

/// Keeps all file dialogs of this process from reporting the state of a check box.
class UnreadableCheckBoxes {
public:
    UnreadableCheckBoxes() {
        common::ComPtr<IFileDialogCustomize> dialog;
        if (SUCCEEDED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER,
                                       IID_IFileDialogCustomize, dialog.ReceiveVoid()))) {
            constexpr std::size_t kGetCheckButtonState = 17; // its place in the dialog's table
            m_method = &(*reinterpret_cast<void***>(dialog.Get()))[kGetCheckButtonState];
            m_real = ExchangePointer(m_method, reinterpret_cast<void*>(NoState));
        }
    }
    ~UnreadableCheckBoxes() {
        if (m_method) {
            ExchangePointer(m_method, m_real);
        }
    }
    UnreadableCheckBoxes(const UnreadableCheckBoxes&) = delete;
    UnreadableCheckBoxes& operator=(const UnreadableCheckBoxes&) = delete;

    [[nodiscard]] bool Works() const { return m_method != nullptr; }

private:
    void** m_method = nullptr;
    void* m_real = nullptr;
};

using MXOVDocViewActionsTest = ActionsFixture;

TEST_F(MXOVDocViewActionsTest, DoubleClickOpensDocumentsOfTheThreeLists) {
    const TestAssociation association(m_elsewhere / L"opened");
    m_package.Write(L"NC\\code.mxovtest", "code");
    m_package.Write(L"ReferanceFiles\\copy.mxovtest", "copy");
    m_elsewhere.Write(L"link.mxovtest", "link");
    const std::wstring linked = m_elsewhere / L"link.mxovtest";
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\nGCode=NC\\a\n"
             "[REFERANCE_FILE_1]\nIsReferencedFile=NO\nFilePath=ReferanceFiles\\copy.mxovtest\n"
             "[REFERANCE_FILE_2]\nFilePath=" +
             std::string(linked.begin(), linked.end()) + "\n");
    Load();
    DoubleClick(IDC_GCODE_LIST, 0);
    EXPECT_TRUE(WasOpened("code"));
    EXPECT_FALSE(IsEnabled(IDC_DELETE));
    DoubleClick(IDC_ADDITIONAL_LIST, 0);
    EXPECT_TRUE(WasOpened("copy"));
    EXPECT_TRUE(IsEnabled(IDC_DELETE));
    DoubleClick(IDC_ADDITIONAL_LIST, 1);
    EXPECT_TRUE(WasOpened("link"));
}

TEST_F(MXOVDocViewActionsTest, DoubleClickOnThePartOpensNothing) {
    const TestAssociation association(m_elsewhere / L"opened");
    m_package.Write(L"NC\\code.mxovtest", "code");
    Describe("[FILEINFO]\nCADFilePath=C:\\gone.mxovtest\nGCode=NC\\a\n");
    Load();
    const MessageBoxAnswer answer(IDOK);
    DoubleClick(IDC_PART_LIST, 0);
    DoubleClick(IDC_GCODE_LIST, 0);
    EXPECT_TRUE(WasOpened("code"));
    EXPECT_EQ(answer.count, 0);
}

TEST_F(MXOVDocViewActionsTest, MissingLinkedDocumentIsToldAndMissingCopyIsNot) {
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n"
             "[REFERANCE_FILE_1]\nIsReferencedFile=NO\nFilePath=ReferanceFiles\\gone.txt\n"
             "[REFERANCE_FILE_2]\nFilePath=C:\\gone\\lost.txt\n");
    Load();
    const MessageBoxAnswer answer(IDOK);
    DoubleClick(IDC_ADDITIONAL_LIST, 0);
    EXPECT_EQ(answer.count, 0);
    DoubleClick(IDC_ADDITIONAL_LIST, 1);
    EXPECT_EQ(answer.count, 1);
    EXPECT_EQ(answer.title, L"Maxtrel Orvando Document Manager");
    EXPECT_EQ(answer.text, HostText(152));
    EXPECT_FALSE(answer.text.empty());
}

TEST_F(MXOVDocViewActionsTest, DoubleClickBesideTheItemsDoesNothing) {
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n[REFERANCE_FILE_1]\nFilePath=C:\\gone\\lost.txt\n");
    Load();
    const MessageBoxAnswer answer(IDOK);
    Notify(IDC_ADDITIONAL_LIST, NM_DBLCLK);
    Notify(IDC_GCODE_LIST, NM_DBLCLK);
    Notify(IDC_SETUP_LIST, NM_DBLCLK);
    EXPECT_EQ(answer.count, 0);
    EXPECT_FALSE(IsEnabled(IDC_DELETE));
}

TEST_F(MXOVDocViewActionsTest, AddsALinkedDocument) {
    Describe("[REFERANCE_FILE_1]\nFilePath=C:\\a\\x\n[REFERANCE_FILE_3]\nFilePath=C:\\a\\y\n");
    Load();
    const std::wstring path = m_elsewhere.WriteSized(L"notes.txt", 1025);
    m_elsewhere.SetTime(L"notes.txt", {2024, 1, 0, 1, 9, 5, 3, 0});
    Add(path, true);
    const std::vector<ShownRow> rows = Rows(IDC_ADDITIONAL_LIST);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[2], (ShownRow{L"notes.txt", L"2 KB", L"2024-01-01 09:05:03", 0}));
    EXPECT_EQ(additionalRecords[2].sectionName, L"REFERANCE_FILE");
    EXPECT_EQ(additionalRecords[2].filePath, path);
    EXPECT_EQ(additionalRecords[2].isAdditional, 1);
    EXPECT_EQ(Stored(L"REFERANCE_FILE_4", L"IsReferencedFile"), L"YES");
    EXPECT_EQ(Stored(L"REFERANCE_FILE_4", L"Description"), L"-");
    EXPECT_EQ(Stored(L"REFERANCE_FILE_4", L"Timestamp"), L"2024-01-01 09:05:03");
    EXPECT_EQ(Stored(L"REFERANCE_FILE_4", L"FilePath"), path);
    const std::string file = m_package.Read(L"mxinfo.ini");
    std::size_t place = file.find("[REFERANCE_FILE_4]");
    for (const char* key : {"IsReferencedFile", "Description", "Timestamp", "FilePath"}) {
        place = file.find(key, place);
        EXPECT_NE(place, std::string::npos) << key << " is not behind those before it";
    }
    EXPECT_TRUE(IsEnabled(IDC_SAVE));
    EXPECT_FALSE(Exists(L"ReferanceFiles"));
}

TEST_F(MXOVDocViewActionsTest, LinksADocumentWhoseCheckBoxCannotBeRead) {
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n");
    Load();
    const std::wstring path = m_elsewhere.Write(L"notes.txt", "x");
    const UnreadableCheckBoxes unreadable;
    ASSERT_TRUE(unreadable.Works());
    Add(path, false);
    ASSERT_EQ(additionalRecords.size(), 1U);
    EXPECT_EQ(additionalRecords[0].isReferenced, 1);
    EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST)[0].image, 0);
    EXPECT_EQ(Stored(L"REFERANCE_FILE_1", L"IsReferencedFile"), L"YES");
    EXPECT_EQ(Stored(L"REFERANCE_FILE_1", L"FilePath"), path);
}

TEST_F(MXOVDocViewActionsTest, AddsBelowTheLargestNumberAndOverwritesNothing) {
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n"
             "[REFERANCE_FILE_2147483647]\nFilePath=C:\\a\\last\n[REFERANCE_FILE_2]\nFilePath=C:\\a\\two\n");
    Load();
    const std::wstring first = m_elsewhere.Write(L"first.txt", "1");
    const std::wstring second = m_elsewhere.Write(L"second.txt", "2");
    Add(first, true);
    Add(second, true);
    EXPECT_EQ(Stored(L"REFERANCE_FILE_2147483647", L"FilePath"), L"C:\\a\\last");
    EXPECT_EQ(Stored(L"REFERANCE_FILE_2147483646", L"FilePath"), first);
    EXPECT_EQ(Stored(L"REFERANCE_FILE_2147483645", L"FilePath"), second);
    EXPECT_EQ(Stored(L"REFERANCE_FILE_2", L"FilePath"), L"C:\\a\\two");
    EXPECT_EQ(Sections().size(), 4U);
    Load();
    EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST).size(), 4U);
}

TEST_F(MXOVDocViewActionsTest, AddsBehindTheOthersWhileAnotherProgramLocksTheInformationFile) {
    const std::string before =
        "[FILEINFO]\r\nMaxtlreVersion=M 2021\r\n[REFERANCE_FILE_1]\r\nDescription=first\r\n"
        "FilePath=C:\\a\\x\r\n";
    const std::wstring path = m_elsewhere.WriteSized(L"notes.txt", 1);
    m_elsewhere.SetTime(L"notes.txt", {2024, 1, 0, 1, 9, 5, 3, 0});
    const std::string added = "[REFERANCE_FILE_2]\r\nIsReferencedFile=YES\r\nDescription=-\r\n"
                              "Timestamp=2024-01-01 09:05:03\r\nFilePath=" +
                              std::string(path.begin(), path.end()) + "\r\n";
    for (const DWORD duration : {60UL, 250UL, 1000UL}) {
        Describe(before);
        Load();
        std::thread unlock;
        {
            const FileDialogDriver driver([&](HWND dialog) {
                if (!unlock.joinable()) {
                    unlock = LockBeyond(dialog, m_package / L"mxinfo.ini", duration);
                }
                FileDialogDriver::Choose(dialog, path);
            });
            Command(IDC_ADD);
        }
        unlock.join();
        EXPECT_EQ(m_package.Read(L"mxinfo.ini"), before + added) << duration;
        EXPECT_EQ(Sections().size(), 2U) << duration;
    }
}

TEST_F(MXOVDocViewActionsTest, AddsACopyOverAnOlderOneAndShowsItAgainAfterALoad) {
    m_package.Write(L"ReferanceFiles\\notes.txt", "older");
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n");
    Load();
    const std::wstring path = m_elsewhere.Write(L"notes.txt", "newer");
    Add(path, false);
    EXPECT_EQ(m_package.Read(L"ReferanceFiles\\notes.txt"), "newer");
    ASSERT_EQ(Rows(IDC_ADDITIONAL_LIST).size(), 1U);
    EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST)[0].image, 2);
    EXPECT_EQ(Stored(L"REFERANCE_FILE_1", L"IsReferencedFile"), L"NO");
    EXPECT_EQ(Stored(L"REFERANCE_FILE_1", L"FilePath"), L"ReferanceFiles\\notes.txt");
    EXPECT_EQ(additionalRecords[0].filePath, path);
    Load();
    ASSERT_EQ(additionalRecords.size(), 1U);
    EXPECT_EQ(additionalRecords[0].sectionName, L"REFERANCE_FILE_1");
    EXPECT_EQ(additionalRecords[0].filePath, L"ReferanceFiles\\notes.txt");
    EXPECT_EQ(additionalRecords[0].description, L"-");
}

TEST_F(MXOVDocViewActionsTest, CopyWithoutTheFolderFailsSilently) {
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n");
    Load();
    const MessageBoxAnswer answer(IDOK);
    Add(m_elsewhere.Write(L"notes.txt", "x"), false);
    EXPECT_EQ(answer.count, 0);
    EXPECT_FALSE(Exists(L"ReferanceFiles"));
    EXPECT_EQ(Sections(), (std::vector<std::wstring>{L"REFERANCE_FILE_1"}));
}

TEST_F(MXOVDocViewActionsTest, TheFileDialogOpensAnyFileOverTheHostsWindow) {
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n");
    Load();
    const FileDialogCalls calls;
    Command(IDC_ADD);
    EXPECT_EQ(calls.shown, 1);
    EXPECT_TRUE(calls.opens);
    EXPECT_EQ(calls.owner, m_frame.GetSafeHwnd());
    EXPECT_EQ(calls.extension, L"*");
    EXPECT_EQ(calls.name, L"");
    EXPECT_EQ(calls.types, std::vector<std::wstring>{L"All Files (*.*)|*.*"});
    EXPECT_TRUE(calls.options & FOS_OVERWRITEPROMPT);
}

TEST_F(MXOVDocViewActionsTest, CancelledAddChangesNothing) {
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n");
    Load();
    const std::string before = m_package.Read(L"mxinfo.ini");
    {
        const FileDialogDriver driver(FileDialogDriver::Cancel);
        Command(IDC_ADD);
    }
    EXPECT_TRUE(Rows(IDC_ADDITIONAL_LIST).empty());
    EXPECT_FALSE(IsEnabled(IDC_SAVE));
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), before);
}
} // namespace
