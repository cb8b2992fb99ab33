#include "package/ItemText.h"

#include "FakeCatalogueSource.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cwchar>
#include <iterator>
#include <limits>

#include <shlwapi.h>

using namespace docview;

namespace {

FILETIME TimeOf(const SYSTEMTIME& fields) {
    FILETIME time = {};
    EXPECT_TRUE(SystemTimeToFileTime(&fields, &time));
    return time;
}

TEST(FormatFileTime, ShowsTheCalendarFieldsAsTheyStand) {
    EXPECT_EQ(FormatFileTime(TimeOf({2024, 1, 0, 1, 9, 5, 3, 0})), L"2024-01-01 09:05:03");
}

TEST(FormatFileTime, IgnoresTheMilliseconds) {
    EXPECT_EQ(FormatFileTime(TimeOf({1999, 12, 0, 31, 23, 59, 59, 999})), L"1999-12-31 23:59:59");
}

TEST(FormatFileTime, ShowsTheEarliestTime) {
    EXPECT_EQ(FormatFileTime({}), L"1601-01-01 00:00:00");
}

TEST(FormatFileTime, ShowsAFiveDigitYear) {
    EXPECT_EQ(FormatFileTime(TimeOf({12345, 6, 0, 7, 8, 9, 10, 0})), L"12345-06-07 08:09:10");
}

TEST(FormatFileTime, GivesZeroFieldsForATimeThatIsNone) {
    EXPECT_EQ(FormatFileTime({0xffffffff, 0xffffffff}), L"0-00-00 00:00:00");
}

TEST(SizeText, RoundsUpToWholeKilobytes) {
    EXPECT_EQ(SizeText(0), L"0 KB");
    EXPECT_EQ(SizeText(1), L"1 KB");
    EXPECT_EQ(SizeText(1023), L"1 KB");
    EXPECT_EQ(SizeText(1024), L"1 KB");
    EXPECT_EQ(SizeText(1025), L"2 KB");
}

TEST(SizeText, TakesTheBytesInSinglePrecision) {
    EXPECT_EQ(SizeText(16777215), L"16384 KB");
    EXPECT_EQ(SizeText(16777217), L"16384 KB"); // becomes 16777216
    EXPECT_EQ(SizeText(16777219), L"16385 KB"); // becomes 16777220
    EXPECT_EQ(SizeText(std::numeric_limits<int>::max()), L"2097152 KB");
}

TEST(SizeText, RoundsANegativeSizeTowardsZero) {
    EXPECT_EQ(SizeText(-1025), L"-1 KB");
}

TEST(DocumentSizeText, ComesFromTheStatusOfAnExistingPath) {
    const FakeCatalogueSource source;
    EXPECT_EQ(DocumentSizeText(source, L"C:\\P\\", L"C:\\a", {.exists = true, .size = 1025}), L"2 KB");
    EXPECT_EQ(
        DocumentSizeText(source, L"C:\\P\\", L"C:\\a", {.exists = true, .isFolder = true, .size = 4096}),
        L"0 KB");
    EXPECT_EQ(DocumentSizeText(source, L"C:\\P\\", L"C:\\a", {.exists = true, .size = 1ULL << 40}),
              L"2097152 KB");
    EXPECT_TRUE(source.sizeQueries.empty());
}

TEST(DocumentSizeText, AsksBelowThePackageFolderForAnotherPath) {
    FakeCatalogueSource source;
    source.sizes[L"C:\\P\\\\ReferanceFiles\\a"] = 2049;
    EXPECT_EQ(DocumentSizeText(source, L"C:\\P\\", L"ReferanceFiles\\a", {}), L"3 KB");
}

TEST(FileNameOf, IsTheLastComponent) {
    EXPECT_EQ(FileNameOf(L"C:\\X\\part.sldprt"), L"part.sldprt");
    EXPECT_EQ(FileNameOf(L"part.sldprt"), L"part.sldprt");
    EXPECT_EQ(FileNameOf(L""), L"");
}

TEST(FileNameOf, IsThatOfTheSystem) {
    for (const wchar_t* path :
         {L"C:part.sldprt", L"C:\\X\\", L"\\\\server\\share\\a.pdf", L"a/b\\c", L"a\\/b", L"x:\\", L"\\",
          L"a:b:c", L"a\\\\b", L"..\\a.", L"C:\\X\\\u56f3.txt"}) {
        EXPECT_EQ(FileNameOf(path), PathFindFileNameW(path)) << path;
    }
}

TEST(FormatFileTime, HasTheCalendarOfTheSystem) {
    constexpr std::uint64_t kLast = 0x7FFFFFFFFFFFFFFF;
    constexpr std::uint64_t kStep = 83'808'000'000'123; // some 97 days
    for (std::uint64_t ticks = 0; ticks < kLast - kStep; ticks += kStep) {
        const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
        SYSTEMTIME fields = {};
        ASSERT_TRUE(FileTimeToSystemTime(&time, &fields));
        wchar_t text[32] = {};
        std::swprintf(text, std::size(text), L"%d-%02d-%02d %02d:%02d:%02d", fields.wYear, fields.wMonth,
                      fields.wDay, fields.wHour, fields.wMinute, fields.wSecond);
        ASSERT_EQ(FormatFileTime(time), text) << ticks;
    }
    EXPECT_EQ(FormatFileTime({0, 0x80000000}), L"0-00-00 00:00:00");
}

} // namespace
