// Asking for files on drives without a disk.
#pragma once

#include <windows.h>

namespace docview {

/// Suppresses the system's prompt for a disk while a path on an empty drive is checked.
class NoDiskPrompts {
public:
    NoDiskPrompts() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &m_previous); }
    ~NoDiskPrompts() { SetThreadErrorMode(m_previous, nullptr); }
    NoDiskPrompts(const NoDiskPrompts&) = delete;
    NoDiskPrompts& operator=(const NoDiskPrompts&) = delete;

private:
    DWORD m_previous = 0;
};

} // namespace docview
