// A second process of the running test program, for what only another process can show.
#pragma once

#include "common/Handles.h"

#include <windows.h>

#include <string>

namespace mxovshare {

inline constexpr wchar_t kChildFile[] = L"MXOV_TEST_FILE";

/// The file that the parent named; empty in a test program that is nobody's child.
inline std::wstring FileForChild() {
    wchar_t path[1024] = {};
    return GetEnvironmentVariableW(kChildFile, path, 1024) != 0 ? path : L"";
}

/// Runs one disabled test of this program in a process of its own.
class ChildProcess {
public:
    ChildProcess(const std::wstring& test, const std::wstring& file) {
        wchar_t program[1024] = {};
        GetModuleFileNameW(nullptr, program, 1024);
        std::wstring line =
            L"\"" + std::wstring(program) + L"\" --gtest_also_run_disabled_tests --gtest_filter=" + test;
        SetEnvironmentVariableW(kChildFile, file.c_str());
        STARTUPINFOW start = {};
        start.cb = sizeof(start);
        PROCESS_INFORMATION process = {};
        if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                           &process)) {
            m_process.reset(process.hProcess);
            CloseHandle(process.hThread);
        }
        SetEnvironmentVariableW(kChildFile, nullptr);
    }

    /// Waits for its end. Returns its exit code; all bits set when it did not start.
    DWORD Wait() const {
        DWORD code = ~0U;
        if (m_process) {
            WaitForSingleObject(m_process.get(), INFINITE);
            GetExitCodeProcess(m_process.get(), &code);
        }
        return code;
    }

private:
    common::UniqueHandle m_process;
};

/// Runs one disabled test of this program in a process of its own, and waits for it. Returns its exit code.
inline DWORD RunChild(const std::wstring& test, const std::wstring& file) {
    return ChildProcess(test, file).Wait();
}

} // namespace mxovshare
