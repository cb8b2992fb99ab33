#include "text/CaseFold.h"

#include <windows.h>

#include <gtest/gtest.h>

extern "C" NTSYSAPI WCHAR NTAPI RtlUpcaseUnicodeChar(WCHAR source);

namespace {

std::wstring Folded(wchar_t unit) {
    char utf8[4];
    const int size = WideCharToMultiByte(CP_UTF8, 0, &unit, 1, utf8, 4, nullptr, nullptr);
    const std::string folded = mxovshare::FoldCase({utf8, static_cast<std::size_t>(size)});
    wchar_t wide[4];
    const int length =
        MultiByteToWideChar(CP_UTF8, 0, folded.data(), static_cast<int>(folded.size()), wide, 4);
    return {wide, static_cast<std::size_t>(length)};
}

} // namespace

TEST(CaseFold, AgreesWithTheSystemInTheWholeBasicPlane) {
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        if (unit >= 0xD800 && unit <= 0xDFFF) {
            continue;
        }
        const wchar_t upper = RtlUpcaseUnicodeChar(static_cast<WCHAR>(unit));
        EXPECT_EQ(Folded(static_cast<wchar_t>(unit)), std::wstring(1, upper)) << std::hex << unit;
    }
}
