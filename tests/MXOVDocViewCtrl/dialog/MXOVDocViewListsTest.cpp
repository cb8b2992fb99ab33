#include "DialogFixture.h"

#include "common/Handles.h"
#include "package/RecordLists.h"
#include "popup/MXOVPopupDlg.h"
#include "shell/HostText.h"

#include <commctrl.h>

using namespace docview;

namespace {

/// Records the state of a button and the left edge of the popup at each WM_SHOWWINDOW of the popup.
class ShowingWatch {
public:
    explicit ShowingWatch(HWND button)
        : m_hook(SetWindowsHookExW(WH_CALLWNDPROC, Watch, nullptr, GetCurrentThreadId())) {
        watched = button;
        enabled.clear();
        lefts.clear();
    }

    static inline std::vector<bool> enabled;
    static inline std::vector<LONG> lefts;

private:
    static LRESULT CALLBACK Watch(int code, WPARAM wParam, LPARAM lParam) {
        const auto& message = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        const MXOVPopupDlg* popup = MXOVPopupDlg::Current();
        if (popup && message.hwnd == popup->GetSafeHwnd() && message.message == WM_SHOWWINDOW &&
            message.wParam) {
            enabled.push_back(IsWindowEnabled(watched) != FALSE);
            RECT place = {};
            GetWindowRect(message.hwnd, &place);
            lefts.push_back(place.left);
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline HWND watched = nullptr;
    common::UniqueHook m_hook;
};

class MXOVDocViewListsTest : public DialogFixture {
protected:
    void SetUp() override {
        Create();
        m_package.Write(L"NC\\a.nc", "");
        m_package.Write(L"Setup\\a.html", "");
        Describe("[FILEINFO]\nMaxtlreVersion=M 2021\nCADFilePath=C:\\p\nGCode=NC\\a\nSetupSheets=Setup\\a\n"
                 "[REFERANCE_FILE_1]\nFilePath=C:\\r.txt\n");
        Load();
    }

    void EnableDelete() {
        Select(IDC_ADDITIONAL_LIST, 0);
        Notify(IDC_ADDITIONAL_LIST, NM_CLICK);
        ASSERT_TRUE(IsEnabled(IDC_DELETE));
    }
};

TEST_F(MXOVDocViewListsTest, HaveThreeTitledColumns) {
    const struct {
        UINT title;
        int width;
    } columns[] = {{137, 150}, {138, 40}, {139, 150}};
    for (const int id : kLists) {
        const HWND list = Item(id);
        for (int place = 0; place < 3; ++place) {
            wchar_t text[64] = L"";
            LVCOLUMNW column = {};
            column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
            column.pszText = text;
            column.cchTextMax = ARRAYSIZE(text);
            ASSERT_TRUE(SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(place),
                                     reinterpret_cast<LPARAM>(&column)));
            EXPECT_FALSE(std::wstring(text).empty());
            EXPECT_EQ(text, HostText(columns[place].title));
            EXPECT_EQ(column.cx, columns[place].width);
            EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_LEFT);
        }
        EXPECT_EQ(Header_GetItemCount(reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0))), 3);
    }
}

