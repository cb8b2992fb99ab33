#include "HistoryList.h"

#include <algorithm>
#include <iterator>

namespace docview {

namespace {

constexpr UINT kSubstring = 0x0004; // LVFI_SUBSTRING: newer systems send it as well as LVFI_PARTIAL

} // namespace

BEGIN_MESSAGE_MAP(HistoryList, CListCtrl)
    ON_NOTIFY_REFLECT(LVN_GETDISPINFO, &HistoryList::OnTextWanted)
    ON_NOTIFY_REFLECT(LVN_ODFINDITEM, &HistoryList::OnFind)
END_MESSAGE_MAP()

void HistoryList::ShowEntries(const std::vector<HistoryEntry>& entries) {
    DeleteAllItems();
    m_entries = entries;
    SetItemCount(static_cast<int>(std::ssize(m_entries)));
}

void HistoryList::OnTextWanted(NMHDR* header, LRESULT* /*result*/) {
    LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(header)->item;
    if ((item.mask & LVIF_TEXT) != 0 && item.pszText && item.cchTextMax > 0) {
        lstrcpynW(item.pszText, Text(item.iItem, item.iSubItem), item.cchTextMax);
    }
}

void HistoryList::OnFind(NMHDR* header, LRESULT* result) {
    const auto& find = *reinterpret_cast<const NMLVFINDITEMW*>(header);
    const int count = static_cast<int>(std::ssize(m_entries));
    *result = -1;
    if ((find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL | kSubstring)) == 0 || !find.lvfi.psz) {
        return;
    }
    const bool wrap = (find.lvfi.flags & LVFI_WRAP) != 0;
    for (int row = find.iStart < 0 ? 0 : find.iStart, end = wrap ? row + count : count; row < end; ++row) {
        if (Matches(row % count, find.lvfi)) {
            *result = row % count;
            return;
        }
    }
}

const wchar_t* HistoryList::Text(int row, int column) const {
    if (row < 0 || row >= std::ssize(m_entries)) {
        return L"";
    }
    const HistoryEntry& entry = m_entries[static_cast<std::size_t>(row)];
    const std::wstring* const texts[] = {&entry.operation, &entry.time, &entry.by};
    return column >= 0 && column < std::ssize(texts) ? texts[column]->c_str() : L"";
}

bool HistoryList::Matches(int row, const LVFINDINFOW& wanted) const {
    const std::wstring text = Text(row, 0);
    const int length = lstrlenW(wanted.psz);
    const bool beginning = (wanted.flags & (LVFI_PARTIAL | kSubstring)) != 0;
    const int whole = static_cast<int>(std::ssize(text));
    const int compared = beginning ? std::min(length, whole) : whole;
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, text.c_str(), compared, wanted.psz, length) ==
           CSTR_EQUAL;
}

} // namespace docview
