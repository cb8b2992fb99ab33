#include "common/LongPath.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace mxovshare {
namespace {

const std::wstring kLong(300, L'x');

TEST(LongPath, ShortPathsBecomeFull) {
    EXPECT_EQ(common::LongPath(L"C:\\a\\.\\b/../c"), L"C:\\a\\c");
    EXPECT_EQ(common::LongPath(L""), L"");
    std::wstring current(MAX_PATH, L'\0');
    current.resize(GetCurrentDirectoryW(MAX_PATH, current.data()));
    EXPECT_EQ(common::LongPath(L"a"), (current.back() == L'\\' ? current : current + L"\\") + L"a");
}

TEST(LongPath, LongPathsGetTheirPrefix) {
    EXPECT_EQ(common::LongPath(L"C:\\" + kLong + L"\\..\\" + kLong + L"/a"), L"\\\\?\\C:\\" + kLong + L"\\a");
    EXPECT_EQ(common::LongPath(L"\\\\server\\share\\" + kLong), L"\\\\?\\UNC\\server\\share\\" + kLong);
}

TEST(LongPath, APrefixStays) {
    EXPECT_EQ(common::LongPath(L"\\\\?\\C:\\a\\..\\" + kLong), L"\\\\?\\C:\\a\\..\\" + kLong);
    EXPECT_EQ(common::LongPath(L"\\\\.\\NUL"), L"\\\\.\\NUL");
}

} // namespace
} // namespace mxovshare