TEST_F(MXOVDocViewListsTest, HaveTheStylesOfTheTemplate) {
    for (const int id : kLists) {
        const LONG_PTR style = GetWindowLongPtrW(Item(id), GWL_STYLE);
        EXPECT_EQ(style & LVS_TYPEMASK, LVS_REPORT);
        EXPECT_EQ(style & LVS_ALIGNMASK, LVS_ALIGNLEFT);
        const LONG_PTR flags = LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_TABSTOP | WS_CHILD | WS_VISIBLE;
        EXPECT_EQ(style & flags, flags);
        // The dialog manager turns a control's plain border into a sunken one.
        const LONG_PTR extended = GetWindowLongPtrW(Item(id), GWL_EXSTYLE);
        EXPECT_EQ((style & WS_BORDER) || (extended & WS_EX_CLIENTEDGE), id == IDC_ADDITIONAL_LIST);
        EXPECT_TRUE(SendMessageW(Item(id), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_FULLROWSELECT);
    }
}

TEST_F(MXOVDocViewListsTest, ShareTwoImageListsOfThreeImages) {
    const std::pair<WPARAM, int> kinds[] = {{LVSIL_NORMAL, 32}, {LVSIL_SMALL, 16}};
    for (const auto& [kind, size] : kinds) {
        const LRESULT shared = SendMessageW(Item(IDC_PART_LIST), LVM_GETIMAGELIST, kind, 0);
        for (const int id : kLists) {
            EXPECT_EQ(SendMessageW(Item(id), LVM_GETIMAGELIST, kind, 0), shared);
        }
        const auto images = reinterpret_cast<HIMAGELIST>(shared);
        EXPECT_EQ(ImageList_GetImageCount(images), 3);
        int width = 0;
        int height = 0;
        ASSERT_TRUE(ImageList_GetIconSize(images, &width, &height));
        EXPECT_EQ(width, size);
        EXPECT_EQ(height, size);
        IMAGEINFO info = {};
        BITMAP bitmap = {};
        ASSERT_TRUE(ImageList_GetImageInfo(images, 0, &info));
        EXPECT_NE(GetObjectW(info.hbmImage, sizeof bitmap, &bitmap), 0);
        EXPECT_EQ(bitmap.bmBitsPixel, 8);
        EXPECT_NE(info.hbmMask, nullptr);
    }
}

TEST_F(MXOVDocViewListsTest, ClickInAPackageListDisablesDeleteWithOrWithoutASelection) {
    for (const int list : {IDC_PART_LIST, IDC_GCODE_LIST, IDC_SETUP_LIST}) {
        for (const int item : {-1, 0}) {
            EnableDelete();
            Select(list, item);
            Notify(list, NM_CLICK);
            EXPECT_FALSE(IsEnabled(IDC_DELETE)) << list << " " << item;
        }
    }
}

TEST_F(MXOVDocViewListsTest, ClickOnAnItemFocusesItsList) {
    for (const int list : kLists) {
        SetFocus(Item(IDC_ADD));
        Select(list, -1);
        Notify(list, NM_CLICK);
        EXPECT_EQ(GetFocus(), Item(IDC_ADD));
        Select(list, 0);
        Notify(list, NM_CLICK);
        EXPECT_EQ(GetFocus(), Item(list));
    }
}

TEST_F(MXOVDocViewListsTest, ClicksGoOnToTheList) {
    for (const int list : kLists) {
        EXPECT_EQ(Notify(list, NM_CLICK), 0) << list;
        EXPECT_EQ(Notify(list, NM_DBLCLK), 0) << list;
        EXPECT_EQ(Notify(list, NM_KILLFOCUS), 0) << list;
    }
}

TEST_F(MXOVDocViewListsTest, ClickBesideTheAdditionalItemsLeavesDeleteAsItIs) {
    Notify(IDC_ADDITIONAL_LIST, NM_CLICK);
    EXPECT_FALSE(IsEnabled(IDC_DELETE));
    EnableDelete();
    Select(IDC_ADDITIONAL_LIST, -1);
    Notify(IDC_ADDITIONAL_LIST, NM_CLICK);
    EXPECT_TRUE(IsEnabled(IDC_DELETE));
}

TEST_F(MXOVDocViewListsTest, LosingTheFocusChangesNothing) {
    EnableDelete();
    SetFocus(Item(IDC_PART_LIST));
    EXPECT_TRUE(IsEnabled(IDC_DELETE));
}

TEST_F(MXOVDocViewListsTest, DisablingTheFocusedButtonPassesTheFocusOn) {
    EnableDelete();
    SetFocus(Item(IDC_DELETE));
    Notify(IDC_PART_LIST, NM_CLICK);
    EXPECT_FALSE(IsEnabled(IDC_DELETE));
    EXPECT_EQ(GetFocus(), Item(IDC_ADDITIONAL_LIST));
}

TEST_F(MXOVDocViewListsTest, ButtonsShowTheirBitmaps) {
    const auto add = SendMessageW(Item(IDC_ADD), BM_GETIMAGE, IMAGE_BITMAP, 0);
    const auto remove = SendMessageW(Item(IDC_DELETE), BM_GETIMAGE, IMAGE_BITMAP, 0);
    BITMAP description = {};
    EXPECT_EQ(GetObjectW(reinterpret_cast<HGDIOBJ>(add), sizeof description, &description),
              sizeof description);
    EXPECT_EQ(GetObjectW(reinterpret_cast<HGDIOBJ>(remove), sizeof description, &description),
              sizeof description);
    EXPECT_NE(add, remove);
}

TEST_F(MXOVDocViewListsTest, DeleteGoesOnAfterThePropertiesAreShownAndOffBefore) {
    const ShowingWatch watch(Item(IDC_DELETE));
    EnableDelete();
    EXPECT_EQ(ShowingWatch::enabled, std::vector<bool>{false});
    MXOVPopupDlg::CloseOf(m_dialog);
    for (const int list : {IDC_PART_LIST, IDC_GCODE_LIST, IDC_SETUP_LIST}) {
        EnableDelete();
        MXOVPopupDlg::CloseOf(m_dialog);
        ShowingWatch::enabled.clear();
        Select(list, 0);
        Notify(list, NM_CLICK);
        EXPECT_EQ(ShowingWatch::enabled, std::vector<bool>{false}) << list;
        MXOVPopupDlg::CloseOf(m_dialog);
    }
}

TEST_F(MXOVDocViewListsTest, PropertiesAreInTheirPlaceBeforeTheyAreShown) {
    const ShowingWatch watch(Item(IDC_DELETE));
    m_dialog.SetSize(321, 500);
    for (const int list : kLists) {
        ShowingWatch::lefts.clear();
        Select(list, 0);
        Notify(list, NM_CLICK);
        EXPECT_EQ(ShowingWatch::lefts, std::vector<LONG>{327}) << list;
        MXOVPopupDlg::CloseOf(m_dialog);
    }
}

TEST_F(MXOVDocViewListsTest, AnItemWithoutARecordShowsAndOpensNothing) {
    partAssemblyRecords.clear();
    additionalRecords.clear();
    const MessageBoxAnswer answer(IDOK);
    for (const int list : {IDC_PART_LIST, IDC_ADDITIONAL_LIST}) {
        Select(list, 0);
        Notify(list, NM_CLICK);
        EXPECT_EQ(MXOVPopupDlg::Current(), nullptr) << list;
    }
    Notify(IDC_ADDITIONAL_LIST, NM_DBLCLK);
    EXPECT_EQ(answer.count, 0);
}

TEST_F(MXOVDocViewListsTest, ShownPropertiesAreFilledAndMovedAgain) {
    const auto show = [this](int list, int width) {
        m_dialog.SetSize(width, 500);
        Select(list, 0);
        Notify(list, NM_CLICK);
        RECT rect = {};
        GetWindowRect(MXOVPopupDlg::Current()->GetSafeHwnd(), &rect);
        return rect.left;
    };
    EXPECT_EQ(show(IDC_PART_LIST, 100), 106);
    const HWND popup = MXOVPopupDlg::Current()->GetSafeHwnd();
    EXPECT_EQ(show(IDC_GCODE_LIST, 200), 206);
    EXPECT_EQ(MXOVPopupDlg::Current()->GetSafeHwnd(), popup);
    wchar_t name[20] = L"";
    GetDlgItemTextW(popup, IDC_DOCUMENT_NAME, name, ARRAYSIZE(name));
    EXPECT_STREQ(name, L"a.nc");
    MXOVPopupDlg::CloseOf(m_dialog);
}

} // namespace
