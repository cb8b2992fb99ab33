// The history as others read it: a list view like any other.
#include "PopupFixture.h"

#include <commctrl.h>

namespace {

class HistoryListTest : public PopupFixture {
protected:
    HWND List() const { return Item(IDC_HISTORY); }

    /// A cell as LVM_GETITEMTEXT returns it for a buffer of this size.
    std::wstring Cell(int row, int column, int room = 300) const {
        std::wstring text(static_cast<std::size_t>(room), L'#');
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = room;
        const LRESULT length =
            SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        text.resize(std::wcslen(text.c_str()));
        EXPECT_EQ(length, std::ssize(text));
        return text;
    }

    std::string NarrowCell(int row, int column) const {
        char text[300] = "#";
        LVITEMA item = {};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageW(List(), LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return text;
    }

    int Find(int after, UINT flags, const wchar_t* text) const {
        LVFINDINFOW find = {};
        find.flags = flags;
        find.psz = text;
        return static_cast<int>(
            SendMessageW(List(), LVM_FINDITEMW, static_cast<WPARAM>(after), reinterpret_cast<LPARAM>(&find)));
    }

    int Count() const { return static_cast<int>(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0)); }
};

} // namespace

TEST_F(HistoryListTest, EveryCellOfALongHistoryIsThereAtOnce) {
    m_history.clear();
    for (int i = 0; i < 1000; ++i) {
        const std::wstring number = std::to_wstring(i);
        m_history.push_back({L"Updated " + number, L"at " + number, L"by " + number, L"not shown"});
    }
    Fill(DocumentCategory::PartAssembly);
    m_history.clear(); // what is shown does not hang on it
    ASSERT_EQ(Count(), 1000);
    for (const int row : {0, 1, 500, 999}) {
        const std::wstring number = std::to_wstring(row);
        EXPECT_EQ(Cell(row, 0), L"Updated " + number);
        EXPECT_EQ(Cell(row, 1), L"at " + number);
        EXPECT_EQ(Cell(row, 2), L"by " + number);
    }
}

TEST_F(HistoryListTest, FillingAgainReplacesTheRows) {
    Fill(DocumentCategory::PartAssembly);
    m_history = {{L"Released", L"today", L"Cy", L""}};
    Fill(DocumentCategory::PartAssembly);
    ASSERT_EQ(Count(), 1);
    EXPECT_EQ(Cell(0, 0), L"Released");
    EXPECT_EQ(Cell(0, 3), L"") << "the columns that were appended once more stay empty";
    m_history.clear();
    Fill(DocumentCategory::PartAssembly);
    EXPECT_EQ(Count(), 0);
}

TEST_F(HistoryListTest, LongTextsAreWholeAndSmallBuffersAreKept) {
    const std::wstring text(5000, L'x');
    m_history = {{L"Updated", L"today", text, L""}};
    Fill(DocumentCategory::PartAssembly);
    EXPECT_EQ(Cell(0, 2, 6000), text);
    EXPECT_EQ(Cell(0, 2, 10), text.substr(0, 9));
    EXPECT_EQ(Cell(0, 2, 1), L"");
}

TEST_F(HistoryListTest, AProgramWithoutUnicodeReadsItToo) {
    m_history = {{L"Updated", L"2024-05-14", L"J. M\u00fcller", L""}};
    Fill(DocumentCategory::PartAssembly);
    EXPECT_EQ(NarrowCell(0, 0), "Updated");
    EXPECT_EQ(NarrowCell(0, 1), "2024-05-14");
    char expected[20] = "";
    WideCharToMultiByte(CP_ACP, 0, L"J. M\u00fcller", -1, expected, sizeof expected, nullptr, nullptr);
    EXPECT_EQ(NarrowCell(0, 2), expected);
}

TEST_F(HistoryListTest, ItemsAreReadWithTheirTexts) {
    Fill(DocumentCategory::PartAssembly);
    wchar_t text[40] = L"";
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_STATE;
    item.iItem = 1;
    item.iSubItem = 2;
    item.pszText = text;
    item.cchTextMax = 40;
    ASSERT_TRUE(SendMessageW(List(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    EXPECT_STREQ(item.pszText, L"Bo");
}

TEST_F(HistoryListTest, RowsAreFoundByTheirBeginning) {
    m_history = {
        {L"Created", L"1", L"a", L""}, {L"Updated", L"2", L"b", L""}, {L"Released", L"3", L"c", L""}};
    Fill(DocumentCategory::PartAssembly);
    EXPECT_EQ(Find(-1, LVFI_STRING, L"updated"), 1);
    EXPECT_EQ(Find(-1, LVFI_STRING, L"upd"), -1);
    EXPECT_EQ(Find(-1, LVFI_STRING | LVFI_PARTIAL, L"upd"), 1);
    EXPECT_EQ(Find(1, LVFI_STRING | LVFI_PARTIAL, L"c"), -1);
    EXPECT_EQ(Find(1, LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP, L"c"), 0);
    EXPECT_EQ(Find(-1, LVFI_STRING | LVFI_PARTIAL, L"Created at the beginning"), -1);
    EXPECT_EQ(Find(-1, LVFI_STRING, L"Bo"), -1) << "only the first column counts";
    EXPECT_EQ(Find(-1, LVFI_PARAM, L"Updated"), -1) << "rows have no values of their own";
}

TEST_F(HistoryListTest, ATypedLetterGoesToItsRow) {
    m_history = {
        {L"Created", L"1", L"a", L""}, {L"Updated", L"2", L"b", L""}, {L"Released", L"3", L"c", L""}};
    Show(DocumentCategory::PartAssembly);
    SetFocus(List());
    SendMessageW(List(), WM_CHAR, L'r', 1);
    EXPECT_EQ(SendMessageW(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 2);
}
