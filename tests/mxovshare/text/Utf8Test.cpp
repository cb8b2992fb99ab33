#include "text/Utf8.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

TEST(Utf8, DecodesTheFirstAndLastCharacterOfEachLength) {
    for (const char32_t code : {U'\0', U'\x7F', U'\x80', U'\x7FF', U'\x800', U'\xD7FF', U'\xE000', U'\xFFFF',
                                U'\x10000', U'\x10FFFF'}) {
        std::string text;
        AppendUtf8(text, code);
        const Utf8Character character = DecodeUtf8(text + "x");
        EXPECT_TRUE(character.valid) << static_cast<unsigned>(code);
        EXPECT_EQ(character.code, code);
        EXPECT_EQ(character.length, text.size());
    }
}

TEST(Utf8, RefusesWhatIsLongerThanNeededAndWhatIsNoCharacter) {
    for (const char* text : {"\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
                             "\xF4\x90\x80\x80", "\x80", "\xFF"}) {
        const Utf8Character character = DecodeUtf8(text);
        EXPECT_FALSE(character.valid) << testing::PrintToString(text);
        EXPECT_EQ(character.length, 1u);
    }
}

} // namespace
