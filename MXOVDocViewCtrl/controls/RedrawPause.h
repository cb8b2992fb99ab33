// Suspends painting of a list view while it is filled.
#pragma once

#include "afxcmn.h"

namespace docview {

/// Switches redrawing off until the end of its scope, then repaints the whole list. Does nothing for a list
/// without a window.
class RedrawPause {
public:
    explicit RedrawPause(CListCtrl& list);
    ~RedrawPause();
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;

private:
    CListCtrl& m_list;
    bool m_hidden = false;
};

} // namespace docview
