// Waiting for a file that another program has locked.
#pragma once

#include "LockPatience.h"

#include <windows.h>

namespace mxovshare {

/// The pauses between attempts at a file, which grow from 1 to 32 ms. During them a thread that owns the
/// active window shows the wait cursor.
class LockWait {
public:
    /// `patience`: milliseconds that all pauses may take.
    explicit LockWait(DWORD patience = kLockPatience);
    /// Restores the cursor.
    ~LockWait();
    LockWait(const LockWait&) = delete;
    LockWait& operator=(const LockWait&) = delete;

    /// Pauses after an attempt that failed with `error`. False without a pause when another attempt cannot
    /// help or the time is over. The thread's last error is `error` afterwards.
    bool Retry(DWORD error);

private:
    void ShowCursor();

    DWORD m_patience;
    ULONGLONG m_end = 0; // tick count, set at the first pause
    DWORD m_pause = 1;
    HCURSOR m_previous = nullptr;
    bool m_cursorShown = false;
};

/// Whether an operation failed because another program uses the file, as far as its error code shows.
bool IsInUse(DWORD error);

} // namespace mxovshare
