// Finds texts that do not fit their places.
#pragma once

#include "ImportHook.h"

#include <string>
#include <vector>

#include <windows.h>

/// The texts of buttons, labels and headers of lists inside a window that need more than their place.
[[nodiscard]] std::vector<std::wstring> CutControlTexts(HWND window);

/// Measures what this program writes with DrawText while the object lives. One at a time.
class DrawnTexts {
public:
    DrawnTexts();
    ~DrawnTexts();
    DrawnTexts(const DrawnTexts&) = delete;
    DrawnTexts& operator=(const DrawnTexts&) = delete;

    /// The texts that needed more than their place.
    [[nodiscard]] const std::vector<std::wstring>& Cut() const { return m_cut; }
    /// How many were drawn.
    [[nodiscard]] int Count() const { return m_count; }

private:
    static int WINAPI Draw(HDC dc, LPCWSTR text, int length, LPRECT area, UINT format);

    static inline DrawnTexts* s_current = nullptr;
    ImportHook<decltype(DrawTextW)> m_hook{"DrawTextW", Draw};
    std::vector<std::wstring> m_cut;
    int m_count = 0;
};
