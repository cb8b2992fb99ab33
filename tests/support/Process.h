// Another process that a test starts.
#pragma once

#include "common/Handles.h"

#include <string>

/// A started process. Its handles are closed with the object; the process itself goes on.
class Process {
public:
    /// Starts a program; the object is empty when that fails. `flags` are those of STARTUPINFO.
    explicit Process(std::wstring commandLine, DWORD flags = 0) {
        STARTUPINFOW start = {};
        start.cb = sizeof start;
        start.dwFlags = flags;
        PROCESS_INFORMATION process = {};
        if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                           &process)) {
            m_process.reset(process.hProcess);
            CloseHandle(process.hThread);
        }
    }

    explicit operator bool() const { return m_process != nullptr; }
    [[nodiscard]] DWORD Id() const { return GetProcessId(m_process.get()); }
    [[nodiscard]] bool IsRunning() const { return !EndsWithin(0); }
    /// Waits; false when the process still runs after these milliseconds.
    [[nodiscard]] bool EndsWithin(DWORD milliseconds) const {
        return WaitForSingleObject(m_process.get(), milliseconds) == WAIT_OBJECT_0;
    }
    /// Waits until the process waits for input for the first time, at most these milliseconds.
    void WaitForInput(DWORD milliseconds) const { WaitForInputIdle(m_process.get(), milliseconds); }
    /// Waits for the end and returns the exit code.
    [[nodiscard]] DWORD Wait() const {
        WaitForSingleObject(m_process.get(), INFINITE);
        return ExitCode();
    }
    /// STILL_ACTIVE while the process runs.
    [[nodiscard]] DWORD ExitCode() const {
        DWORD code = ~0U;
        GetExitCodeProcess(m_process.get(), &code);
        return code;
    }
    /// Ends the process with this exit code.
    void Terminate(UINT code) const { TerminateProcess(m_process.get(), code); }

private:
    common::UniqueHandle m_process;
};
