// The package's history as a list view.
#pragma once

#include "package/DocumentRecord.h"

#include "afxcmn.h"

#include <string>
#include <vector>

/// A virtual list view (LVS_OWNERDATA) over a copy of the history: however long that is, showing it costs the
/// copy and no message for a row.
class HistoryList : public CListCtrl {
public:
    /// Shows these entries instead of those before: operation, time and by in the first three columns.
    void ShowEntries(const std::vector<HistoryEntry>& entries);

protected:
    afx_msg void OnTextWanted(NMHDR* header, LRESULT* result);
    afx_msg void OnFind(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    /// What stands in a cell; nothing outside the history.
    const wchar_t* Text(int row, int column) const;
    bool Matches(int row, const LVFINDINFOW& wanted) const;

    std::vector<HistoryEntry> m_entries;
};
