#include "LineText.h"

#include "common/Utf8.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

std::wstring OneLine(std::wstring text) {
    std::ranges::replace_if(
        text, [](wchar_t unit) { return unit < 0x20 || unit == 0x7F || unit == 0x2028 || unit == 0x2029; },
        L'?');
    return text;
}

std::size_t CharacterCount(std::wstring_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](wchar_t unit) { return unit < 0xDC00 || unit > 0xDFFF; }));
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
