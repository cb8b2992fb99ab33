#include "text/SystemText.h"

#include "text/UpperCase.h"

#include <windows.h>

#include <algorithm>

namespace mxovshare {

std::u16string SystemText::DecodeAnsi(std::string_view bytes) const {
    const int size = static_cast<int>(bytes.size());
    std::wstring text(bytes.size(), L'\0'); // no code page decodes to more units than bytes
    text.resize(MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), size));
    return ToUtf16(text);
}

bool SystemText::EncodeAnsi(std::u16string_view text, std::string& bytes) const {
    if (std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; })) {
        bytes.append(text.begin(), text.end());
        return true;
    }
    const std::wstring wide(text.begin(), text.end());
    const DWORD flags = GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_ACP, flags, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string encoded(size, '\0');
    WideCharToMultiByte(CP_ACP, flags, wide.data(), length, encoded.data(), size, nullptr, nullptr);
    if (DecodeAnsi(encoded) != text) {
        return false;
    }
    bytes += encoded;
    return true;
}

bool SystemText::IsLeadByte(unsigned char byte) const {
    return IsDBCSLeadByte(byte) != FALSE;
}

char16_t SystemText::Upper(char16_t unit) const {
    return UpperCase(unit);
}

std::u16string ToUtf16(std::wstring_view text) {
    return {text.begin(), text.end()};
}

void CopyUtf16(std::wstring_view text, std::u16string& copy) {
    copy.resize(text.size());
    std::ranges::copy(text, copy.begin());
}

std::wstring ToWide(std::u16string_view text) {
    return {text.begin(), text.end()};
}

} // namespace mxovshare
