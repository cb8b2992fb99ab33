// Controls that share something: two in one process, and two processes on one folder.
#include "common/Paths.h"
#include "EmbeddedControl.h"
#include "PackageBuilder.h"
#include "Process.h"

#include <commctrl.h>

namespace {

constexpr wchar_t kFolderVariable[] = L"MXOV_SHARED_FOLDER";
constexpr int kPopupName = 1033;

LRESULT Rows(HWND dialog, int list) {
    return SendDlgItemMessageW(dialog, list, LVM_GETITEMCOUNT, 0, 0);
}

HWND DialogOf(const MockContainer& container) {
    return FindWindowExW(container.ControlWindow(), nullptr, L"#32770", nullptr);
}

/// Selects a document and notifies the dialog of the click on it.
void Click(HWND dialog, int list, int item) {
    LVITEMW state = {};
    state.stateMask = state.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendDlgItemMessageW(dialog, list, LVM_SETITEMSTATE, static_cast<WPARAM>(item),
                        reinterpret_cast<LPARAM>(&state));
    NMITEMACTIVATE header = {};
    header.hdr = {GetDlgItem(dialog, list), static_cast<UINT_PTR>(list), NM_CLICK};
    SendMessageW(dialog, WM_NOTIFY, static_cast<WPARAM>(list), reinterpret_cast<LPARAM>(&header));
}

void Delete(HWND dialog, int item) {
    Click(dialog, kAdditionalList, item);
    SendMessageW(dialog, WM_COMMAND, kDeleteButton, 0);
}

/// Name of the document in the popup; empty when there is no popup.
std::wstring ShownDocument() {
    wchar_t text[100] = L"";
    GetDlgItemTextW(FindWindowW(L"#32770", L"Document Properties"), kPopupName, text, ARRAYSIZE(text));
    return text;
}

/// Starts this program again, with the one test that is meant for the second process. It has no output: its
/// report is its exit code.
Process StartSecondProcess(const std::wstring& folder) {
    SetEnvironmentVariableW(kFolderVariable, folder.c_str());
    Process process(L"\"" + common::ModulePath(nullptr) +
                        L"\" --gtest_filter=SharingTest.DISABLED_Second* "
                        L"--gtest_also_run_disabled_tests --gtest_brief=1",
                    STARTF_USESTDHANDLES);
    SetEnvironmentVariableW(kFolderVariable, nullptr);
    EXPECT_TRUE(process);
    return process;
}

class SharingTest : public EmbeddedControlTest {
protected:
    /// Another control of this process, in a container of its own.
    struct SecondControl {
        SecondControl() { container.Embed(control.Get()); }

        HRESULT Activate() { return container.DoVerb(OLEIVERB_INPLACEACTIVATE); }

        HRESULT Load(const std::wstring& folder) {
            Value value(folder);
            return Invoke(Automation(control.Get()).Get(), kInputParameter, DISPATCH_PROPERTYPUT,
                          {value.Get()});
        }

        MockContainer container;
        ComPtr<IUnknown> control = CreateControl();
    };
};

/// A package of one linked document, last.pdf.
void WriteOneDocument(const PackageBuilder& package) {
    package.WriteInformation("[FILEINFO]\nMaxtlreVersion=Package Writer 2024\n[REFERANCE_FILE_1]\n"
                             "IsReferencedFile=YES\nFilePath=Q:\\last.pdf\n");
}

} // namespace

TEST_F(SharingTest, TwoControlsInOneProcessShowTheirOwnRowsAndShareTheRecords) {
    const PackageBuilder package;
    SecondControl second;
    ASSERT_EQ(S_OK, Activate());
    ASSERT_EQ(S_OK, second.Activate());
    const HWND secondDialog = DialogOf(second.container);
    ASSERT_EQ(S_OK, Load(package.Path()));
    EXPECT_EQ(1, Rows(Dialog(), kPartList));
    EXPECT_EQ(3, Rows(Dialog(), kAdditionalList));
    EXPECT_EQ(0, Rows(secondDialog, kAdditionalList)) << "the rows are each dialog's own";
    EXPECT_EQ(S_OK, Invoke(Automation(second.control.Get()).Get(), kClearAllData, DISPATCH_METHOD));
    EXPECT_EQ(3, Rows(Dialog(), kAdditionalList)) << "only the records behind them went";
    second.container.Remove();
    EXPECT_EQ(3, Rows(Dialog(), kAdditionalList));
    EXPECT_EQ(S_OK, Load(package.Path()));
    EXPECT_EQ(3, Rows(Dialog(), kAdditionalList));
}

