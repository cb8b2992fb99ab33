#include "ini/IniName.h"

#include "ini/IniValue.h"

#include <algorithm>

namespace mxovshare {
namespace {

char16_t UpperUnit(char16_t unit, const TextPlatform& platform) {
    if (unit >= 0x80) {
        return platform.Upper(unit);
    }
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

} // namespace

std::u16string FoldName(std::u16string_view name, const TextPlatform& platform) {
    return FoldPrefix(TrimBlanks(name), platform);
}

std::u16string FoldPrefix(std::u16string_view prefix, const TextPlatform& platform) {
    std::u16string folded(prefix);
    std::ranges::transform(folded, folded.begin(), [&](char16_t unit) { return UpperUnit(unit, platform); });
    return folded;
}

} // namespace mxovshare
