#include "common/Utf8.h"

#include <algorithm>

namespace common {

namespace {

constexpr wchar_t kReplacement = 0xFFFD;
constexpr wchar_t kByteMark = 0xDC00; // added to a byte that stands for nothing

bool IsSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

bool IsCharacter(wchar_t unit) {
    return unit >= 0 && unit <= 0x10FFFF && !IsSurrogate(unit);
}

bool IsMarkedByte(wchar_t unit) {
    return unit >= kByteMark + 0x80 && unit <= kByteMark + 0xFF;
}

void AppendCharacter(std::string& bytes, wchar_t unit) {
    const auto code = static_cast<char32_t>(unit);
    const auto add = [&bytes](char32_t byte) { bytes += static_cast<char>(byte); };
    const auto addRest = [&add, code](int count) {
        for (int shift = 6 * (count - 1); shift >= 0; shift -= 6) {
            add(0x80 | (code >> shift & 0x3F));
        }
    };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0 | code >> 6);
        addRest(1);
    } else if (code < 0x10000) {
        add(0xE0 | code >> 12);
        addRest(2);
    } else {
        add(0xF0 | code >> 18);
        addRest(3);
    }
}

struct DecodedCharacter {
    wchar_t code = 0;
    std::size_t length = 0; // 0 for what is not valid
};

// Length that a lead byte announces, and its bits.
DecodedCharacter LeadOf(unsigned char lead) {
    if (lead < 0x80) {
        return {static_cast<wchar_t>(lead), 1};
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return {static_cast<wchar_t>(lead & 0x1F), 2};
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return {static_cast<wchar_t>(lead & 0x0F), 3};
    }
    return lead >= 0xF0 && lead < 0xF5 ? DecodedCharacter{static_cast<wchar_t>(lead & 0x07), 4}
                                       : DecodedCharacter{};
}

bool IsShortest(const DecodedCharacter& character) {
    return character.length < 3 || character.code >= (character.length == 3 ? 0x800 : 0x10000);
}

DecodedCharacter DecodeFirst(std::string_view bytes) {
    DecodedCharacter character = LeadOf(static_cast<unsigned char>(bytes[0]));
    if (character.length == 0 || character.length > bytes.size()) {
        return {};
    }
    for (const char byte : bytes.substr(1, character.length - 1)) {
        if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80) {
            return {};
        }
        character.code = static_cast<wchar_t>(character.code << 6 | (byte & 0x3F));
    }
    return IsShortest(character) && IsCharacter(character.code) ? character : DecodedCharacter{};
}

template <class Replace>
std::wstring Decode(std::string_view bytes, Replace replace) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const DecodedCharacter next = DecodeFirst(bytes);
        text += next.length > 0 ? next.code : replace(static_cast<unsigned char>(bytes[0]));
        bytes.remove_prefix(std::max<std::size_t>(next.length, 1));
    }
    return text;
}

} // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t unit : text) {
        AppendCharacter(bytes, IsCharacter(unit) ? unit : kReplacement);
    }
    return bytes;
}

std::string ToUtf8Strict(std::wstring_view text) {
    return std::ranges::all_of(text, IsCharacter) ? ToUtf8(text) : std::string();
}

std::wstring FromUtf8(std::string_view bytes) {
    return Decode(bytes, [](unsigned char) { return kReplacement; });
}

std::wstring FromNameBytes(std::string_view bytes) {
    return Decode(bytes, [](unsigned char byte) { return static_cast<wchar_t>(kByteMark + byte); });
}

std::string ToNameBytes(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t unit : text) {
        if (IsMarkedByte(unit)) {
            bytes += static_cast<char>(unit - kByteMark);
        } else {
            AppendCharacter(bytes, IsCharacter(unit) ? unit : kReplacement);
        }
    }
    return bytes;
}

} // namespace common
