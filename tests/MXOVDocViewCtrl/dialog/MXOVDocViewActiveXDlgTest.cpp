#include "DialogFixture.h"
#include "EraseCount.h"

#include "GdiObjectCount.h"
#include "SubclassingOrder.h"

#include <commctrl.h>

#include <tuple>

namespace {

constexpr int kBoxes[] = {IDC_PART_BOX, IDC_GCODE_BOX, IDC_SETUP_BOX, IDC_ADDITIONAL_BOX};

struct MapOfTheDialog : MXOVDocViewActiveXDlg {
    using MXOVDocViewActiveXDlg::GetThisMessageMap;
};

/// Size in points and face of a dialog template's font.
std::pair<int, std::wstring> FontOfTemplate(int id) {
    const HMODULE module = AfxGetResourceHandle();
    const HRSRC place = FindResourceW(module, MAKEINTRESOURCEW(id), RT_DIALOG);
    const auto* words = static_cast<const WORD*>(LockResource(LoadResource(module, place)));
    if (!words || words[1] != 0xffff) {
        return {}; // no extended template
    }
    words += 13;                  // version, signature, help, styles, count, place and size
    for (int i = 0; i < 3; ++i) { // menu, class, title
        if (*words == 0xffff) {
            words += 2;
        } else {
            while (*words++) {
            }
        }
    }
    return {words[0], reinterpret_cast<const wchar_t*>(words + 3)};
}

class MXOVDocViewActiveXDlgTest : public DialogFixture {
protected:
    void SetUp() override { Create(); }

    RECT PlaceOf(int id) const {
        RECT rect = {};
        GetWindowRect(Item(id), &rect);
        MapWindowPoints(nullptr, m_dialog.GetSafeHwnd(), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }

    LRESULT ContextMenuAt(LONG x, LONG y) {
        POINT point = {x, y};
        ClientToScreen(m_dialog.GetSafeHwnd(), &point);
        return m_dialog.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_dialog.GetSafeHwnd()),
                                    MAKELPARAM(point.x, point.y));
    }
};

TEST_F(MXOVDocViewActiveXDlgTest, StartsEmptyWithNothingToSaveOrDelete) {
    for (const int list : kLists) {
        EXPECT_TRUE(Rows(list).empty());
    }
    EXPECT_FALSE(IsEnabled(IDC_SAVE));
    EXPECT_FALSE(IsEnabled(IDC_DELETE));
    EXPECT_TRUE(IsEnabled(IDC_ADD));
    EXPECT_FALSE(IsShown(IDC_UPDATE));
    EXPECT_TRUE(IsShown(IDC_SAVE));
}

TEST_F(MXOVDocViewActiveXDlgTest, HasItsControlsInTheirPlaces) {
    const struct {
        int id;
        const wchar_t* text;
        RECT units; // position and size in dialog units
    } controls[] = {
        {IDC_SAVE, L"&Save", {8, 4, 37, 14}},
        {IDC_UPDATE, L"Update", {98, 5, 36, 14}},
        {IDC_PART_BOX, L"Part / Assembly", {8, 23, 232, 41}},
        {IDC_PART_LIST, L"", {9, 34, 229, 27}},
        {IDC_GCODE_BOX, L"G Code", {7, 65, 232, 52}},
        {IDC_GCODE_LIST, L"", {9, 76, 229, 38}},
        {IDC_SETUP_BOX, L"Setup Sheets", {7, 118, 232, 63}},
        {IDC_SETUP_LIST, L"", {9, 129, 229, 49}},
        {IDC_ADDITIONAL_BOX, L"Additional Documents", {7, 182, 232, 104}},
        {IDC_ADD, L"+", {188, 192, 16, 14}},
        {IDC_DELETE, L"x", {206, 192, 16, 14}},
        {IDC_ADDITIONAL_LIST, L"", {11, 208, 224, 74}},
    };
    HWND child = GetWindow(m_dialog.GetSafeHwnd(), GW_CHILD);
    for (const auto& control : controls) {
        EXPECT_EQ(GetDlgCtrlID(child), control.id);
        wchar_t text[64] = L"";
        GetWindowTextW(child, text, ARRAYSIZE(text));
        EXPECT_STREQ(text, control.text);
        RECT expected = control.units; // position and size are rounded to pixels one by one
        MapDialogRect(m_dialog.GetSafeHwnd(), &expected);
        expected.right += expected.left;
        expected.bottom += expected.top;
        const RECT place = PlaceOf(control.id);
        EXPECT_TRUE(EqualRect(&place, &expected)) << control.id;
        child = GetWindow(child, GW_HWNDNEXT);
    }
    EXPECT_EQ(child, nullptr);
}

