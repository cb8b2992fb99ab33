// A second process of the running test program, for what only another process can show.
#pragma once

#include "common/Paths.h"
#include "Process.h"

#include <optional>
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
        SetEnvironmentVariableW(kChildFile, file.c_str());
        m_process.emplace(L"\"" + common::ModulePath(nullptr) +
                          L"\" --gtest_also_run_disabled_tests --gtest_filter=" + test);
        SetEnvironmentVariableW(kChildFile, nullptr);
    }

    /// Waits for its end. Returns its exit code.
    DWORD Wait() const { return m_process->Wait(); }

private:
    std::optional<Process> m_process;
};

/// Runs one disabled test of this program in a process of its own, and waits for it. Returns its exit code.
inline DWORD RunChild(const std::wstring& test, const std::wstring& file) {
    return ChildProcess(test, file).Wait();
}

} // namespace mxovshare
