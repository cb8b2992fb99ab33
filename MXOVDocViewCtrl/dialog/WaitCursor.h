// The system's wait cursor during long work.
#pragma once

#include "afxwin.h"

namespace docview {

/// Shows the wait cursor until the end of its scope, then the previous cursor.
class WaitCursor {
public:
    WaitCursor() : m_previous(SetCursor(LoadCursor(nullptr, IDC_WAIT))) {}
    ~WaitCursor() { SetCursor(m_previous); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HCURSOR m_previous;
};

} // namespace docview
