// Holds a list view's painting while it is filled.
#pragma once

#include "afxcmn.h"

/// Switches redrawing off for its life and has the whole list painted once afterwards. A list without a
/// window is left alone.
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
