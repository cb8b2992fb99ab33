#include "CaseFold.h"

#include "UpperCase.h"
#include "Utf8.h"

#include <algorithm>

namespace mxovshare {

namespace {

char FoldAscii(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - ('a' - 'A')) : character;
}

char32_t FoldCharacter(char32_t character) {
    return character < 0x10000 ? UpperCase(static_cast<char16_t>(character)) : character;
}

} // namespace

std::string FoldCase(std::string_view text) {
    std::string folded;
    folded.reserve(text.size());
    while (true) {
        const std::size_t ascii = AsciiLength(text);
        const auto begin = static_cast<std::ptrdiff_t>(folded.size());
        folded.append(text.substr(0, ascii));
        std::transform(folded.begin() + begin, folded.end(), folded.begin() + begin, FoldAscii);
        text.remove_prefix(ascii);
        if (text.empty()) {
            return folded;
        }
        const Utf8Character next = DecodeUtf8(text);
        AppendUtf8(folded, FoldCharacter(next.code));
        text.remove_prefix(next.length);
    }
}

} // namespace mxovshare
