// What the dialog passes to the system and to the host's library, seen by stand-ins for their functions.
#include "DialogFixture.h"

#include "ImportHook.h"
#include "popup/MXOVPopupDlg.h"
#include "shell/HostText.h"

#include <commctrl.h>
#include <mxovshare.h>
#include <shellapi.h>

#include <cstring>
#include <functional>

using namespace docview;

namespace {

struct Save {
    std::wstring folder;
    std::wstring file;
    std::wstring text;
    HCURSOR cursor; ///< shown meanwhile
};

std::vector<Save> saves;
std::function<void()> whileSaving;

constexpr char kRegenerate[] =
    "_ZN9mxovshare5Utils21ReGenerateOrvandoFileENSt7__cxx1112basic_stringIwSt11char_"
    "traitsIwESaIwEEES6_S6_";

void RecordSave(std::wstring folder, std::wstring file, std::wstring text) {
    saves.push_back({std::move(folder), std::move(file), std::move(text), GetCursor()});
    if (whileSaving) {
        whileSaving();
    }
}

struct Message {
    HWND owner;
    std::wstring text;
    std::wstring title;
    UINT style;
};

std::vector<Message> messages;

int WINAPI RecordMessage(HWND owner, LPCWSTR text, LPCWSTR title, UINT style) {
    messages.push_back({owner, text, title, style});
    return IDYES;
}

SHELLEXECUTEINFOW started;
std::wstring startedFile;

BOOL WINAPI RecordStart(SHELLEXECUTEINFOW* info) {
    started = *info;
    startedFile = info->lpFile;
    return FALSE;
}

decltype(&GetProcAddress) findFunction = nullptr;

FARPROC WINAPI FindFunction(HMODULE module, LPCSTR name) {
    const bool byName = reinterpret_cast<ULONG_PTR>(name) > 0xffff;
    return byName && std::strcmp(name, "ShellExecuteExW") == 0
               ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&RecordStart))
               : findFunction(module, name);
}

class MXOVDocViewCallsTest : public DialogFixture {
protected:
    void SetUp() override {
        saves.clear();
        messages.clear();
        whileSaving = nullptr;
        ASSERT_TRUE(m_regenerate.Real());
        ASSERT_TRUE(m_messageBox.Real());
        Create();
        Describe("[FILEINFO]\nMaxtlreVersion=M 2021\nCADFilePath=C:\\gone\\part\n"
                 "[REFERANCE_FILE_1]\nFilePath=C:\\gone\\lost.txt\n");
        Load();
        m_dialog.SetPackageFile(kPackageFile);
    }
    void TearDown() override { MXOVPopupDlg::CloseOf(m_dialog); }

    /// How many entries the history of the properties shows.
    LRESULT ShownHistory() {
        Select(IDC_PART_LIST, 0);
        Notify(IDC_PART_LIST, NM_CLICK);
        return SendDlgItemMessageW(MXOVPopupDlg::Current()->GetSafeHwnd(), IDC_HISTORY, LVM_GETITEMCOUNT, 0,
                                   0);
    }

    static constexpr wchar_t kPackageFile[] = L"C:\\jobs\\package.mxov";
    ImportHook<decltype(RecordSave)> m_regenerate{kRegenerate, &RecordSave};
    ImportHook<decltype(RecordMessage)> m_messageBox{"MessageBoxW", &RecordMessage};
};

/// Texts and pictures of the host that are not there.
class NoHostResources {
public:
    NoHostResources() { mxovshare::OVApplication::hMXOVResInstance = GetModuleHandleW(nullptr); }
    ~NoHostResources() { mxovshare::OVApplication::hMXOVResInstance = m_before; }
    NoHostResources(const NoHostResources&) = delete;
    NoHostResources& operator=(const NoHostResources&) = delete;

private:
    HINSTANCE m_before = mxovshare::OVApplication::hMXOVResInstance;
};

} // namespace

TEST_F(MXOVDocViewCallsTest, SaveAndClosePassFolderFileAndOperation) {
    Command(IDC_UPDATE);
    m_dialog.SaveOnClose();
    Command(IDC_SAVE);
    ASSERT_EQ(saves.size(), 2U);
    for (const Save& save : saves) {
        EXPECT_EQ(save.folder, m_package.PathWithSeparator());
        EXPECT_EQ(save.file, kPackageFile);
        EXPECT_EQ(save.text, HostText(148));
    }
}

TEST_F(MXOVDocViewCallsTest, OnlyTheButtonShowsTheWaitCursor) {
    const HCURSOR wait = LoadCursorW(nullptr, IDC_WAIT);
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    Command(IDC_UPDATE);
    m_dialog.SaveOnClose();
    Command(IDC_SAVE);
    ASSERT_EQ(saves.size(), 2U);
    EXPECT_NE(saves[0].cursor, wait);
    EXPECT_EQ(saves[1].cursor, wait);
    EXPECT_NE(GetCursor(), wait);
}

