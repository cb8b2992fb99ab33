#include "text/CaseFold.h"

#include <windows.h>

#include <gtest/gtest.h>

using mxovshare::FoldCase;

extern "C" NTSYSAPI WCHAR NTAPI RtlUpcaseUnicodeChar(WCHAR source);

namespace {

std::wstring Folded(wchar_t unit) {
    char utf8[4];
    const int size = WideCharToMultiByte(CP_UTF8, 0, &unit, 1, utf8, 4, nullptr, nullptr);
    const std::string folded = FoldCase({utf8, static_cast<std::size_t>(size)});
    wchar_t wide[4];
    const int length =
        MultiByteToWideChar(CP_UTF8, 0, folded.data(), static_cast<int>(folded.size()), wide, 4);
    return {wide, static_cast<std::size_t>(length)};
}

} // namespace

TEST(CaseFold, TakesUpperAndLowerCaseForOneAnother) {
    EXPECT_EQ(FoldCase("MxInfo.ini"), "MXINFO.INI");
    EXPECT_EQ(FoldCase("\xC3\xA4\xC3\xB6\xC3\xBC"), "\xC3\x84\xC3\x96\xC3\x9C");
    EXPECT_EQ(FoldCase("\xD1\x87\xD0\xB5\xD1\x80\xD1\x82"), "\xD0\xA7\xD0\x95\xD0\xA0\xD0\xA2");
    EXPECT_EQ(FoldCase("\xC3\xBF"), "\xC5\xB8");
}

TEST(CaseFold, KeepsWhatAFileSystemTellsApart) {
    EXPECT_EQ(FoldCase("\xC3\x9F"), "\xC3\x9F");
    EXPECT_EQ(FoldCase("\xC4\xB1"), "\xC4\xB1");
    EXPECT_EQ(FoldCase("\xE5\x9B\xB3"), "\xE5\x9B\xB3");
    EXPECT_EQ(FoldCase("\xF0\x90\x90\xA8"), "\xF0\x90\x90\xA8");
    EXPECT_EQ(FoldCase(""), "");
}

TEST(CaseFold, TakesEveryCharacterOfALongName) {
    for (std::size_t place = 0; place <= 20; ++place) {
        std::string name(20, 'x');
        std::string folded(20, 'X');
        name.insert(place, "\xC3\xA4");
        folded.insert(place, "\xC3\x84");
        EXPECT_EQ(FoldCase(name), folded);
    }
}

TEST(CaseFold, AgreesWithTheSystemInTheWholeBasicPlane) {
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        if (unit >= 0xD800 && unit <= 0xDFFF) {
            continue;
        }
        const wchar_t upper = RtlUpcaseUnicodeChar(static_cast<WCHAR>(unit));
        EXPECT_EQ(Folded(static_cast<wchar_t>(unit)), std::wstring(1, upper)) << std::hex << unit;
    }
}
