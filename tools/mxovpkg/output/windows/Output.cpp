#include "output/Output.h"

#include "common/Utf8.h"

Output::Output(Stream stream)
    : m_handle(GetStdHandle(stream == Stream::Results ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE)) {
    DWORD mode = 0;
    m_isConsole = GetConsoleMode(m_handle, &mode) != FALSE;
}

void Output::Write(std::wstring_view text) const {
    DWORD done = 0;
    if (m_isConsole) {
        WriteConsoleW(m_handle, text.data(), static_cast<DWORD>(text.size()), &done, nullptr);
        return;
    }
    const std::string bytes = common::ToUtf8(text);
    WriteFile(m_handle, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
}

void Output::WriteLine(std::wstring_view line) const {
    Write(std::wstring(line) + L"\n");
}
