#include "ini/IniEncoding.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace mxovshare {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

unsigned char ByteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

// Length of the ASCII run at the start, eight bytes at a time.
std::size_t AsciiLength(std::string_view bytes) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::size_t at = 0;
    for (std::uint64_t block = 0; at + sizeof(block) <= bytes.size(); at += sizeof(block)) {
        std::memcpy(&block, bytes.data() + at, sizeof(block));
        if ((block & kHighBits) != 0) {
            break;
        }
    }
    while (at < bytes.size() && ByteAt(bytes, at) < 0x80) {
        ++at;
    }
    return at;
}

// Takes one character outside ASCII off the front of `bytes`. False, and one byte taken, when it is
// malformed.
bool TakeUtf8(std::string_view& bytes, char32_t& character) {
    const unsigned char lead = ByteAt(bytes, 0);
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    character = lead & (0xFFU >> (length + 1));
    bool good = lead >= 0xC2 && lead <= 0xF4 && length <= bytes.size();
    for (std::size_t i = 1; good && i < length; ++i) {
        good = (ByteAt(bytes, i) & 0xC0) == 0x80;
        character = character << 6 | (ByteAt(bytes, i) & 0x3FU);
    }
    good = good && character >= kSmallest[length] && character <= 0x10FFFF && !IsHighSurrogate(character) &&
           !IsLowSurrogate(character);
    bytes.remove_prefix(good ? length : 1);
    return good;
}

bool IsUtf8(std::string_view bytes) {
    char32_t character = 0;
    for (bytes.remove_prefix(AsciiLength(bytes)); !bytes.empty(); bytes.remove_prefix(AsciiLength(bytes))) {
        if (!TakeUtf8(bytes, character)) {
            return false;
        }
    }
    return true;
}

void AppendUnits(std::u16string& text, char32_t character) {
    if (character < 0x10000) {
        text += static_cast<char16_t>(character);
        return;
    }
    text += static_cast<char16_t>(0xD7C0 + (character >> 10));
    text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
}

std::u16string DecodeUtf8(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t ascii = AsciiLength(bytes);
        text.append(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(ascii));
        bytes.remove_prefix(ascii);
        char32_t character = 0;
        if (!bytes.empty()) {
            AppendUnits(text, TakeUtf8(bytes, character) ? character : kReplacement);
        }
    }
    return text;
}

void AppendUtf8(std::string& bytes, char32_t character) {
    const auto tail = [&](int shift) { bytes += static_cast<char>(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) {
        bytes += static_cast<char>(character);
    } else if (character < 0x800) {
        bytes += static_cast<char>(0xC0 | character >> 6);
        tail(0);
    } else if (character < 0x10000) {
        bytes += static_cast<char>(0xE0 | character >> 12);
        tail(6);
        tail(0);
    } else {
        bytes += static_cast<char>(0xF0 | character >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

bool EncodeUtf8(std::u16string_view text, std::string& bytes) {
    if (HasLoneSurrogate(text)) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t character = text[i];
        if (IsHighSurrogate(character)) {
            character = 0x10000 + ((character - 0xD800) << 10) + (text[++i] - 0xDC00U);
        }
        AppendUtf8(bytes, character);
    }
    return true;
}

std::u16string DecodeUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned first = ByteAt(bytes, 2 * i);
        const unsigned second = ByteAt(bytes, 2 * i + 1);
        text[i] = static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return text;
}

void EncodeUtf16(std::u16string_view text, bool bigEndian, std::string& bytes) {
    bytes.reserve(bytes.size() + 2 * text.size());
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
}

bool IsUnmarkedUtf16(std::string_view bytes, bool bigEndian) {
    if (bytes.size() < 2 || bytes.size() % 2 != 0) {
        return false;
    }
    const std::u16string first = DecodeUtf16(bytes.substr(0, 2), bigEndian);
    if (first[0] == 0 || first[0] >= 0x80) {
        return false;
    }
    const std::u16string text = DecodeUtf16(bytes, bigEndian);
    return text.find(u'\0') == std::u16string::npos && !HasLoneSurrogate(text);
}

} // namespace

std::string_view MarkOf(IniEncoding encoding) {
    switch (encoding) {
    case IniEncoding::Utf8Mark:
        return "\xEF\xBB\xBF";
    case IniEncoding::Utf16:
        return "\xFF\xFE";
    case IniEncoding::Utf16BigEndian:
        return "\xFE\xFF";
    case IniEncoding::Ansi:
    case IniEncoding::Utf8:
        break;
    }
    return {};
}

IniEncoding DetectEncoding(std::string_view bytes) {
    for (const auto marked : {IniEncoding::Utf8Mark, IniEncoding::Utf16, IniEncoding::Utf16BigEndian}) {
        if (bytes.starts_with(MarkOf(marked))) {
            return marked;
        }
    }
    if (IsUnmarkedUtf16(bytes, false)) {
        return IniEncoding::Utf16;
    }
    if (IsUnmarkedUtf16(bytes, true)) {
        return IniEncoding::Utf16BigEndian;
    }
    return HasHighByte(bytes) && IsUtf8(bytes) ? IniEncoding::Utf8 : IniEncoding::Ansi;
}

bool HasHighByte(std::string_view bytes) {
    return AsciiLength(bytes) < bytes.size();
}

std::u16string DecodeText(std::string_view bytes, IniEncoding encoding, const TextPlatform& platform) {
    if (UnitSize(encoding) == 2) {
        return DecodeUtf16(bytes, encoding == IniEncoding::Utf16BigEndian);
    }
    if (encoding != IniEncoding::Ansi) {
        return DecodeUtf8(bytes);
    }
    if (!HasHighByte(bytes)) {
        return {bytes.begin(), bytes.end()};
    }
    return platform.DecodeAnsi(bytes);
}

bool EncodeText(std::u16string_view text, IniEncoding encoding, const TextPlatform& platform,
                std::string& bytes) {
    if (UnitSize(encoding) == 2) {
        EncodeUtf16(text, encoding == IniEncoding::Utf16BigEndian, bytes);
        return true;
    }
    return encoding == IniEncoding::Ansi ? platform.EncodeAnsi(text, bytes) : EncodeUtf8(text, bytes);
}

bool HasLoneSurrogate(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool paired = i + 1 < text.size() && IsLowSurrogate(text[i + 1]);
        if (IsLowSurrogate(text[i]) || (IsHighSurrogate(text[i]) && !paired)) {
            return true;
        }
        if (IsHighSurrogate(text[i])) {
            ++i;
        }
    }
    return false;
}

} // namespace mxovshare
