#include "text/UpperCase.h"

#include <windows.h>

extern "C" NTSYSAPI WCHAR NTAPI RtlUpcaseUnicodeChar(WCHAR source);

namespace mxovshare {

char16_t UpperCase(char16_t unit) noexcept {
    return static_cast<char16_t>(RtlUpcaseUnicodeChar(static_cast<WCHAR>(unit)));
}

} // namespace mxovshare