TEST_F(MXOVDocViewActiveXDlgTest, BindsEachListBeforeTheBoxAroundIt) {
    m_dialog.DestroyWindow();
    const SubclassingOrder order;
    Create();
    EXPECT_EQ(order.Between(IDC_PART_BOX, IDC_ADDITIONAL_LIST),
              (std::vector<int>{1004, 1000, 1005, 1001, 1006, 1002, 1007, 1003}));
}

TEST_F(MXOVDocViewActiveXDlgTest, IsABorderlessChild) {
    EXPECT_TRUE(m_dialog.GetStyle() & WS_CHILD);
    EXPECT_FALSE(m_dialog.GetStyle() & (WS_BORDER | WS_DLGFRAME | WS_THICKFRAME));
    EXPECT_EQ(GetParent(m_dialog.GetSafeHwnd()), m_frame.GetSafeHwnd());
}

TEST_F(MXOVDocViewActiveXDlgTest, AnswersEveryColourQuestionWithTheWhiteBrush) {
    const HDC dc = GetDC(m_dialog.GetSafeHwnd());
    const auto white = reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH));
    for (const UINT message : {WM_CTLCOLORSTATIC, WM_CTLCOLORBTN, WM_CTLCOLOREDIT, WM_CTLCOLORLISTBOX}) {
        EXPECT_EQ(m_dialog.SendMessage(message, reinterpret_cast<WPARAM>(dc),
                                       reinterpret_cast<LPARAM>(Item(IDC_SAVE))),
                  white);
    }
    EXPECT_EQ(m_dialog.SendMessage(WM_CTLCOLORDLG, reinterpret_cast<WPARAM>(dc),
                                   reinterpret_cast<LPARAM>(m_dialog.GetSafeHwnd())),
              white);
    ReleaseDC(m_dialog.GetSafeHwnd(), dc);
}

TEST_F(MXOVDocViewActiveXDlgTest, InvalidatesBoxesAndListsAfterPainting) {
    m_dialog.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    for (const int id : kLists) {
        ValidateRect(Item(id), nullptr);
    }
    for (const int id : kBoxes) {
        ValidateRect(Item(id), nullptr);
    }
    m_dialog.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
    m_dialog.SendMessage(WM_PAINT);
    EXPECT_FALSE(GetUpdateRect(m_dialog.GetSafeHwnd(), nullptr, FALSE));
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(GetUpdateRect(Item(kLists[i]), nullptr, FALSE)) << kLists[i];
        EXPECT_TRUE(GetUpdateRect(Item(kBoxes[i]), nullptr, FALSE)) << kBoxes[i];
    }
    EXPECT_FALSE(GetUpdateRect(Item(IDC_SAVE), nullptr, FALSE));
}

TEST_F(MXOVDocViewActiveXDlgTest, ErasesBoxesAndListsAfterPainting) {
    m_dialog.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    for (int i = 0; i < 4; ++i) {
        for (const HWND window : {Item(kBoxes[i]), Item(kLists[i])}) {
            RedrawWindow(window, nullptr, nullptr, RDW_VALIDATE | RDW_NOERASE);
            const EraseCount erased(window);
            m_dialog.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
            m_dialog.SendMessage(WM_PAINT);
            GetUpdateRect(window, nullptr, TRUE);
            EXPECT_EQ(erased.count, 1) << GetDlgCtrlID(window);
        }
    }
}

TEST_F(MXOVDocViewActiveXDlgTest, KeepsContextMenusInsideToItself) {
    RECT client = {};
    m_dialog.GetClientRect(&client);
    ContextMenuAt(0, 0);
    ContextMenuAt(client.right - 1, client.bottom - 1);
    EXPECT_EQ(m_frame.contextMenus, 0);
    ContextMenuAt(client.right, client.bottom - 1);
    EXPECT_EQ(m_frame.contextMenus, 1);
    ContextMenuAt(-1, 5);
    EXPECT_EQ(m_frame.contextMenus, 2);
}

TEST_F(MXOVDocViewActiveXDlgTest, StaysWhenReturnOrEscapeIsPressed) {
    Command(IDOK);
    Command(IDCANCEL);
    EXPECT_TRUE(IsWindowVisible(m_dialog.GetSafeHwnd()));
}

