#include "text/SystemText.h"

#include "text/UpperCase.h"

#include <algorithm>
#include <iterator>

namespace mxovshare {

namespace {

// What the bytes from 0x80 on stand for in code page 1252; those from 0xA0 on stand for themselves.
constexpr char16_t kCodePage[] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                  0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr unsigned kFirstCoded = 0x80;

char16_t DecodeByte(unsigned char byte) {
    const unsigned place = byte - kFirstCoded;
    return byte >= kFirstCoded && place < std::size(kCodePage) ? kCodePage[place] : byte;
}

// None for a unit that the code page does not have.
bool EncodeUnit(char16_t unit, std::string& bytes) {
    const auto* found = std::ranges::find(kCodePage, unit);
    const bool stands = unit < kFirstCoded || (unit >= kFirstCoded + std::size(kCodePage) && unit <= 0xFF);
    const bool isInTable = found != std::end(kCodePage);
    if (stands || isInTable) {
        bytes += static_cast<char>(isInTable ? kFirstCoded + static_cast<unsigned>(found - kCodePage) : unit);
    }
    return stands || isInTable;
}

} // namespace

std::u16string SystemText::DecodeAnsi(std::string_view bytes) const {
    std::u16string text(bytes.size(), u'\0');
    std::ranges::transform(bytes, text.begin(),
                           [](char byte) { return DecodeByte(static_cast<unsigned char>(byte)); });
    return text;
}

bool SystemText::EncodeAnsi(std::u16string_view text, std::string& bytes) const {
    const std::size_t before = bytes.size();
    const bool done = std::ranges::all_of(text, [&bytes](char16_t unit) { return EncodeUnit(unit, bytes); });
    if (!done) {
        bytes.resize(before);
    }
    return done;
}

bool SystemText::IsLeadByte(unsigned char /*byte*/) const {
    return false;
}

char16_t SystemText::Upper(char16_t unit) const {
    return UpperCase(unit);
}

std::u16string ToUtf16(std::wstring_view text) {
    std::u16string units;
    CopyUtf16(text, units);
    return units;
}

void CopyUtf16(std::wstring_view text, std::u16string& copy) {
    copy.clear();
    copy.reserve(text.size());
    for (const wchar_t character : text) {
        const auto code = static_cast<char32_t>(character);
        if (code < 0x10000) {
            copy += static_cast<char16_t>(code);
        } else {
            copy += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            copy += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
}

std::wstring ToWide(std::u16string_view text) {
    std::wstring characters;
    characters.reserve(text.size());
    for (const char16_t unit : text) {
        const bool isSecond = unit >= 0xDC00 && unit <= 0xDFFF && !characters.empty() &&
                              characters.back() >= 0xD800 && characters.back() <= 0xDBFF;
        if (isSecond) {
            characters.back() =
                static_cast<wchar_t>(0x10000 + ((characters.back() - 0xD800) << 10) + (unit - 0xDC00));
        } else {
            characters += static_cast<wchar_t>(unit);
        }
    }
    return characters;
}

} // namespace mxovshare
