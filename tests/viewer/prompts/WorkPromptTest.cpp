#include "prompts/WorkPrompt.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

using namespace viewer;

TEST(WorkPrompt, ShortWorkEndsOnItsOwnThread) {
    const auto thread = std::make_shared<DWORD>(0);
    EXPECT_TRUE(
        WaitForWork(nullptr, L"Working", [thread](WorkProgress&) { *thread = GetCurrentThreadId(); }));
    EXPECT_NE(*thread, 0u);
    EXPECT_NE(*thread, GetCurrentThreadId());
}

TEST(WorkPrompt, WorkThatFailsEndsToo) {
    EXPECT_TRUE(WaitForWork(nullptr, L"Working", [](WorkProgress&) { throw std::bad_alloc(); }));
}

TEST(WorkPrompt, TheWindowThatWaitsTakesNoInputMeanwhile) {
    const HWND owner =
        CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    const auto wasEnabled = std::make_shared<bool>(true);
    EXPECT_TRUE(WaitForWork(owner, L"Working", [owner, wasEnabled](WorkProgress&) {
        for (int i = 0; i < 500 && IsWindowEnabled(owner); ++i) {
            Sleep(10);
        }
        *wasEnabled = IsWindowEnabled(owner) != FALSE;
    }));
    EXPECT_FALSE(*wasEnabled);
    EXPECT_TRUE(IsWindowEnabled(owner));
    DestroyWindow(owner);
}
