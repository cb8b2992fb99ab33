// The system's wait cursor during long work.
#pragma once

#include "afxwin.h"

/// Shows the wait cursor for its life and then the cursor that was shown before.
class WaitCursor {
public:
    WaitCursor() : m_previous(SetCursor(LoadCursor(nullptr, IDC_WAIT))) {}
    ~WaitCursor() { SetCursor(m_previous); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HCURSOR m_previous;
};
