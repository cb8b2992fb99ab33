// A second process of the running test program, for what only another process can show.
#pragma once

#include <windows.h>

#include <string>

namespace mxovshare {

inline constexpr wchar_t kChildFile[] = L"MXOV_TEST_FILE";

/// The file that the parent named; empty in a test program that nobody started as a child.
inline std::wstring FileForChild() {
    wchar_t path[1024] = {};
    return GetEnvironmentVariableW(kChildFile, path, 1024) != 0 ? path : L"";
}

/// Runs one disabled test of this program in a process of its own, and waits for it. Gives its exit code.
inline DWORD RunChild(const std::wstring& test, const std::wstring& file) {
    wchar_t program[1024] = {};
    GetModuleFileNameW(nullptr, program, 1024);
    std::wstring line =
        L"\"" + std::wstring(program) + L"\" --gtest_also_run_disabled_tests --gtest_filter=" + test;
    SetEnvironmentVariableW(kChildFile, file.c_str());
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process = {};
    DWORD code = ~0U;
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                       &process)) {
        WaitForSingleObject(process.hProcess, INFINITE);
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    SetEnvironmentVariableW(kChildFile, nullptr);
    return code;
}

} // namespace mxovshare
