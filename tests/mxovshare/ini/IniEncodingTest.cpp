#include "ini/IniEncoding.h"

#include "TestPlatform.h"

#include <gtest/gtest.h>

namespace mxovshare {
namespace {

using namespace std::string_literals;

TEST(IniEncoding, IsDetectedFromMarksAndBytes) {
    EXPECT_EQ(DetectEncoding(""), IniEncoding::Ansi);
    EXPECT_EQ(DetectEncoding("[a]\r\nk=v"), IniEncoding::Ansi);
    EXPECT_EQ(DetectEncoding("k=\xE9"), IniEncoding::Ansi);
    EXPECT_EQ(DetectEncoding("k=\xC3\xA9"), IniEncoding::Utf8);
    EXPECT_EQ(DetectEncoding("0123456789k=\xF0\x9F\x94\xA7"), IniEncoding::Utf8);
    EXPECT_EQ(DetectEncoding("\xEF\xBB\xBF"), IniEncoding::Utf8Mark);
    EXPECT_EQ(DetectEncoding("\xEF\xBB\xBFk=\xE9"), IniEncoding::Utf8Mark);
    EXPECT_EQ(DetectEncoding("\xFF\xFEk\0"s), IniEncoding::Utf16);
    EXPECT_EQ(DetectEncoding("\xFE\xFF\0k"s), IniEncoding::Utf16BigEndian);
}

TEST(IniEncoding, Utf16IsKnownWithoutItsMark) {
    EXPECT_EQ(DetectEncoding("[\0s\0]\0"s), IniEncoding::Utf16);
    EXPECT_EQ(DetectEncoding("\0[\0s\0]"s), IniEncoding::Utf16BigEndian);
    EXPECT_EQ(DetectEncoding("[\0\x2D\x4E]\0"s), IniEncoding::Utf16);
    EXPECT_EQ(DetectEncoding("\n\0"s), IniEncoding::Utf16);
    for (const std::string& bytes : {"[s]\nk=a\0b"s, "[\0s\0]"s, "[\0\0\0"s, "\0\0"s, "[\0\0\xD8"s, "\0"s,
                                     "[s]\0"s, std::string(1000, '\0')}) {
        EXPECT_EQ(DetectEncoding(bytes), IniEncoding::Ansi) << testing::PrintToString(bytes);
    }
}

TEST(IniEncoding, MalformedUtf8CountsAsAnsi) {
    for (const char* bytes :
         {"\xC3", "\xC3\xA9\xC3", "\x80", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xED\xA0\x80",
          "\xED\xBF\xBF", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xE2\x82",
          "\xE2\x28\xA1", "\xDF\xFF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF"}) {
        EXPECT_EQ(DetectEncoding(bytes), IniEncoding::Ansi) << testing::PrintToString(bytes);
    }
    for (const char* bytes : {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                              "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(DetectEncoding(bytes), IniEncoding::Utf8) << testing::PrintToString(bytes);
    }
}

TEST(IniEncoding, EveryCharacterComesBackInEveryUnicodeEncoding) {
    const SingleBytePage page;
    for (const auto encoding :
         {IniEncoding::Utf8, IniEncoding::Utf8Mark, IniEncoding::Utf16, IniEncoding::Utf16BigEndian}) {
        std::u16string text;
        for (char32_t character = 0; character <= 0x10FFFF; character += character < 0x10000 ? 1 : 251) {
            if (character >= 0xD800 && character <= 0xDFFF) {
                continue;
            }
            if (character >= 0x10000) {
                text += static_cast<char16_t>(0xD7C0 + (character >> 10));
            }
            text += static_cast<char16_t>(character < 0x10000 ? character : 0xDC00 + (character & 0x3FF));
        }
        std::string bytes;
        ASSERT_TRUE(EncodeText(text, encoding, page, bytes));
        EXPECT_EQ(DecodeText(bytes, encoding, page), text);
    }
}

TEST(IniEncoding, MalformedBytesDecodeToReplacements) {
    const SingleBytePage page;
    EXPECT_EQ(DecodeText("a\xC3z\x80", IniEncoding::Utf8, page), u"a\xFFFDz\xFFFD");
    EXPECT_EQ(DecodeText("a\0b"s, IniEncoding::Utf16, page), u"a");
}

TEST(IniEncoding, DecodesNothingBehindTheText) {
    const std::string_view bytes("a\0b\0c\0", 6);
    const std::u16string text = DecodeText(bytes.substr(0, 4), IniEncoding::Utf16, SingleBytePage());
    EXPECT_EQ(text, u"ab");
    EXPECT_EQ(text.c_str()[text.size()], u'\0');
}

TEST(IniEncoding, RefusesWhatItCannotHoldAndAppendsNothing) {
    const SingleBytePage page;
    std::string bytes = "x";
    EXPECT_FALSE(EncodeText(u"a\x4E00", IniEncoding::Ansi, page, bytes));
    EXPECT_FALSE(EncodeText(u"a\xD800", IniEncoding::Utf8, page, bytes));
    EXPECT_EQ(bytes, "x");
}

TEST(IniEncoding, LoneSurrogatesAreFound) {
    EXPECT_FALSE(HasLoneSurrogate(u""));
    EXPECT_FALSE(HasLoneSurrogate(u"a\xD83D\xDD27z"));
    for (const std::u16string& text :
         {u"\xD800"s, u"\xDC00"s, u"\xDC00\xD800"s, u"\xD800\xD800\xDC00"s, u"a\xD800z"s}) {
        EXPECT_TRUE(HasLoneSurrogate(text));
    }
}

} // namespace
} // namespace mxovshare
