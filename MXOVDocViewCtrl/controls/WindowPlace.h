// Where a child window lies in its parent.
#pragma once

#include "afxwin.h"

namespace docview {

/// The window's rectangle in client coordinates of its parent; in screen coordinates when it has none.
inline CRect RectInParent(HWND window) {
    CRect rect;
    ::GetWindowRect(window, &rect);
    ::MapWindowPoints(HWND_DESKTOP, ::GetParent(window), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

} // namespace docview
