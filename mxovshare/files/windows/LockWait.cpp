#include "files/LockWait.h"

#include <algorithm>

namespace mxovshare {
namespace {

constexpr DWORD kLongestPause = 32; // milliseconds
constexpr DWORD kFirstShown = 8;    // shorter pauses would only make the cursor flicker

} // namespace

LockWait::LockWait(DWORD patience) : m_patience(patience) {}

LockWait::~LockWait() {
    if (m_cursorShown) {
        const DWORD error = GetLastError();
        SetCursor(m_previous);
        SetLastError(error);
    }
}

bool LockWait::Retry(DWORD error) {
    const ULONGLONG now = GetTickCount64();
    if (m_end == 0) {
        m_end = now + m_patience;
    }
    const bool worthwhile = IsInUse(error) && now < m_end;
    if (worthwhile) {
        if (m_pause >= kFirstShown) {
            ShowCursor();
        }
        Sleep(static_cast<DWORD>(std::min<ULONGLONG>(m_pause, m_end - now)));
        m_pause = std::min(2 * m_pause, kLongestPause);
    }
    SetLastError(error);
    return worthwhile;
}

void LockWait::ShowCursor() {
    if (!m_cursorShown && GetActiveWindow() != nullptr) {
        m_previous = SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514))); // IDC_WAIT
        m_cursorShown = true;
    }
}

bool IsInUse(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_ACCESS_DENIED || error == ERROR_USER_MAPPED_FILE || error == ERROR_DELETE_PENDING;
}

} // namespace mxovshare
