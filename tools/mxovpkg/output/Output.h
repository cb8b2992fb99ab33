// Text for the user: UTF-8 to a file or a pipe, Unicode to a console.
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

/// `text` made printable on one line: control characters become "?".
std::wstring OneLine(std::wstring text);

/// The text of bytes in UTF-8, else in Latin-1, as programs for machines write it.
std::wstring Decoded(std::string_view bytes);

/// `text` on one line: control characters but the tab become "\uXXXX".
std::wstring Escaped(const std::wstring& text);
