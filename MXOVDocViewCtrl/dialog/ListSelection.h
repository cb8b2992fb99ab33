// The selection of a list view with single selection.
#pragma once

#include "afxcmn.h"

namespace docview {

/// Place of the selected item, or -1.
inline int SelectedItem(const CListCtrl& list) {
    return list.GetNextItem(-1, LVNI_SELECTED);
}

} // namespace docview
