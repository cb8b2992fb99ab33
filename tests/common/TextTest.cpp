#include "common/SystemError.h"
#include "common/Utf8.h"

#include <gtest/gtest.h>

using common::FromUtf8;
using common::SystemErrorText;
using common::ToUtf8;
using common::ToUtf8Strict;

TEST(Utf8, CodesTextOfEveryLength) {
    const std::wstring text = L"a\u00e4\u20ac\xd83d\xde00";
    const std::string bytes = "a\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80";
    EXPECT_EQ(ToUtf8(text), bytes);
    EXPECT_EQ(ToUtf8Strict(text), bytes);
    EXPECT_EQ(FromUtf8(bytes), text);
    EXPECT_EQ(ToUtf8({}), "");
    EXPECT_EQ(FromUtf8({}), L"");
}

TEST(Utf8, HalfAPairIsReplacedOrRefused) {
    EXPECT_EQ(ToUtf8(L"a\xd83d"), "a\xef\xbf\xbd");
    EXPECT_EQ(ToUtf8Strict(L"a\xd83d"), "");
    EXPECT_EQ(FromUtf8("a\xff"), L"a\ufffd");
}

TEST(SystemError, IsOneLineWithoutAFullStop) {
    const std::wstring text = SystemErrorText(ERROR_ACCESS_DENIED);
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(text.find_first_of(L"\r\n"), std::wstring::npos);
    EXPECT_NE(text.back(), L'.');
    EXPECT_NE(text.back(), L' ');
}

TEST(SystemError, AnUnknownCodeIsNamed) {
    EXPECT_EQ(SystemErrorText(0x2FFFFFFF), L"error " + std::to_wstring(0x2FFFFFFF));
}
