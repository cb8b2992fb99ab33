// The control's dialog in a container's window, worked with a real mouse.
#include "ControlClient.h"
#include "PackageBuilder.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace {

constexpr int kFoldedHeight = 30;
constexpr int kWidthOnScreen = 600; // right of the frame
constexpr int kMoving[] = {kGCodeBox,      kGCodeList,      kSetupBox,  kSetupList,
                           kAdditionalBox, kAdditionalList, kAddButton, kDeleteButton};

class DialogTest : public testing::Test {
protected:
    // The popup of a clicked document comes up beside the frame, not on it.
    void SetUp() override { client.CallNumbers(L"OnSizeChange", {kWidthOnScreen, 620}); }

    void Load() { client.Call(L"LoadFile", {package.Path(), L""}); }

    [[nodiscard]] static int Height(const RECT& rect) { return rect.bottom - rect.top; }

    [[nodiscard]] int FoldedBy(int box) const { return Height(client.ItemRect(box)) - kFoldedHeight; }

    // A list item's middle, in the list's client coordinates.
    [[nodiscard]] POINT ItemPoint(int list, int item) const {
        RECT rect = {};
        rect.left = LVIR_LABEL;
        SendMessageW(client.Item(list), LVM_GETITEMRECT, static_cast<WPARAM>(item),
                     reinterpret_cast<LPARAM>(&rect));
        return {rect.left + 10, (rect.top + rect.bottom) / 2};
    }

    void ClickItem(int list, int item) {
        const POINT point = ItemPoint(list, item);
        client.Click(client.Item(list), point.x, point.y);
    }

    // A click that is no second half of a double click.
    void ClickHeader(int box, int x = 40, int y = 8) {
        const ULONGLONG now = GetTickCount64();
        if (now < m_nextClick) {
            Sleep(static_cast<DWORD>(m_nextClick - now));
        }
        m_nextClick = GetTickCount64() + 2ULL * GetDoubleClickTime();
        client.Click(client.Item(box), x, y);
    }

    ComApartment apartment;
    PackageBuilder package;
    ControlClient client;
    ULONGLONG m_nextClick = 0; // milliseconds since the system started
};

RECT ScreenRect(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

} // namespace

TEST_F(DialogTest, CoversTheContainersAreaAndFollowsItsSize) {
    ASSERT_TRUE(client.Dialog());
    EXPECT_EQ(ScreenRect(client.Container()), ScreenRect(client.Dialog()));
    client.Resize(430, 510);
    const RECT container = ScreenRect(client.Container());
    const RECT dialog = ScreenRect(client.Dialog());
    EXPECT_EQ(430, container.right - container.left);
    EXPECT_EQ(container, dialog);
}

TEST_F(DialogTest, TheControlsWindowIsAStatic) {
    wchar_t name[20] = L"";
    GetClassNameW(client.ControlWindow(), name, ARRAYSIZE(name));
    EXPECT_STREQ(L"Static", name);
}

TEST_F(DialogTest, OnSizeChangeMovesNothing) {
    const RECT before = ScreenRect(client.Dialog());
    EXPECT_EQ(S_OK, client.CallNumbers(L"OnSizeChange", {100, 100}));
    ControlClient::Settle();
    EXPECT_EQ(before, ScreenRect(client.Dialog()));
}

TEST_F(DialogTest, StartsEmptyWithNothingToSaveOrDelete) {
    for (const int list : {kPartList, kGCodeList, kSetupList, kAdditionalList}) {
        EXPECT_TRUE(client.Rows(list).empty());
    }
    EXPECT_FALSE(IsWindowEnabled(client.Item(kSaveButton)));
    EXPECT_FALSE(IsWindowEnabled(client.Item(kDeleteButton)));
    EXPECT_TRUE(IsWindowEnabled(client.Item(kAddButton)));
    EXPECT_FALSE(IsWindowVisible(client.Item(kUpdateButton)));
    Load();
    EXPECT_FALSE(IsWindowEnabled(client.Item(kSaveButton)));
}

