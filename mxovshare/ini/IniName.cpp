#include "ini/IniName.h"

#include "ini/IniValue.h"

#include <algorithm>

namespace mxovshare {

IniName::IniName(std::u16string_view name, const TextPlatform& platform)
    : m_text(TrimBlanks(name)), m_hash(HashOfName(m_text, platform)) {}

std::uint32_t HashOfName(std::u16string_view name, const TextPlatform& platform) {
    IniHash hash;
    for (const char16_t unit : name) {
        hash.Add(UpperUnit(unit, platform));
    }
    return hash.Value();
}

bool IsSameName(std::u16string_view one, std::u16string_view other, const TextPlatform& platform) {
    return std::ranges::equal(one, other, [&](char16_t first, char16_t second) {
        return UpperUnit(first, platform) == UpperUnit(second, platform);
    });
}

} // namespace mxovshare
