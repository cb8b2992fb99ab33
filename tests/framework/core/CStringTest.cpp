#include "core/CString.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

std::wstring Text(const CString& string) {
    return {string.GetString(), static_cast<size_t>(string.GetLength())};
}

TEST(CString, NullIsTheEmptyText) {
    LPCTSTR none = nullptr;
    CString text(none);
    EXPECT_TRUE(text.IsEmpty());
    text = L"x";
    text = none;
    EXPECT_TRUE(text.IsEmpty());
    text += none;
    EXPECT_EQ(text.GetLength(), 0);
}

TEST(CString, AssignsAndAppendsPartsOfItself) {
    CString text(L"abcdef");
    text = text.GetString() + 2;
    EXPECT_EQ(Text(text), L"cdef");
    text += text.GetString() + 2;
    EXPECT_EQ(Text(text), L"cdefef");
    text += text;
    EXPECT_EQ(Text(text), L"cdefefcdefef");
}

TEST(CString, PartsAreCutToTheText) {
    const CString text(L"folder");
    EXPECT_EQ(Text(text.Left(2)), L"fo");
    EXPECT_EQ(Text(text.Left(99)), L"folder");
    EXPECT_EQ(Text(text.Left(-1)), L"");
    EXPECT_EQ(Text(text.Mid(4)), L"er");
    EXPECT_EQ(Text(text.Mid(1, 3)), L"old");
    EXPECT_EQ(Text(text.Mid(7)), L"");
    EXPECT_EQ(Text(text.Mid(4, 99)), L"er");
    EXPECT_EQ(text.GetAt(0), L'f');
    EXPECT_THROW(static_cast<void>(text.GetAt(6)), std::out_of_range);
}

TEST(CString, FindsOrAnswersMinusOne) {
    const CString text(L"part.v2.nc");
    EXPECT_EQ(text.Find(L"v2"), 5);
    EXPECT_EQ(text.Find(L'.', 5), 7);
    EXPECT_EQ(text.Find(L"x"), -1);
    EXPECT_EQ(text.Find(L'p', 99), -1);
    EXPECT_EQ(text.Find(L'p', -1), -1);
    EXPECT_EQ(text.ReverseFind(L'.'), 7);
    EXPECT_EQ(text.ReverseFind(L'/'), -1);
}

TEST(CString, ComparesByCodeUnit) {
    const CString text(L"Abc");
    EXPECT_GT(CString(L"a").Compare(L"A"), 0);
    EXPECT_TRUE(text == L"Abc");
    EXPECT_TRUE(CString(L"a") < CString(L"b"));
}

TEST(CString, FormatTakesWideTextsAndItsOwnText) {
    CString text(L"before");
    text.Format(L"%s: %d KB, %02d", text.GetString(), 12, 3);
    EXPECT_EQ(Text(text), L"before: 12 KB, 03");
    text.Format(L"%s", std::wstring(5000, L'x').c_str());
    EXPECT_EQ(text.GetLength(), 5000);
    text.Format(L"");
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, BufferIsWrittenAndReleased) {
    CString text(L"keep");
    LPTSTR buffer = text.GetBuffer(10);
    EXPECT_EQ(std::wstring(buffer), L"keep");
    buffer[0] = L'd';
    text.ReleaseBuffer();
    EXPECT_EQ(Text(text), L"deep");
    text.GetBuffer(4);
    text.ReleaseBuffer(2);
    EXPECT_EQ(Text(text), L"de");
}

TEST(CString, LoadsStringResourcesOrIsEmpty) {
    CString text(L"before");
    EXPECT_TRUE(text.LoadString(2001));
    EXPECT_EQ(Text(text), L"Quantité \u2013 100 %");
    EXPECT_FALSE(text.LoadString(::GetModuleHandle(nullptr), 2999));
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, AllocatesTextsForAutomation) {
    const CString text(L"a\0b", 3);
    const BSTR copy = text.AllocSysString();
    EXPECT_EQ(::SysStringLen(copy), 3U);
    EXPECT_EQ(std::wstring(copy, 3), std::wstring(L"a\0b", 3));
    ::SysFreeString(copy);
}

TEST(CString, Concatenates) {
    const CString left(L"ab");
    EXPECT_EQ(Text(left + L"cd"), L"abcd");
    EXPECT_EQ(Text(L"cd" + left), L"cdab");
    EXPECT_EQ(Text(left + left), L"abab");
    CString grown;
    grown += L'x';
    EXPECT_EQ(Text(grown), L"x");
    EXPECT_EQ(Text(CString(L'-', 3)), L"---");
}

} // namespace
