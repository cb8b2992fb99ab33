#include "CaseFold.h"

#include "Utf8.h"

#include <algorithm>
#include <cstdint>

namespace mxovshare {

namespace {

struct CaseRange {
    char16_t first;
    char16_t last;
    std::uint16_t step;
    std::int32_t distance;
};

constexpr CaseRange kCaseRanges[] = {
#include "CaseFoldTable.inc"
};

char FoldAscii(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - ('a' - 'A')) : character;
}

char32_t FoldCharacter(char32_t character) {
    const auto* range = std::lower_bound(std::begin(kCaseRanges), std::end(kCaseRanges), character,
                                         [](const CaseRange& r, char32_t c) { return r.last < c; });
    if (range == std::end(kCaseRanges) || character < range->first ||
        (character - range->first) % range->step != 0) {
        return character;
    }
    return static_cast<char32_t>(static_cast<std::int32_t>(character) + range->distance);
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
