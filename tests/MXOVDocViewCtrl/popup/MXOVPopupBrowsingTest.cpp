// Pointing a linked document at another file, through the system's file dialog.
#include "PopupFixture.h"

#include "package/RecordLists.h"
#include "RealMouse.h"

#include <ole2.h>

namespace {

/// The visible dialog of this thread besides the popup, or null.
HWND FindFileDialog() {
    HWND found = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM parameter) -> BOOL {
            wchar_t name[10] = L"";
            GetClassNameW(window, name, ARRAYSIZE(name));
            const bool isPopup = GetDlgItem(window, IDC_HELP_ICON) != nullptr;
            if (std::wstring(name) != L"#32770" || isPopup || !IsWindowVisible(window)) {
                return TRUE;
            }
            *reinterpret_cast<HWND*>(parameter) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

/// A descendant of a class whose text holds the given one.
HWND FindControl(HWND dialog, const std::wstring& className, const std::wstring& text = L"") {
    struct Search {
        std::wstring className;
        std::wstring text;
        HWND found;
    } search{className, text, nullptr};
    EnumChildWindows(
        dialog,
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            wchar_t name[40] = L"";
            wchar_t shown[200] = L"";
            GetClassNameW(window, name, ARRAYSIZE(name));
            GetWindowTextW(window, shown, ARRAYSIZE(shown));
            if (wanted.className != name || std::wstring(shown).find(wanted.text) == std::wstring::npos) {
                return TRUE;
            }
            wanted.found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::function<void(HWND)> whenShown; ///< what a test does with the file dialog once it is up

void CALLBACK AwaitDialog(HWND /*window*/, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
    const HWND dialog = FindFileDialog();
    if (dialog && FindControl(dialog, L"Edit")) {
        KillTimer(nullptr, timer);
        whenShown(dialog);
    }
}

class MXOVPopupBrowsingTest : public PopupFixture {
protected:
    void SetUp() override { ASSERT_HRESULT_SUCCEEDED(OleInitialize(nullptr)); }
    void TearDown() override {
        MXOVPopupDlg::CloseOf(m_owner);
        OleUninitialize();
    }

    /// Presses "..." and does something with the file dialog.
    void Browse(std::function<void(HWND)> act) {
        whenShown = std::move(act);
        SetTimer(nullptr, 0, 20, AwaitDialog);
        SendMessageW(Item(IDC_BROWSE), BM_CLICK, 0, 0);
    }

    static void Choose(HWND dialog, const std::wstring& path) {
        SendMessageW(FindControl(dialog, L"Edit"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    }

    static void Cancel(HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); }

    /// Whether the file dialog offers this kind of file, and no other.
    bool OffersOnly(const std::wstring& kind) {
        bool offered = false;
        Browse([&](HWND dialog) {
            for (HWND box = FindWindowExW(dialog, nullptr, L"ComboBox", nullptr); box;
                 box = FindWindowExW(dialog, box, L"ComboBox", nullptr)) {
                offered = offered || (SendMessageW(box, CB_GETCOUNT, 0, 0) == 1 && ItemText(box) == kind);
            }
            if (const HWND box = FindControl(dialog, L"ComboBox", kind)) {
                offered = offered || SendMessageW(box, CB_GETCOUNT, 0, 0) == 1;
            }
            Cancel(dialog);
        });
        return offered;
    }

private:
    static std::wstring ItemText(HWND box) {
        wchar_t text[200] = L"";
        SendMessageW(box, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(text));
        return text;
    }
};

} // namespace

TEST_F(MXOVPopupBrowsingTest, AChosenFileReplacesThePath) {
    const std::wstring chosen = m_package.WriteSized(L"outside\\other.sldprt", 3000);
    Show(DocumentCategory::PartAssembly);
    Browse([&](HWND dialog) { Choose(dialog, chosen); });
    EXPECT_EQ(Text(IDC_DOCUMENT_NAME), L"other.sldprt");
    EXPECT_EQ(Text(IDC_DOCUMENT_PATH), chosen);
    EXPECT_EQ(Text(IDC_DOCUMENT_SIZE), L"3 KB");
    EXPECT_EQ(Text(IDC_DESCRIPTION), L"The part");
    EXPECT_EQ(Value(L"FILEINFO", L"CADFilePath"), chosen);
    EXPECT_EQ(Value(L"FILEINFO", L"CADFileDescription"), L"The part");
    EXPECT_EQ(partAssemblyRecords[0].filePath, chosen);
    EXPECT_EQ(partAssemblyRecords[0].fileName, L"Bracket & Arm.SldPrt");
    HandleMessages();
    EXPECT_EQ(m_owner.updates, 1);
}

TEST_F(MXOVPopupBrowsingTest, CancellingChangesNothing) {
    Show(DocumentCategory::AdditionalDocument);
    Browse([](HWND dialog) { Cancel(dialog); });
    HandleMessages();
    EXPECT_EQ(Text(IDC_DOCUMENT_PATH), additionalRecords[0].filePath);
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), "");
    EXPECT_EQ(m_owner.updates, 0);
}

TEST_F(MXOVPopupBrowsingTest, OffersFilesOfTheDocumentsKind) {
    Show(DocumentCategory::PartAssembly);
    EXPECT_TRUE(OffersOnly(L"Part File (*.SLDPRT)"));
    partAssemblyRecords[0].fileName = L"arm.sldasm";
    Show(DocumentCategory::PartAssembly);
    EXPECT_TRUE(OffersOnly(L"Assembly File (*.SLDASM)"));
    Show(DocumentCategory::AdditionalDocument);
    EXPECT_TRUE(OffersOnly(L"All Files (*.*)"));
}

TEST_F(MXOVPopupBrowsingTest, APressElsewhereMeanwhileLeavesThePopup) {
    Show(DocumentCategory::PartAssembly);
    bool pressed = false;
    Browse([&](HWND dialog) {
        const RealMouse mouse;
        mouse.MoveTo(m_owner.Other(), {5, 5});
        pressed = PumpUntil([&] { return mouse.Reached(m_owner.Other()); });
        mouse.Click();
        pressed = pressed && PumpUntil([&] { return mouse.Delivered(2); });
        Cancel(dialog);
    });
    EXPECT_TRUE(pressed);
    ASSERT_TRUE(Popup());
    const RealMouse mouse;
    mouse.MoveTo(m_owner.Other(), {5, 5});
    mouse.Click();
    EXPECT_TRUE(PumpUntil([&] { return !Popup(); })) << "afterwards it closes it";
}