TEST_F(MXOVDocViewActiveXDlgTest, KeepsTheReservedMenus) {
    const struct {
        int menu;
        const wchar_t* title;
        std::vector<std::pair<UINT, const wchar_t*>> items;
    } menus[] = {{IDR_VIEW_MENU,
                  L"View",
                  {{1018, L"Small icons"}, {1019, L"Large icons"}, {1025, L"List"}, {1026, L"Details"}}},
                 {1008, L"Actions", {{1020, L"Open"}, {1021, L"Delete"}}}};
    for (const auto& expected : menus) {
        const HMENU menu = LoadMenuW(AfxGetResourceHandle(), MAKEINTRESOURCEW(expected.menu));
        ASSERT_NE(menu, nullptr);
        wchar_t text[64] = L"";
        GetMenuStringW(menu, 0, text, ARRAYSIZE(text), MF_BYPOSITION);
        EXPECT_STREQ(text, expected.title);
        const HMENU popup = GetSubMenu(menu, 0);
        ASSERT_EQ(GetMenuItemCount(popup), static_cast<int>(expected.items.size()));
        for (int i = 0; i < GetMenuItemCount(popup); ++i) {
            const auto& [id, label] = expected.items[static_cast<std::size_t>(i)];
            EXPECT_EQ(GetMenuItemID(popup, i), id);
            GetMenuStringW(popup, static_cast<UINT>(i), text, ARRAYSIZE(text), MF_BYPOSITION);
            EXPECT_STREQ(text, label);
        }
        DestroyMenu(menu);
    }
}

TEST_F(MXOVDocViewActiveXDlgTest, CanBeCreatedAgain) {
    m_dialog.DestroyWindow();
    EXPECT_EQ(m_dialog.GetSafeHwnd(), nullptr);
    Create();
    EXPECT_NE(SendMessageW(Item(IDC_ADD), BM_GETIMAGE, IMAGE_BITMAP, 0), 0);
    EXPECT_FALSE(IsEnabled(IDC_DELETE));
    const auto images =
        reinterpret_cast<HIMAGELIST>(SendMessageW(Item(IDC_PART_LIST), LVM_GETIMAGELIST, LVSIL_SMALL, 0));
    EXPECT_EQ(ImageList_GetImageCount(images), 3);
}

TEST_F(MXOVDocViewActiveXDlgTest, LeavesNoGdiObjectsBehind) {
    const auto cycle = [this] {
        m_dialog.DestroyWindow();
        Create();
        Load();
    };
    Describe("[FILEINFO]\nMaxtlreVersion=M 2021\n[REFERANCE_FILE_1]\nFilePath=C:\\a.txt\n");
    cycle(); // whatever is made once exists now
    const int before = GdiObjectCount();
    for (int i = 0; i < 10; ++i) {
        cycle();
    }
    EXPECT_EQ(GdiObjectCount(), before);
}

TEST_F(MXOVDocViewActiveXDlgTest, TemplatesHaveTheDialogFontOfEightPoints) {
    for (const int id : {IDD_MAIN, IDD_DOCUMENT_PROPERTIES, IDD_PROPERTY_PAGE}) {
        EXPECT_EQ(FontOfTemplate(id), (std::pair<int, std::wstring>(8, L"MS Shell Dlg"))) << id;
    }
}

TEST_F(MXOVDocViewActiveXDlgTest, MessagesAreHandledInTheirOrder) {
    using Line = std::tuple<UINT, UINT, UINT>; // message, notification, control
    std::vector<Line> lines;
    for (auto* entry = MapOfTheDialog::GetThisMessageMap()->lpEntries; entry->pfn != nullptr; ++entry) {
        const bool ofAControl = entry->nMessage == WM_NOTIFY || entry->nMessage == WM_COMMAND;
        lines.emplace_back(entry->nMessage, ofAControl ? entry->nCode : 0, ofAControl ? entry->nID : 0);
    }
    const std::vector<Line> expected = {
        {WM_PAINT, 0, 0},
        {framework::kCtlColorEntry, 0, 0}, // one line for the colours of all kinds of controls
        {WM_SIZE, 0, 0},
        {WM_CONTEXTMENU, 0, 0},
        {WM_NOTIFY, NM_CLICK, 1004},
        {WM_NOTIFY, NM_CLICK, 1005},
        {WM_NOTIFY, NM_CLICK, 1006},
        {WM_NOTIFY, NM_CLICK, 1007},
        {WM_NOTIFY, NM_DBLCLK, 1005},
        {WM_NOTIFY, NM_DBLCLK, 1006},
        {WM_NOTIFY, NM_DBLCLK, 1007},
        {WM_NOTIFY, NM_KILLFOCUS, 1007},
        {WM_COMMAND, BN_CLICKED, 1040},
        {WM_COMMAND, BN_CLICKED, 1041},
        {WM_COMMAND, BN_CLICKED, 1039},
        {WM_COMMAND, BN_CLICKED, 1042},
    };
    EXPECT_EQ(lines, expected);
}

} // namespace
