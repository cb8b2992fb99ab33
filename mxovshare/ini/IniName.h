// Names of sections and keys, which compare without regard to case.
#pragma once

#include "ini/IniEncoding.h"

#include <cstdint>
#include <string_view>

namespace mxovshare {

/// One unit in upper case.
inline char16_t UpperUnit(char16_t unit, const TextPlatform& platform) {
    if (unit >= 0x80) {
        return platform.Upper(unit);
    }
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

/// Hash of a name in upper case, taken unit by unit.
class IniHash {
public:
    void Add(char16_t upper) { m_value = (m_value ^ upper) * 16777619; }
    std::uint32_t Value() const { return m_value; }

private:
    std::uint32_t m_value = 2166136261;
};

/// A name made ready for look-ups: without blanks at either end. It refers to the text it was made from.
class IniName {
public:
    IniName(std::u16string_view name, const TextPlatform& platform);
    std::u16string_view Text() const { return m_text; }
    std::uint32_t Hash() const { return m_hash; }

private:
    std::u16string_view m_text;
    std::uint32_t m_hash;
};

/// Hash of a name.
std::uint32_t HashOfName(std::u16string_view name, const TextPlatform& platform);

/// Whether two names are equal.
bool IsSameName(std::u16string_view one, std::u16string_view other, const TextPlatform& platform);

/// Whether the units that begin at `one` are those of `other`.
template <typename Units>
bool SameUnits(const char* one, std::u16string_view other, const TextPlatform& platform) {
    for (const char16_t unit : other) {
        const char16_t first = Units::At(one);
        if (first != unit && UpperUnit(first, platform) != UpperUnit(unit, platform)) {
            return false;
        }
        one += Units::kSize;
    }
    return true;
}

} // namespace mxovshare
