// The package's history as a list view.
#pragma once

#include "package/DocumentRecord.h"

#include "afxcmn.h"

#include <string>
#include <vector>

namespace docview {

/// A virtual list view (LVS_OWNERDATA) over a copy of the history: showing it costs one copy and no message
/// per row.
class HistoryList : public CListCtrl {
public:
    /// Replaces the shown entries: operation, time and by in the first three columns.
    void ShowEntries(const std::vector<HistoryEntry>& entries);

protected:
    afx_msg void OnTextWanted(NMHDR* header, LRESULT* result);
    afx_msg void OnFind(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    /// Text of a cell; empty outside the history.
    const wchar_t* Text(int row, int column) const;
    bool Matches(int row, const LVFINDINFOW& wanted) const;

    std::vector<HistoryEntry> m_entries;
};

} // namespace docview
