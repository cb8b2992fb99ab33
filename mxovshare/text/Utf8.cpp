#include "Utf8.h"

#include <cstdint>
#include <cstring>

namespace mxovshare {

namespace {

// Length that a lead byte announces; 0 for a byte that cannot lead.
std::size_t AnnouncedLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

bool IsInRange(char32_t code, std::size_t length) {
    switch (length) {
    case 3:
        return code >= 0x800 && (code < 0xD800 || code > 0xDFFF);
    case 4:
        return code >= 0x10000 && code <= 0x10FFFF;
    default:
        return true;
    }
}

} // namespace

Utf8Character DecodeUtf8(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = AnnouncedLength(lead);
    if (length == 0 || length > text.size()) {
        return {lead, 1, false};
    }
    char32_t code = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) {
            return {lead, 1, false};
        }
        code = code << 6 | (next & 0x3F);
    }
    if (!IsInRange(code, length)) {
        return {lead, 1, false};
    }
    return {code, length, true};
}

std::size_t AsciiLength(std::string_view text) {
    constexpr std::uint64_t kOthers = 0x8080808080808080;
    std::size_t length = 0;
    for (std::uint64_t word = 0; length + sizeof word <= text.size(); length += sizeof word) {
        std::memcpy(&word, text.data() + length, sizeof word);
        if ((word & kOthers) != 0) {
            break;
        }
    }
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) {
        ++length;
    }
    return length;
}

bool IsUtf8(std::string_view text) {
    for (text.remove_prefix(AsciiLength(text)); !text.empty(); text.remove_prefix(AsciiLength(text))) {
        const Utf8Character next = DecodeUtf8(text);
        if (!next.valid) {
            return false;
        }
        text.remove_prefix(next.length);
    }
    return true;
}

std::size_t Utf16Length(std::string_view text) {
    std::size_t units = 0;
    while (!text.empty()) {
        const Utf8Character next = DecodeUtf8(text);
        units += next.code > 0xFFFF ? 2 : 1;
        text.remove_prefix(next.length);
    }
    return units;
}

void AppendUtf8(std::string& text, char32_t character) {
    const auto add = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 | character >> 6);
        add(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        add(0xE0 | character >> 12);
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    } else {
        add(0xF0 | character >> 18);
        add(0x80 | (character >> 12 & 0x3F));
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    }
}

} // namespace mxovshare
