// Where there is no Windows: upper case of Latin-1, Greek and Cyrillic letters.
#include "text/UpperCase.h"

namespace mxovshare {

char16_t UpperCase(char16_t unit) noexcept {
    const bool latin = unit >= 0xE0 && unit <= 0xFE && unit != 0xF7;
    const bool greek = unit >= 0x3B1 && unit <= 0x3C9 && unit != 0x3C2;
    const bool cyrillic = unit >= 0x430 && unit <= 0x44F;
    return latin || greek || cyrillic ? static_cast<char16_t>(unit - 0x20) : unit;
}

} // namespace mxovshare
