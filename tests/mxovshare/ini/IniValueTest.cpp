#include "ini/IniValue.h"

#include <gtest/gtest.h>

#include <functional>

namespace mxovshare {
namespace {

using namespace std::string_literals;

// What a reader sees that knows nothing of the escaped form.
std::u16string SeenPlainly(std::u16string_view stored) {
    stored = TrimBlanks(stored);
    const bool quoted =
        stored.size() > 1 && stored.front() == stored.back() && (stored[0] == u'"' || stored[0] == u'\'');
    return std::u16string(quoted ? stored.substr(1, stored.size() - 2) : stored);
}

void ExpectRoundTrip(const std::u16string& value) {
    const std::u16string stored = StoredForm(value);
    ASSERT_EQ(PlainValue(stored), value) << testing::PrintToString(value);
    ASSERT_EQ(TrimBlanks(stored), stored) << testing::PrintToString(value);
    ASSERT_FALSE(NeedsEscape(stored)) << testing::PrintToString(value);
    if (!NeedsEscape(value) && !value.starts_with(u"\\esc:")) {
        ASSERT_EQ(SeenPlainly(stored), value) << testing::PrintToString(value);
    }
}

void ForEachText(std::u16string_view alphabet, std::size_t length, const std::u16string& start,
                 const std::function<void(const std::u16string&)>& visit) {
    visit(start);
    for (std::size_t i = 0; length > 0 && i < alphabet.size(); ++i) {
        ForEachText(alphabet, length - 1, start + alphabet[i], visit);
    }
}

TEST(IniValue, OrdinaryValuesStandAsTheyAre) {
    for (const std::u16string& value :
         {u""s, u"v"s, u"two words"s, u"a=b;c # [d]"s, u"C:\\new\\report.txt"s, u"\\\\server\\share"s,
          u"say \"hi\""s, u"\"open"s, u"it's"s, u"a\tb"s, u"\xE9\x4E2D\xD83D\xDD27"s, u"\""s, u"'"s,
          u"\\esc"s, u"\xA0nbsp\xA0"s}) {
        EXPECT_EQ(StoredForm(value), value);
    }
}

TEST(IniValue, BlanksAndQuotesAtTheEndsGetOneMorePair) {
    EXPECT_EQ(StoredForm(u" v"), u"\" v\"");
    EXPECT_EQ(StoredForm(u"v\t"), u"\"v\t\"");
    EXPECT_EQ(StoredForm(u"\"v\""), u"\"\"v\"\"");
    EXPECT_EQ(StoredForm(u"'v'"), u"\"'v'\"");
    EXPECT_EQ(StoredForm(u"\"\""), u"\"\"\"\"");
}

TEST(IniValue, LineBreaksAndControlsAreEscaped) {
    EXPECT_EQ(StoredForm(u"one\r\ntwo"), u"\\esc:one\\r\\ntwo");
    EXPECT_EQ(StoredForm(u"C:\\x\ny "), u"\"\\esc:C:\\\\x\\ny \"");
    EXPECT_EQ(StoredForm(u"a\x1A\x85\x2028\xD800"), u"\\esc:a\\u001A\\u0085\\u2028\\uD800");
    EXPECT_EQ(StoredForm(u"\n\xD83D\xDD27"), u"\\esc:\\n\xD83D\xDD27");
    EXPECT_EQ(StoredForm(u"\\esc:plain"), u"\\esc:\\\\esc:plain");
}

TEST(IniValue, ReadersStripOnePairOfEqualQuotes) {
    EXPECT_EQ(PlainValue(u"\"v\""), u"v");
    EXPECT_EQ(PlainValue(u"'v'"), u"v");
    EXPECT_EQ(PlainValue(u"\"\"v\"\""), u"\"v\"");
    EXPECT_EQ(PlainValue(u"\"v'"), u"\"v'");
    EXPECT_EQ(PlainValue(u"\""), u"\"");
    EXPECT_EQ(PlainValue(u"\"\""), u"");
}

TEST(IniValue, TextThatOnlyLooksEscapedStaysAsItIs) {
    for (const std::u16string& text :
         {u"\\esc:"s, u"\\esc:v"s, u"\\esc:a\\b"s, u"\\esc:a\\n\\"s, u"\\esc:a\\u000A"s, u"\\esc:\\u00"s,
          u"\\esc:\\u001a"s, u"\\esc:\\n\\u0041"s, u"\\esc:\\\\n"s, u"\\esc:\\u0000\\n"s, u"\\ESC:\\n"s,
          u"\\esc:\\uD83D\\uDD27"s}) {
        EXPECT_EQ(PlainValue(text), text);
    }
}

TEST(IniValue, NulEndsAValue) {
    EXPECT_EQ(StoredForm(u"ab\0cd"s), u"ab");
    EXPECT_EQ(PlainValue(u"ab\0cd"s), u"ab");
}

TEST(IniValue, EveryShortTextOfAwkwardUnitsComesBack) {
    ForEachText(u"a \t\"'\\\r\n\x1A\x01;=[]un\x2028\xD83D\xDD27\x7F", 4, {}, ExpectRoundTrip);
}

TEST(IniValue, EveryShortTextBehindTheMarkerComesBack) {
    ForEachText(u"\\rnu0A\n \"\xD800x", 4, u"\\esc:", ExpectRoundTrip);
    ForEachText(u"\\\r\n\"u", 3, u"\\esc:\\esc:", ExpectRoundTrip);
}

TEST(IniValue, EverySingleUnitComesBackAloneAndInside) {
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
        const std::u16string value(1, static_cast<char16_t>(unit));
        ExpectRoundTrip(value);
        ExpectRoundTrip(u"x" + value + u"y");
    }
}

TEST(IniValue, LongValuesComeBack) {
    ExpectRoundTrip(std::u16string(100'000, u'x'));
    ExpectRoundTrip(std::u16string(100'000, u' '));
    ExpectRoundTrip(std::u16string(100'000, u'\n'));
}

} // namespace
} // namespace mxovshare
