#include "control/ListColumns.h"

#include <commctrl.h>

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr wchar_t kColumnsKey[] = L"Software\\MXOVDocView\\Test\\Columns";
constexpr int kListWidth = 340; // at 96 dots per inch

// A window with four lists as those of the control.
class ListColumnsTest : public testing::Test {
protected:
    ListColumnsTest() { RegDeleteTreeW(HKEY_CURRENT_USER, kColumnsKey); }
    ~ListColumnsTest() override {
        RegDeleteTreeW(HKEY_CURRENT_USER, kColumnsKey);
        DestroyWindow(m_dialog);
    }
    void SetUp() override { MakeLists(); }

    void MakeLists() {
        if (m_dialog) {
            DestroyWindow(m_dialog);
        }
        m_dialog = CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 400, 400, nullptr, nullptr,
                                 nullptr, nullptr);
        const int width = MulDiv(kListWidth, GetDpiForSystem(), 96);
        for (int id = 1004; id <= 1007; ++id) {
            const HWND list = CreateWindowW(
                WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT | WS_BORDER, 0, 0, width, 60, m_dialog,
                reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
            const wchar_t* const titles[] = {L"Name", L"Size", L"Date"};
            for (int column = 0; column < 3; ++column) {
                LVCOLUMNW data = {};
                data.mask = LVCF_TEXT | LVCF_WIDTH;
                data.cx = 150;
                data.pszText = const_cast<wchar_t*>(titles[column]);
                SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                             reinterpret_cast<LPARAM>(&data));
            }
        }
    }

    [[nodiscard]] HWND List(int id) const { return GetDlgItem(m_dialog, id); }
    [[nodiscard]] int Width(int id, int column) const {
        return static_cast<int>(SendMessageW(List(id), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
    }
    void AddRows(int id, int count) const {
        for (int row = 0; row < count; ++row) {
            wchar_t name[] = L"a document.pdf";
            LVITEMW item = {};
            item.mask = LVIF_TEXT;
            item.pszText = name;
            SendMessageW(List(id), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
    }

    HWND m_dialog = nullptr;
};

} // namespace

TEST_F(ListColumnsTest, DatesFitAndNoListNeedsAHorizontalScrollBar) {
    ListColumns(kColumnsKey).Apply(m_dialog);
    for (int id = 1004; id <= 1007; ++id) {
        AddRows(id, 20);
        EXPECT_TRUE(GetWindowLongW(List(id), GWL_STYLE) & WS_VSCROLL);
        EXPECT_FALSE(GetWindowLongW(List(id), GWL_STYLE) & WS_HSCROLL) << id;
        const auto text = static_cast<int>(
            SendMessageW(List(id), LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(L"2024-12-28 23:58:48")));
        EXPECT_GT(Width(id, 2), text + 6) << id;
        EXPECT_GT(Width(id, 0), 100) << id;
    }
}

TEST_F(ListColumnsTest, WidthsThatTheUserSetComeBack) {
    {
        ListColumns columns(kColumnsKey);
        columns.Apply(m_dialog);
        SendMessageW(List(1005), LVM_SETCOLUMNWIDTH, 0, 77);
        columns.Store(m_dialog);
    }
    const int other = Width(1006, 0);
    MakeLists();
    ListColumns(kColumnsKey).Apply(m_dialog);
    EXPECT_EQ(Width(1005, 0), 77);
    EXPECT_EQ(Width(1006, 0), other);
}

TEST_F(ListColumnsTest, NothingIsKeptOfWidthsThatNobodyChanged) {
    ListColumns columns(kColumnsKey);
    columns.Apply(m_dialog);
    columns.Store(m_dialog);
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, kColumnsKey, L"ColumnWidths1004", RRF_RT_ANY, nullptr, nullptr,
                           nullptr),
              ERROR_FILE_NOT_FOUND);
}

TEST_F(ListColumnsTest, AValueThatHoldsNoWidthsIsIgnored) {
    const int wild[3] = {-5, 1 << 20, 3};
    RegSetKeyValueW(HKEY_CURRENT_USER, kColumnsKey, L"ColumnWidths1004", REG_BINARY, wild, sizeof wild);
    RegSetKeyValueW(HKEY_CURRENT_USER, kColumnsKey, L"ColumnWidths1005", REG_BINARY, wild, 5);
    ListColumns(kColumnsKey).Apply(m_dialog);
    EXPECT_EQ(Width(1004, 0), Width(1006, 0));
    EXPECT_EQ(Width(1005, 0), Width(1006, 0));
}
