// How the bytes of an INI file stand for text.
#pragma once

#include "text/TextPlatform.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace mxovshare {

enum class IniEncoding {
    Ansi,           ///< the system's code page; plain ASCII counts as this
    Utf8,           ///< without a mark: valid UTF-8 with at least one character outside ASCII
    Utf8Mark,       ///< UTF-8 behind EF BB BF
    Utf16,          ///< little endian behind FF FE
    Utf16BigEndian, ///< big endian behind FE FF
};

/// The encoding of a file with these bytes. UTF-16 is recognised without its mark too, when the first
/// character is ASCII and none is NUL or half a surrogate pair.
IniEncoding DetectEncoding(std::string_view bytes);

/// Whether any byte lies outside ASCII.
bool HasHighByte(std::string_view bytes);

/// The byte-order mark that files of this encoding begin with; empty for none.
std::string_view MarkOf(IniEncoding encoding);

/// Bytes per code unit.
constexpr std::size_t UnitSize(IniEncoding encoding) {
    return encoding == IniEncoding::Utf16 || encoding == IniEncoding::Utf16BigEndian ? 2 : 1;
}

/// How one unit is read from bytes.
struct ByteUnits {
    static constexpr std::uint32_t kSize = 1;
    static char16_t At(const char* place) { return static_cast<unsigned char>(*place); }
};

struct Utf16Units {
    static constexpr std::uint32_t kSize = 2;
    static char16_t At(const char* place) {
        return static_cast<char16_t>(ByteUnits::At(place) | ByteUnits::At(place + 1) << 8);
    }
};

struct Utf16BigEndianUnits {
    static constexpr std::uint32_t kSize = 2;
    static char16_t At(const char* place) {
        return static_cast<char16_t>(ByteUnits::At(place) << 8 | ByteUnits::At(place + 1));
    }
};

/// The unit at `place` in a file of this encoding; a byte outside ASCII is part of a character only.
inline char16_t UnitAt(const char* place, IniEncoding encoding) {
    if (encoding == IniEncoding::Utf16) {
        return Utf16Units::At(place);
    }
    return encoding == IniEncoding::Utf16BigEndian ? Utf16BigEndianUnits::At(place) : ByteUnits::At(place);
}

/// Text of bytes without a mark. Bytes that stand for nothing become U+FFFD.
std::u16string DecodeText(std::string_view bytes, IniEncoding encoding, const TextPlatform& platform);

/// Appends the bytes of `text`, without a mark. False, and nothing appended, when the encoding has no form
/// for it.
bool EncodeText(std::u16string_view text, IniEncoding encoding, const TextPlatform& platform,
                std::string& bytes);

/// Whether `text` holds half of a surrogate pair without the other.
bool HasLoneSurrogate(std::u16string_view text);

} // namespace mxovshare
