#include "Output.h"

#include "common/Utf8.h"

#include <algorithm>
#include <cwchar>

Output::Output(DWORD stream) : m_handle(GetStdHandle(stream)) {
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

std::wstring OneLine(std::wstring text) {
    std::ranges::replace_if(
        text, [](wchar_t unit) { return unit < 0x20 || unit == 0x7F || unit == 0x2028 || unit == 0x2029; },
        L'?');
    return text;
}

std::wstring Decoded(std::string_view bytes) {
    std::wstring text = common::FromUtf8(bytes);
    if (common::ToUtf8(text) != bytes) {
        text.clear();
        for (const char byte : bytes) {
            text += static_cast<unsigned char>(byte);
        }
    }
    return text;
}

std::wstring Escaped(const std::wstring& text) {
    std::wstring escaped;
    for (const wchar_t unit : text) {
        const bool isControl = (unit < 0x20 && unit != L'\t') || (unit >= 0x7F && unit < 0xA0) ||
                               unit == 0x2028 || unit == 0x2029;
        if (!isControl) {
            escaped += unit;
            continue;
        }
        wchar_t code[8] = {};
        std::swprintf(code, std::size(code), L"\\u%04X", static_cast<unsigned>(unit));
        escaped += code;
    }
    return escaped;
}