TEST_F(DialogTest, ListsHaveThreeColumnsImagesAndFullRows) {
    const wchar_t* titles[] = {L"Name", L"Size", L"Date"};
    const int widths[] = {150, 40, 150};
    for (const int id : {kPartList, kGCodeList, kSetupList, kAdditionalList}) {
        const HWND list = client.Item(id);
        for (int column = 0; column < 3; ++column) {
            wchar_t text[64] = L"";
            LVCOLUMNW shown = {};
            shown.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
            shown.pszText = text;
            shown.cchTextMax = ARRAYSIZE(text);
            ASSERT_TRUE(SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                                     reinterpret_cast<LPARAM>(&shown)));
            EXPECT_STREQ(titles[column], text);
            EXPECT_EQ(widths[column], shown.cx);
            EXPECT_EQ(LVCFMT_LEFT, shown.fmt & LVCFMT_JUSTIFYMASK);
        }
        LVCOLUMNW none = {};
        none.mask = LVCF_WIDTH;
        EXPECT_FALSE(SendMessageW(list, LVM_GETCOLUMNW, 3, reinterpret_cast<LPARAM>(&none)));
        EXPECT_TRUE(SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_FULLROWSELECT);

        const auto style = static_cast<DWORD>(GetWindowLongPtrW(list, GWL_STYLE));
        EXPECT_EQ(static_cast<DWORD>(LVS_REPORT), style & LVS_TYPEMASK);
        EXPECT_TRUE(style & LVS_SINGLESEL);
        EXPECT_TRUE(style & LVS_SHOWSELALWAYS);
        EXPECT_TRUE(style & LVS_ALIGNLEFT);
        EXPECT_TRUE(style & WS_TABSTOP);
        // The system may draw the border as a sunken edge.
        const auto extended = static_cast<DWORD>(GetWindowLongPtrW(list, GWL_EXSTYLE));
        EXPECT_EQ(id == kAdditionalList, (style & WS_BORDER) != 0 || (extended & WS_EX_CLIENTEDGE) != 0);

        const struct {
            int kind;
            int size;
        } lists[] = {{LVSIL_NORMAL, 32}, {LVSIL_SMALL, 16}};
        for (const auto& expected : lists) {
            const auto images = reinterpret_cast<HIMAGELIST>(
                SendMessageW(list, LVM_GETIMAGELIST, static_cast<WPARAM>(expected.kind), 0));
            ASSERT_TRUE(images);
            int width = 0;
            int height = 0;
            ImageList_GetIconSize(images, &width, &height);
            EXPECT_EQ(expected.size, width);
            EXPECT_EQ(expected.size, height);
            EXPECT_EQ(3, ImageList_GetImageCount(images));
        }
    }
}

TEST_F(DialogTest, AddAndDeleteShowTheirBitmaps) {
    for (const int id : {kAddButton, kDeleteButton}) {
        EXPECT_TRUE(SendMessageW(client.Item(id), BM_GETIMAGE, IMAGE_BITMAP, 0)) << id;
    }
}

TEST_F(DialogTest, HeaderClickFoldsASectionAndMovesWhatLiesBelow) {
    Load();
    std::vector<RECT> before;
    for (const int id : kMoving) {
        before.push_back(client.ItemRect(id));
    }
    const RECT save = client.ItemRect(kSaveButton);
    const int full = Height(client.ItemRect(kPartBox));
    const int shift = FoldedBy(kPartBox);
    ASSERT_GT(shift, 0);

    ClickHeader(kPartBox);
    EXPECT_EQ(kFoldedHeight, Height(client.ItemRect(kPartBox)));
    EXPECT_FALSE(IsWindowVisible(client.Item(kPartList)));
    for (size_t i = 0; i < before.size(); ++i) {
        RECT expected = before[i];
        OffsetRect(&expected, 0, -shift);
        EXPECT_EQ(expected, client.ItemRect(kMoving[i])) << kMoving[i];
    }
    EXPECT_EQ(save, client.ItemRect(kSaveButton));

    ClickHeader(kPartBox, 200, 19);
    EXPECT_EQ(full, Height(client.ItemRect(kPartBox)));
    EXPECT_TRUE(IsWindowVisible(client.Item(kPartList)));
    for (size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(before[i], client.ItemRect(kMoving[i])) << kMoving[i];
    }
}

