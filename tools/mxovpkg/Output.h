// Text for the user: UTF-8 where a file or a pipe takes it, Unicode on a console.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

/// One of the two standard streams.
class Output {
public:
    /// `stream` is STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
    explicit Output(DWORD stream);

    bool IsConsole() const { return m_isConsole; }
    void Write(std::wstring_view text) const;
    void WriteLine(std::wstring_view line) const;

private:
    HANDLE m_handle;
    bool m_isConsole;
};

/// `text` fit for one line of output: control characters stand as "?".
std::wstring OneLine(std::wstring text);
