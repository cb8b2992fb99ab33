#include "ini/IniName.h"

#include "ini/IniValue.h"

#include <algorithm>

namespace mxovshare {

std::u16string UpperText(std::u16string_view text, const IniPlatform& platform) {
    std::u16string upper(text);
    std::ranges::transform(upper, upper.begin(), [&](char16_t unit) { return UpperUnit(unit, platform); });
    return upper;
}

std::uint32_t IniHash::Of(std::u16string_view upper) {
    IniHash hash;
    for (const char16_t unit : upper)
        hash.Add(unit);
    return hash.Value();
}

IniName::IniName(std::u16string_view name, const IniPlatform& platform)
    : m_upper(UpperText(TrimBlanks(name), platform)), m_hash(IniHash::Of(m_upper)) {}

} // namespace mxovshare
