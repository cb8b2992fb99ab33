// A second process of the running test program, for what only another process can show.
#pragma once

#include "common/Paths.h"
#include "Process.h"

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
    SetEnvironmentVariableW(kChildFile, file.c_str());
    const Process child(L"\"" + common::ModulePath(nullptr) +
                        L"\" --gtest_also_run_disabled_tests --gtest_filter=" + test);
    SetEnvironmentVariableW(kChildFile, nullptr);
    return child.Wait();
}

} // namespace mxovshare