TEST_F(MXOVDocViewCallsTest, OnlyTheButtonReadsTheHistoryAgain) {
    const std::string before = m_package.Read(L"mxinfo.ini");
    std::string entries;
    whileSaving = [&] {
        entries += "[FILE_HISTORY_" + std::to_string(entries.size()) + "]\nOperation=Edited\n";
        Describe(before + entries);
    };
    EXPECT_EQ(ShownHistory(), 0);
    Command(IDC_UPDATE);
    Command(IDC_SAVE);
    EXPECT_EQ(ShownHistory(), 1);
    Command(IDC_UPDATE);
    m_dialog.SaveOnClose();
    ASSERT_EQ(saves.size(), 2U);
    EXPECT_EQ(ShownHistory(), 1);
}

TEST_F(MXOVDocViewCallsTest, SaveGoesOffWhateverTheLibraryDid) {
    Command(IDC_UPDATE);
    Command(IDC_SAVE);
    EXPECT_FALSE(IsEnabled(IDC_SAVE));
    m_dialog.SaveOnClose();
    EXPECT_TRUE(messages.empty());
}

TEST_F(MXOVDocViewCallsTest, TheQuestionIsAskedInAWarningWithYesAndNo) {
    Command(IDC_UPDATE);
    m_dialog.SaveOnClose();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].owner, m_dialog.GetSafeHwnd());
    EXPECT_EQ(messages[0].text, HostText(149));
    EXPECT_EQ(messages[0].title, L"Maxtrel Orvando Document Manager");
    EXPECT_EQ(messages[0].style, 0x34U);
}

TEST_F(MXOVDocViewCallsTest, AMissingLinkIsReportedInAWarning) {
    Select(IDC_ADDITIONAL_LIST, 0);
    Notify(IDC_ADDITIONAL_LIST, NM_DBLCLK);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].owner, m_dialog.GetSafeHwnd());
    EXPECT_EQ(messages[0].text, HostText(152));
    EXPECT_EQ(messages[0].title, L"Maxtrel Orvando Document Manager");
    EXPECT_EQ(messages[0].style, 48U);
}

TEST_F(MXOVDocViewCallsTest, WithoutTheHostsTextsQuestionAndOperationAreEmpty) {
    const NoHostResources none;
    Command(IDC_UPDATE);
    m_dialog.SaveOnClose();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].text, L"");
    ASSERT_EQ(saves.size(), 1U);
    EXPECT_EQ(saves[0].text, L"");
}

TEST_F(MXOVDocViewCallsTest, TheModifiedStateIsKeptWithoutItsButton) {
    ::DestroyWindow(Item(IDC_SAVE));
    Command(IDC_UPDATE);
    m_dialog.SaveOnClose();
    EXPECT_EQ(messages.size(), 1U);
}

TEST_F(MXOVDocViewCallsTest, EveryChangeRepaintsTheSaveButton) {
    Command(IDC_UPDATE);
    ValidateRect(Item(IDC_SAVE), nullptr);
    ASSERT_FALSE(GetUpdateRect(Item(IDC_SAVE), nullptr, FALSE));
    Command(IDC_UPDATE);
    EXPECT_TRUE(GetUpdateRect(Item(IDC_SAVE), nullptr, FALSE));
}

TEST_F(MXOVDocViewCallsTest, ADocumentIsStartedWithItsDefaultVerb) {
    // The function is an import of the program, or looked up when it is needed.
    findFunction = &GetProcAddress;
    const ImportHook<decltype(RecordStart)> imported("ShellExecuteExW", &RecordStart);
    const ImportHook<decltype(FindFunction)> looked("GetProcAddress", &FindFunction);
    findFunction = looked.Real();
    started = {};
    const std::wstring path = m_package.Write(L"NC\\code.nc", "x");
    m_package.Write(L"Setup\\sheet.pdf", "x");
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\nGCode=NC\\a\nSetupSheets=Setup\\a\n");
    Load();
    Select(IDC_SETUP_LIST, 0);
    Notify(IDC_SETUP_LIST, NM_DBLCLK);
    EXPECT_TRUE(startedFile.ends_with(L"Setup\\sheet.pdf")) << "a setup sheet";
    Select(IDC_GCODE_LIST, 0);
    Notify(IDC_GCODE_LIST, NM_DBLCLK);
    EXPECT_EQ(startedFile, m_package.PathWithSeparator() + L"NC\\code.nc");
    EXPECT_EQ(started.cbSize, sizeof started);
    EXPECT_EQ(started.fMask, 64U);
    EXPECT_EQ(started.lpVerb, nullptr);
    EXPECT_EQ(started.lpParameters, nullptr);
    EXPECT_EQ(started.lpDirectory, nullptr);
    EXPECT_EQ(started.nShow, 1);
}
