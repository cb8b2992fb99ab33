#include "text/SystemText.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace mxovshare {
namespace {

TEST(SystemText, AnsiTextComesBackOrIsRefused) {
    const SystemText text;
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
        const std::u16string one(1, static_cast<char16_t>(unit));
        std::string bytes = "x";
        if (text.EncodeAnsi(one, bytes)) {
            EXPECT_EQ(text.DecodeAnsi(bytes), u"x" + one);
        } else {
            EXPECT_EQ(bytes, "x");
        }
    }
}

TEST(SystemText, LetterLikeCharactersAreNotReplacedByLetters) {
    const SystemText text;
    std::string bytes;
    EXPECT_FALSE(GetACP() == 1252 && text.EncodeAnsi(u"\x0100\x221E", bytes));
}

TEST(SystemText, UpperCaseIsThatOfManyScripts) {
    const SystemText text;
    EXPECT_EQ(text.Upper(u'\xE9'), u'\xC9');
    EXPECT_EQ(text.Upper(u'\x3B1'), u'\x391');
    EXPECT_EQ(text.Upper(u'\x43F'), u'\x41F');
    EXPECT_EQ(text.Upper(u'\x4E2D'), u'\x4E2D');
    EXPECT_EQ(text.Upper(u'\xD800'), u'\xD800');
}

TEST(SystemText, WideTextIsConvertedUnitByUnit) {
    EXPECT_EQ(ToUtf16(std::wstring(L"a\0\xD83D", 3)), std::u16string(u"a\0\xD83D", 3));
    EXPECT_EQ(ToWide(u"\x4E2D"), L"\x4E2D");
}

} // namespace
} // namespace mxovshare
