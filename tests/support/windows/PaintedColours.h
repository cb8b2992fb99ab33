// The colours that a window paints.
#pragma once

#include "common/Handles.h"

#include <map>

/// Lets the window paint itself and counts the pixels of each colour in its client area, taking one out of
/// `step` in each direction.
inline std::map<COLORREF, int> CountColours(HWND window, int step = 1) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    RECT area = {};
    GetClientRect(window, &area);
    const HDC dc = GetDC(window);
    const common::UniqueMemoryDc memory(CreateCompatibleDC(dc));
    const common::UniqueBitmap copy(CreateCompatibleBitmap(dc, area.right, area.bottom));
    const HGDIOBJ old = SelectObject(memory.get(), copy.get());
    BitBlt(memory.get(), 0, 0, area.right, area.bottom, dc, 0, 0, SRCCOPY);
    std::map<COLORREF, int> colours;
    for (int y = 0; y < area.bottom; y += step) {
        for (int x = 0; x < area.right; x += step) {
            ++colours[GetPixel(memory.get(), x, y)];
        }
    }
    SelectObject(memory.get(), old);
    ReleaseDC(window, dc);
    return colours;
}
