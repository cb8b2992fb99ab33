#include "ini/IniRetry.h"

#include "ini/IniStore.h"

#include <atomic>

namespace mxovshare {
namespace {

constexpr UINT kRetryInterval = 500; // milliseconds

std::atomic<DWORD> g_retryThread = 0; // the thread that started a timer last; 0 when that one has ended

bool SaveNow() {
    try {
        return IniStore::Instance().SaveKept();
    } catch (...) {
        return false; // std::bad_alloc: next time
    }
}

void CALLBACK OnRetryTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    if (SaveNow()) {
        KillTimer(nullptr, timer);
        DWORD thread = GetCurrentThreadId();
        g_retryThread.compare_exchange_strong(thread, 0);
    }
}

} // namespace

void ScheduleRetry() {
    const DWORD thread = GetCurrentThreadId();
    if (g_retryThread.exchange(thread) == thread) {
        return;
    }
    // The timer may outlive the last user of this library.
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCWSTR>(&OnRetryTimer), &self);
    if (SetTimer(nullptr, 0, kRetryInterval, OnRetryTimer) == 0) {
        g_retryThread = 0;
    }
}

} // namespace mxovshare