TEST_F(DialogTest, FoldingAdditionalDocumentsHidesItsButtons) {
    Load();
    ClickHeader(kAdditionalBox);
    for (const int id : {kAdditionalList, kAddButton, kDeleteButton}) {
        EXPECT_FALSE(IsWindowVisible(client.Item(id))) << id;
    }
    ClickHeader(kAdditionalBox, 200);
    for (const int id : {kAdditionalList, kAddButton, kDeleteButton}) {
        EXPECT_TRUE(IsWindowVisible(client.Item(id))) << id;
    }
}

TEST_F(DialogTest, ReloadKeepsAFoldedSectionsListHidden) {
    Load();
    ClickHeader(kAdditionalBox);
    Load();
    EXPECT_FALSE(IsWindowVisible(client.Item(kAdditionalList)));
    ClickHeader(kAdditionalBox, 200);
    EXPECT_TRUE(IsWindowVisible(client.Item(kAdditionalList)));
}

TEST_F(DialogTest, OnlyAPressAndReleaseInTheHeaderFold) {
    const HWND box = client.Item(kSetupBox);
    const int full = Height(client.ItemRect(kSetupBox));
    client.Click(box, 40, 20);
    EXPECT_EQ(full, Height(client.ItemRect(kSetupBox))) << "below the header";
    client.Drag(box, {40, 8}, {40, 45});
    EXPECT_EQ(full, Height(client.ItemRect(kSetupBox))) << "released outside";
    client.Drag(box, {40, 8}, {90, 15});
    EXPECT_EQ(kFoldedHeight, Height(client.ItemRect(kSetupBox))) << "released elsewhere in the header";
}

TEST_F(DialogTest, DoubleClickOnAHeaderTogglesOnce) {
    client.DoubleClick(client.Item(kGCodeBox), 40, 8);
    EXPECT_EQ(kFoldedHeight, Height(client.ItemRect(kGCodeBox)));
}

TEST_F(DialogTest, RightClickShowsNoMenu) {
    Load();
    client.RightClick(client.Item(kAdditionalList), 20, 60);
    client.RightClick(client.Dialog(), 5, 5);
    EXPECT_EQ(nullptr, FindWindowW(L"#32768", nullptr));
}

TEST_F(DialogTest, DeleteIsOfferedOnlyAfterAClickOnAnAdditionalDocument) {
    Load();
    ClickItem(kAdditionalList, 0);
    EXPECT_TRUE(IsWindowEnabled(client.Item(kDeleteButton)));
    client.Click(client.Item(kGCodeList), 200, Height(client.ItemRect(kGCodeList)) - 5);
    EXPECT_FALSE(IsWindowEnabled(client.Item(kDeleteButton))) << "also on an empty area";
    ClickItem(kAdditionalList, 1);
    ClickItem(kPartList, 0);
    EXPECT_FALSE(IsWindowEnabled(client.Item(kDeleteButton)));
}

TEST_F(DialogTest, AClickSelectsTheWholeRow) {
    Load();
    const POINT first = ItemPoint(kAdditionalList, 1);
    client.Click(client.Item(kAdditionalList), first.x + 220, first.y);
    EXPECT_EQ(1, SendMessageW(client.Item(kAdditionalList), LVM_GETNEXTITEM, static_cast<WPARAM>(-1),
                              LVNI_SELECTED));
}

TEST_F(DialogTest, TheDialogIsWhite) {
    const HDC screen = GetDC(client.Dialog());
    const COLORREF colour = GetPixel(screen, 3, 3);
    ReleaseDC(client.Dialog(), screen);
    EXPECT_EQ(RGB(255, 255, 255), colour);
}
