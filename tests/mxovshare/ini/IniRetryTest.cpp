#include "ini/IniRetry.h"

#include "ImportHook.h"

#include <gtest/gtest.h>

#include <thread>

namespace mxovshare {
namespace {

int asked = 0;

UINT_PTR WINAPI NoTimer(HWND, UINT_PTR, UINT, TIMERPROC) {
    ++asked;
    return 0;
}

TEST(IniRetry, AThreadThatGotNoTimerAsksAgain) {
    const ImportHook<decltype(NoTimer)> hook("SetTimer", NoTimer);
    asked = 0;
    std::thread([] {
        ScheduleRetry();
        ScheduleRetry();
    }).join();
    EXPECT_EQ(asked, 2);
}

} // namespace
} // namespace mxovshare
