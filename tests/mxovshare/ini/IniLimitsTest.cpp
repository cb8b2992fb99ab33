// How many sections and lines a document may have.
#include "ini/IniDocument.h"

#include "TestPlatform.h"

#include <gtest/gtest.h>

namespace mxovshare {
namespace {

const SingleBytePage kPage;
constexpr IniLimits kThree = {.sections = 3, .lines = 6};

bool IsRead(const std::string& bytes) {
    return IniDocument(kPage, bytes, kThree).IsComplete();
}

TEST(IniLimits, CountSectionsWhateverTheirNames) {
    EXPECT_TRUE(IsRead("[a]\n[b]\n[c]\n"));
    EXPECT_FALSE(IsRead("[a]\n[b]\n[c]\n[d]\n"));
    EXPECT_FALSE(IsRead("[a]\n[A]\n[]\n[a]\n"));
}

TEST(IniLimits, CountLinesThatHoldTextAndAreNoComments) {
    EXPECT_TRUE(IsRead("[a]\nb=1\nb=2\nc\n=\n; x\n\n  \nd"));
    EXPECT_FALSE(IsRead("[a]\nb=1\nb=2\nc\n=\n; x\n\n  \nd\ne"));
    EXPECT_FALSE(IsRead(std::string("\xFF\xFE", 2) +
                        std::string("a\0\r\0a\0\r\0a\0\r\0a\0\r\0a\0\r\0a\0\r\0a\0", 26)));
}

TEST(IniLimits, RefuseALineThatIsTooLong) {
    constexpr IniLimits kShort = {.length = 6};
    EXPECT_TRUE(IniDocument(kPage, "[a]\nk=123\n; a long comment\n", kShort).IsComplete());
    EXPECT_FALSE(IniDocument(kPage, "[a]\nk=1234\n", kShort).IsComplete());
}

TEST(IniLimits, AreNotExceededByChanges) {
    IniDocument document(kPage, "[a]\nk=1\n[b]\n", kThree);
    EXPECT_TRUE(document.SetValue(u"c", u"k", u"1"));
    EXPECT_FALSE(document.SetValue(u"d", u"k", u"1"));
    EXPECT_TRUE(document.SetValue(u"a", u"j", u"1"));
    EXPECT_FALSE(document.SetValue(u"a", u"i", u"1"));
    EXPECT_FALSE(document.WouldChange(u"a", u"i", u"1"));
    EXPECT_TRUE(document.SetValue(u"a", u"j", u"2"));
    EXPECT_EQ(document.Bytes(), "[a]\nk=1\nj=2\n[b]\n[c]\nk=1\n");
    EXPECT_TRUE(IsRead(document.Bytes()));
}

TEST(IniLimits, LeaveRoomAgainWhenASectionIsRemoved) {
    IniDocument document(kPage, "[a]\n[b]\n[c]\n", kThree);
    EXPECT_FALSE(document.SetValue(u"d", u"k", u"1"));
    EXPECT_TRUE(document.RemoveSection(u"b"));
    EXPECT_TRUE(document.SetValue(u"d", u"k", u"1"));
    EXPECT_FALSE(document.SetValue(u"e", u"k", u"1"));
}

} // namespace
} // namespace mxovshare
