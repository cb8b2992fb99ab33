// Drives the system's file dialog through its own windows.
#include "TestWindow.h"

#include "afxdlgs.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

constexpr DWORD kCheckBox = 1000003;

/// The dialog that this thread shows at the moment, or null.
HWND FindDialog() {
    HWND found = nullptr;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM parameter) -> BOOL {
            wchar_t name[10] = L"";
            ::GetClassName(window, name, 10);
            if (std::wstring(name) != L"#32770" || !::IsWindowVisible(window)) {
                return TRUE;
            }
            *reinterpret_cast<HWND*>(parameter) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

/// A descendant by class, and by text where that is given.
HWND FindControl(HWND dialog, const wchar_t* className, const wchar_t* text = nullptr) {
    struct Search {
        std::wstring className;
        const wchar_t* text;
        HWND found;
    } search{className, text, nullptr};
    ::EnumChildWindows(
        dialog,
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            wchar_t name[40] = L"";
            wchar_t shown[100] = L"";
            ::GetClassName(window, name, 40);
            ::GetWindowText(window, shown, 100);
            if (wanted.className != name || (wanted.text && std::wstring(wanted.text) != shown)) {
                return TRUE;
            }
            wanted.found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::function<void(HWND)> whenShown; ///< what a test does with the dialog once it is up

/// Acts on the dialog until it closes: the first keystrokes may come before it takes any.
void CALLBACK ActOnDialog(HWND, UINT, UINT_PTR, DWORD) {
    const HWND dialog = FindDialog();
    if (dialog && FindControl(dialog, L"Edit") && FindControl(dialog, L"SHELLDLL_DefView")) {
        whenShown(dialog);
    }
}

INT_PTR Drive(CFileDialog& dialog, std::function<void(HWND)> act) {
    whenShown = std::move(act);
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 100, &ActOnDialog);
    const INT_PTR result = dialog.DoModal();
    ::KillTimer(nullptr, timer);
    return result;
}

void Choose(HWND dialog, const std::wstring& path) {
    ::SendMessage(FindControl(dialog, L"Edit"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    ::PostMessage(dialog, WM_COMMAND, IDOK, 0);
}

class FileDialog : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_HRESULT_SUCCEEDED(::OleInitialize(nullptr));
        ASSERT_TRUE(parent.CreateTop(WS_POPUP | WS_VISIBLE));
    }
    void TearDown() override { ::OleUninitialize(); }

    RecordingWindow parent;
};

TEST_F(FileDialog, GivesTheChosenFile) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"part.nc", "G0");
    CFileDialog dialog(TRUE, L"*", nullptr, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, L"All Files (*.*)|*.*|",
                       &parent);
    EXPECT_TRUE(dialog.GetPathName().IsEmpty());
    bool disabled = false;
    EXPECT_EQ(Drive(dialog,
                    [&](HWND window) {
                        disabled = !parent.IsWindowEnabled();
                        Choose(window, path);
                    }),
              IDOK);
    EXPECT_STREQ(dialog.GetPathName(), path.c_str());
    EXPECT_EQ(dialog.GetFileName(), L"part.nc");
    EXPECT_TRUE(disabled);
    EXPECT_TRUE(parent.IsWindowEnabled());
}

TEST_F(FileDialog, ADefaultExtensionDoesNotChangeAnExistingFilesName) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"O1234", "G0");
    CFileDialog dialog(TRUE, L"*", nullptr, OFN_HIDEREADONLY, L"All Files (*.*)|*.*|", &parent);
    EXPECT_EQ(Drive(dialog, [&](HWND window) { Choose(window, path); }), IDOK);
    EXPECT_STREQ(dialog.GetPathName(), path.c_str());
}

TEST_F(FileDialog, CancellingGivesNothing) {
    CFileDialog dialog(TRUE, nullptr, nullptr, OFN_HIDEREADONLY, nullptr, &parent);
    EXPECT_EQ(Drive(dialog, [](HWND window) { ::PostMessage(window, WM_COMMAND, IDCANCEL, 0); }), IDCANCEL);
    EXPECT_TRUE(dialog.GetPathName().IsEmpty());
    EXPECT_TRUE(dialog.GetFileName().IsEmpty());
}

TEST_F(FileDialog, TellsTheStateOfItsCheckBox) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"sheet.html", "x");
    CFileDialog dialog(TRUE, L"*", nullptr, OFN_HIDEREADONLY, L"All Files (*.*)|*.*|", &parent);
    EXPECT_HRESULT_SUCCEEDED(dialog.AddCheckButton(kCheckBox, L"Link to the file", TRUE));
    BOOL checked = FALSE;
    EXPECT_HRESULT_SUCCEEDED(dialog.GetCheckButtonState(kCheckBox, checked));
    EXPECT_TRUE(checked);
    EXPECT_EQ(Drive(dialog,
                    [&](HWND window) {
                        const HWND box = FindControl(window, L"Button", L"Link to the file");
                        ASSERT_NE(box, nullptr);
                        if (::SendMessage(box, BM_GETCHECK, 0, 0) == BST_CHECKED) {
                            ::SendMessage(box, BM_CLICK, 0, 0);
                        }
                        Choose(window, path);
                    }),
              IDOK);
    EXPECT_HRESULT_SUCCEEDED(dialog.GetCheckButtonState(kCheckBox, checked));
    EXPECT_FALSE(checked);
    EXPECT_HRESULT_SUCCEEDED(dialog.SetCheckButtonState(kCheckBox, TRUE));
    EXPECT_HRESULT_SUCCEEDED(dialog.GetCheckButtonState(kCheckBox, checked));
    EXPECT_TRUE(checked);
}

TEST_F(FileDialog, OffersTheFilters) {
    CFileDialog dialog(TRUE, L"*", nullptr, OFN_HIDEREADONLY, L"Part File (*.SLDPRT)|*.sldprt|Rest|*.*||",
                       &parent);
    std::vector<std::wstring> offered;
    Drive(dialog, [&](HWND window) {
        // The list of types is the last combo box of the dialog.
        HWND types = nullptr;
        for (HWND box = nullptr; (box = ::FindWindowEx(window, box, L"ComboBox", nullptr));) {
            types = box;
        }
        offered.clear();
        const LRESULT count = ::SendMessage(types, CB_GETCOUNT, 0, 0);
        for (LRESULT i = 0; i < count; ++i) {
            wchar_t text[100] = L"";
            ::SendMessage(types, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            offered.emplace_back(text);
        }
        ::PostMessage(window, WM_COMMAND, IDCANCEL, 0);
    });
    ASSERT_EQ(offered.size(), 2U);
    EXPECT_EQ(offered[0].substr(0, 9), L"Part File");
    EXPECT_EQ(offered[1].substr(0, 4), L"Rest");
}

TEST(FileDialogWithoutCom, CannotBeShown) {
    const auto onAnotherThread = [](void*) -> DWORD {
        CFileDialog dialog(TRUE);
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
        BOOL checked = TRUE;
        EXPECT_EQ(dialog.AddCheckButton(kCheckBox, L"x", TRUE), E_NOINTERFACE);
        EXPECT_EQ(dialog.SetCheckButtonState(kCheckBox, TRUE), E_NOINTERFACE);
        EXPECT_EQ(dialog.GetCheckButtonState(kCheckBox, checked), E_NOINTERFACE);
        return 0;
    };
    const HANDLE thread = ::CreateThread(nullptr, 0, onAnotherThread, nullptr, 0, nullptr);
    EXPECT_EQ(::WaitForSingleObject(thread, 20000), WAIT_OBJECT_0);
    ::CloseHandle(thread);
}

} // namespace
