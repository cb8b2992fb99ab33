#include "files/LockWait.h"

#include "common/Handles.h"

#include <gtest/gtest.h>

namespace mxovshare {
namespace {

TEST(LockWait, EndsWithItsPatience) {
    LockWait wait(200);
    const ULONGLONG start = GetTickCount64();
    while (wait.Retry(ERROR_SHARING_VIOLATION)) {
    }
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SHARING_VIOLATION));
    EXPECT_GE(GetTickCount64() - start, 180U);
    EXPECT_FALSE(LockWait(0).Retry(ERROR_SHARING_VIOLATION));
}

TEST(LockWait, OnlyWaitsForFilesInUse) {
    for (const DWORD error : {ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION, ERROR_ACCESS_DENIED}) {
        EXPECT_TRUE(LockWait().Retry(error)) << error;
    }
    for (const DWORD error : {ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ERROR_DISK_FULL}) {
        EXPECT_FALSE(LockWait().Retry(error)) << error;
    }
}

TEST(LockWait, ShowsTheWaitCursorOverAnActiveWindow) {
    const HCURSOR before = SetCursor(LoadCursorW(nullptr, IDC_CROSS));
    const HCURSOR wait = LoadCursorW(nullptr, IDC_WAIT);
    const common::UniqueWindow window(CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                                      nullptr, nullptr, nullptr, nullptr));
    SetActiveWindow(window.get());
    {
        LockWait lock(60);
        while (lock.Retry(ERROR_ACCESS_DENIED)) {
        }
        EXPECT_EQ(GetCursor(), wait);
    }
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_CROSS));
    SetCursor(before);
}

} // namespace
} // namespace mxovshare
