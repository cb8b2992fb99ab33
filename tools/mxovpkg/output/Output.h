// The standard streams: UTF-8 to a file or a pipe, Unicode to a console.
#pragma once

#include <windows.h>

#include <string_view>

enum class Stream { Results, Errors };

/// One of the two standard streams.
class Output {
public:
    explicit Output(Stream stream);

    bool IsConsole() const { return m_isConsole; }
    void Write(std::wstring_view text) const;
    void WriteLine(std::wstring_view line) const;

private:
    HANDLE m_handle;
    bool m_isConsole;
};
