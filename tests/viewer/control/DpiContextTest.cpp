// The dots per inch that the control is laid out for.
#include "control/DpiContext.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

bool IsThreadIn(DPI_AWARENESS_CONTEXT context) {
    return GetAwarenessFromDpiAwarenessContext(GetThreadDpiAwarenessContext()) ==
           GetAwarenessFromDpiAwarenessContext(context);
}

} // namespace

TEST(DpiContext, LastsAsLongAsTheObject) {
    const DPI_AWARENESS_CONTEXT before =
        SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE);
    {
        const DpiContext ofSystem(DpiContext::kSystem);
        EXPECT_TRUE(IsThreadIn(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE));
        const HWND window =
            CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
        EXPECT_TRUE(IsScaledBySystem(window));
        SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE);
        {
            const DpiContext ofWindow(window);
            EXPECT_TRUE(IsThreadIn(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE));
        }
        EXPECT_TRUE(IsThreadIn(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE));
        const HWND none = nullptr;
        const DpiContext ofNone(none);
        EXPECT_TRUE(IsThreadIn(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE));
        DestroyWindow(window);
    }
    EXPECT_TRUE(IsThreadIn(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE));
    SetThreadDpiAwarenessContext(before);
}

TEST(DpiContext, SizesAreThoseOfOtherDots) {
    const SIZE size = SizeForDpi({372, 480}, 96, 144);
    EXPECT_EQ(size.cx, 558);
    EXPECT_EQ(size.cy, 720);
    EXPECT_EQ(SizeForDpi(size, 144, 96).cx, 372);
}
