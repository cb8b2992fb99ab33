// Windows that the tests of the framework create.
#pragma once

#include "afxwin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

/// A window that notes the messages which reach its WindowProc.
class RecordingWindow : public CWnd {
public:
    /// A hidden top-level window of the system's static class.
    BOOL CreateTop(DWORD style = WS_POPUP) {
        return CreateEx(0, L"STATIC", L"top", style, CRect(0, 0, 200, 100), nullptr, 0);
    }

    int Count(UINT message) const { return static_cast<int>(std::count(seen.begin(), seen.end(), message)); }

    std::vector<UINT> seen;
    int subclassed = 0; ///< calls of PreSubclassWindow
    int gone = 0;       ///< calls of PostNcDestroy

    void PreSubclassWindow() override {
        EXPECT_TRUE(::IsWindow(m_hWnd));
        ++subclassed;
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        seen.push_back(message);
        return CWnd::WindowProc(message, wParam, lParam);
    }
    void PostNcDestroy() override {
        EXPECT_EQ(m_hWnd, nullptr);
        ++gone;
    }
};

/// A child window of a system class, destroyed with its parent.
inline HWND AddChild(HWND parent, LPCWSTR className, int id, DWORD style = 0) {
    return ::CreateWindowExW(0, className, L"child", WS_CHILD | style, 5, 5, 40, 20, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}
