#include "PackageError.h"

#include "text/Utf8.h"

#include <array>
#include <cstdio>

namespace mxovshare {

namespace {

constexpr std::size_t kLongestQuote = 300;

bool IsPrintable(char32_t character) {
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    const bool lineBreak = character == 0x2028 || character == 0x2029;
    return !control && !lineBreak;
}

} // namespace

std::string QuoteName(std::string_view name) {
    std::string text = "\"";
    while (!name.empty() && text.size() < kLongestQuote) {
        const Utf8Character next = DecodeUtf8(name);
        if (next.valid && IsPrintable(next.code)) {
            text += name.substr(0, next.length);
        } else {
            for (const char byte : name.substr(0, next.length)) {
                std::array<char, 5> hex = {};
                std::snprintf(hex.data(), hex.size(), "\\x%02X", static_cast<unsigned char>(byte));
                text += hex.data();
            }
        }
        name.remove_prefix(next.length);
    }
    return text + (name.empty() ? "\"" : "...\"");
}

PackageError EntryError(std::string_view name, std::string_view reason) {
    return PackageError("entry " + QuoteName(name) + ": " + std::string(reason));
}

} // namespace mxovshare
