// Names of sections and keys, which compare without regard to case.
#pragma once

#include "ini/IniEncoding.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace mxovshare {

/// One unit in upper case.
inline char16_t UpperUnit(char16_t unit, const IniPlatform& platform) {
    if (unit >= 0x80)
        return platform.Upper(unit);
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

/// `text` in upper case, unit by unit.
std::u16string UpperText(std::u16string_view text, const IniPlatform& platform);

/// Hash of a name in upper case, taken unit by unit.
class IniHash {
public:
    void Add(char16_t upper) { m_value = (m_value ^ upper) * 16777619; }
    std::uint32_t Value() const { return m_value; }

    static std::uint32_t Of(std::u16string_view upper);

private:
    std::uint32_t m_value = 2166136261;
};

/// A name made ready for look-ups: without blanks at either end and in upper case.
class IniName {
public:
    IniName(std::u16string_view name, const IniPlatform& platform);
    const std::u16string& Upper() const { return m_upper; }
    std::uint32_t Hash() const { return m_hash; }

private:
    std::u16string m_upper;
    std::uint32_t m_hash;
};

} // namespace mxovshare