TEST_F(SharingTest, ClickShowsTheRecordOfThePackageThatWasLoadedLast) {
    const PackageBuilder package;
    const PackageBuilder last;
    WriteOneDocument(last);
    SecondControl second;
    ASSERT_EQ(S_OK, Activate());
    ASSERT_EQ(S_OK, second.Activate());
    ASSERT_EQ(S_OK, Load(package.Path()));
    Click(Dialog(), kAdditionalList, 0);
    EXPECT_EQ(L"certificate.pdf", ShownDocument());
    ASSERT_EQ(S_OK, second.Load(last.Path()));
    EXPECT_EQ(3, Rows(Dialog(), kAdditionalList));
    Click(Dialog(), kAdditionalList, 0);
    EXPECT_EQ(L"last.pdf", ShownDocument()) << "the records are the module's";
    ASSERT_EQ(S_OK, Load(package.Path()));
    Click(Dialog(), kAdditionalList, 0);
    EXPECT_EQ(L"certificate.pdf", ShownDocument());
    second.container.Remove();
}

TEST_F(SharingTest, ActivatingOneControlLeavesTheRecordsOfTheOther) {
    const PackageBuilder package;
    const PackageBuilder last;
    WriteOneDocument(last);
    SecondControl second;
    ASSERT_EQ(S_OK, Activate());
    ASSERT_EQ(S_OK, second.Activate());
    ASSERT_EQ(S_OK, Load(package.Path()));
    ASSERT_EQ(S_OK, second.Load(last.Path()));
    EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
    ASSERT_EQ(S_OK, Activate());
    EXPECT_EQ(3, Rows(Dialog(), kAdditionalList)) << "its own rows are shown again";
    Click(DialogOf(second.container), kAdditionalList, 0);
    EXPECT_EQ(L"last.pdf", ShownDocument()) << "the records of the other control are still there";
    second.container.Remove();
}

TEST_F(SharingTest, ClearedDocumentsStayAwayInANewWindow) {
    const PackageBuilder package;
    ASSERT_EQ(S_OK, Activate());
    ASSERT_EQ(S_OK, Load(package.Path()));
    EXPECT_EQ(S_OK, Invoke(Automation(control.Get()).Get(), kClearAllData, DISPATCH_METHOD));
    EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
    ASSERT_EQ(S_OK, Activate());
    EXPECT_EQ(0, Rows(Dialog(), kPartList));
    EXPECT_EQ(0, Rows(Dialog(), kAdditionalList));
    ASSERT_EQ(S_OK, Load(package.Path()));
    EXPECT_EQ(3, Rows(Dialog(), kAdditionalList));
}

TEST_F(SharingTest, TwoProcessesOnOneFolderKeepEachOthersChanges) {
    const PackageBuilder package;
    ASSERT_EQ(S_OK, Activate());
    ASSERT_EQ(S_OK, Load(package.Path()));
    ASSERT_EQ(3, Rows(Dialog(), kAdditionalList));
    const Process second = StartSecondProcess(package.Path());
    while (second.IsRunning()) {
        ASSERT_EQ(S_OK, Load(package.Path()));
        const LRESULT rows = Rows(Dialog(), kAdditionalList);
        ASSERT_TRUE(rows == 3 || rows == 2) << "before or after, never in between: " << rows;
        Pump();
    }
    EXPECT_EQ(0U, second.ExitCode());
    ASSERT_EQ(S_OK, Load(package.Path()));
    EXPECT_EQ(2, Rows(Dialog(), kAdditionalList)) << "what the other process removed is seen";
    Delete(Dialog(), 1);
    EXPECT_EQ(1, Rows(Dialog(), kAdditionalList));
    ASSERT_EQ(S_OK, Load(package.Path()));
    EXPECT_EQ(1, Rows(Dialog(), kAdditionalList));
    const std::string information = package.Folder().Read(L"pkg\\mxinfo.ini");
    EXPECT_EQ(std::string::npos, information.find("certificate.pdf"));
    EXPECT_NE(std::string::npos, information.find("lost.pdf"));
    EXPECT_EQ(std::string::npos, information.find("plan.txt"));
    EXPECT_NE(std::string::npos, information.find("GCode=nc\\op10.nc;other\\op30.nc"));
}

/// Run by the test above in a process of its own.
TEST_F(SharingTest, DISABLED_SecondProcessDeletesTheFirstDocument) {
    wchar_t folder[MAX_PATH] = L"";
    ASSERT_NE(0U, GetEnvironmentVariableW(kFolderVariable, folder, MAX_PATH));
    ASSERT_EQ(S_OK, Activate());
    ASSERT_EQ(S_OK, Load(folder));
    ASSERT_EQ(3, Rows(Dialog(), kAdditionalList));
    Delete(Dialog(), 0);
    EXPECT_EQ(2, Rows(Dialog(), kAdditionalList));
}
