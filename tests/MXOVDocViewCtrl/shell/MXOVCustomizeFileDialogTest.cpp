#include "shell/MXOVCustomizeFileDialog.h"

#include "FileDialogDriver.h"
#include "shell/HostText.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <ole2.h>

#include <thread>

using namespace docview;

namespace {

class Apartment {
public:
    Apartment() { OleInitialize(nullptr); }
    ~Apartment() { OleUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

class MXOVCustomizeFileDialogTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_parent.CreateEx(0, L"Static", L"Parent", WS_POPUP | WS_VISIBLE, 10, 10, 100, 100,
                                      nullptr, nullptr));
    }

    Apartment m_apartment; // the system's dialog needs it as long as it exists
    CWnd m_parent;
    MXOVCustomizeFileDialog m_dialog{
        TRUE, L"*", nullptr, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, L"All Files (*.*)|*.*|", &m_parent};
};

TEST_F(MXOVCustomizeFileDialogTest, StartsLinked) {
    EXPECT_EQ(m_dialog.GetCheck(), 1);
}

TEST_F(MXOVCustomizeFileDialogTest, KeepsTheCheckThatWasSet) {
    m_dialog.SetCheck(0);
    EXPECT_EQ(m_dialog.GetCheck(), 0);
    m_dialog.SetCheck(1);
    EXPECT_EQ(m_dialog.GetCheck(), 1);
}

TEST_F(MXOVCustomizeFileDialogTest, ShowsTheCheckBoxWithTheHostsLabelAndTellsItsState) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"sheet.pdf", "x");
    bool found = false;
    const FileDialogDriver driver([&](HWND dialog) {
        const HWND box = FileDialogDriver::CheckBox(dialog, HostText(151));
        found = box != nullptr;
        if (SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED) {
            SendMessageW(box, BM_CLICK, 0, 0);
        }
        FileDialogDriver::Choose(dialog, path);
    });
    EXPECT_EQ(m_dialog.DoModal(), IDOK);
    EXPECT_TRUE(found);
    EXPECT_STREQ(m_dialog.GetPathName(), path.c_str());
    EXPECT_EQ(m_dialog.GetCheck(), 0);
}

TEST_F(MXOVCustomizeFileDialogTest, CancelGivesNoFile) {
    const FileDialogDriver driver(FileDialogDriver::Cancel);
    EXPECT_EQ(m_dialog.DoModal(), IDCANCEL);
    EXPECT_TRUE(m_dialog.GetPathName().IsEmpty());
}

/// A thread outside every apartment has no such dialog.
TEST(MXOVCustomizeFileDialog, IsLinkedWhenTheDialogCannotTell) {
    int check = 0;
    std::thread([&check] {
        MXOVCustomizeFileDialog dialog(TRUE, L"*", nullptr, 0, L"All Files (*.*)|*.*|", nullptr);
        dialog.SetCheck(0);
        check = dialog.GetCheck();
    }).join();
    EXPECT_EQ(check, 1);
}

/// A dialog made from a template in memory with the check box as one of its items.
class TemplateDialog : public MXOVCustomizeFileDialog {
public:
    TemplateDialog() : MXOVCustomizeFileDialog(TRUE, nullptr, nullptr, 0, nullptr, nullptr) {}
    int initialised = 0;

protected:
    BOOL OnInitDialog() override {
        ++initialised;
        return MXOVCustomizeFileDialog::OnInitDialog();
    }
};

TEST_F(MXOVCustomizeFileDialogTest, AttachesTheCheckBoxOnceWhenInitialised) {
    constexpr DWORD kBox = 1000003;
    struct {
        DLGTEMPLATE header = {WS_POPUP, 0, 0, 0, 0, 50, 50};
        WORD menuClassTitle[3] = {};
    } description;
    TemplateDialog dialog;
    ASSERT_TRUE(dialog.CreateIndirect(&description.header, &m_parent));
    EXPECT_EQ(dialog.initialised, 1);
    const HWND box =
        CreateWindowExW(0, L"Button", L"", WS_CHILD | BS_CHECKBOX, 0, 0, 20, 20, dialog.GetSafeHwnd(),
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kBox)), nullptr, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(box), nullptr);
    EXPECT_TRUE(static_cast<MXOVCustomizeFileDialog&>(dialog).OnInitDialog());
    CWnd* attached = CWnd::FromHandlePermanent(box);
    EXPECT_NE(attached, nullptr);
    EXPECT_TRUE(static_cast<MXOVCustomizeFileDialog&>(dialog).OnInitDialog());
    EXPECT_EQ(CWnd::FromHandlePermanent(box), attached);
    dialog.DestroyWindow();
}

} // namespace
