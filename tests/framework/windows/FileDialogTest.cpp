// The file dialog, worked through its own windows.
#include "TestWindow.h"

#include "afxdlgs.h"
#include "FileDialogDriver.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

constexpr DWORD kCheckBox = 1000003;

INT_PTR Drive(CFileDialog& dialog, std::function<void(HWND)> act) {
    const FileDialogDriver driver(std::move(act));
    return dialog.DoModal();
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
                        FileDialogDriver::Choose(window, path);
                    }),
              IDOK);
    EXPECT_STREQ(dialog.GetPathName(), path.c_str());
    EXPECT_TRUE(disabled);
    EXPECT_TRUE(parent.IsWindowEnabled());
}

TEST_F(FileDialog, ADefaultExtensionDoesNotChangeAnExistingFilesName) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"O1234", "G0");
    CFileDialog dialog(TRUE, L"*", nullptr, OFN_HIDEREADONLY, L"All Files (*.*)|*.*|", &parent);
    EXPECT_EQ(Drive(dialog, [&](HWND window) { FileDialogDriver::Choose(window, path); }), IDOK);
    EXPECT_STREQ(dialog.GetPathName(), path.c_str());
}

TEST_F(FileDialog, CancellingGivesNothing) {
    CFileDialog dialog(TRUE, nullptr, nullptr, OFN_HIDEREADONLY, nullptr, &parent);
    EXPECT_EQ(Drive(dialog, FileDialogDriver::Cancel), IDCANCEL);
    EXPECT_TRUE(dialog.GetPathName().IsEmpty());
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
                        const HWND box = FileDialogDriver::CheckBox(window, L"Link to the file");
                        ASSERT_NE(box, nullptr);
                        if (::SendMessage(box, BM_GETCHECK, 0, 0) == BST_CHECKED) {
                            ::SendMessage(box, BM_CLICK, 0, 0);
                        }
                        FileDialogDriver::Choose(window, path);
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
        FileDialogDriver::Cancel(window);
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
