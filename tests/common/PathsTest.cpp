#include "common/Paths.h"

#include "common/Language.h"
#include "common/LongPath.h"

#include <gtest/gtest.h>

using common::ExtendedPath;
using common::FullPath;
using common::IsSamePath;
using common::LanguageFolder;
using common::LongPath;
using common::ModuleFolder;
using common::ModulePath;

namespace {

const std::wstring kLong(300, L'x');

std::wstring CurrentFolder() {
    std::wstring folder(MAX_PATH, L'\0');
    folder.resize(GetCurrentDirectoryW(MAX_PATH, folder.data()));
    return folder.back() == L'\\' ? folder : folder + L"\\";
}

} // namespace

TEST(IsSamePath, IgnoresCaseAlone) {
    EXPECT_TRUE(IsSamePath(L"C:\\Jobs\\\u00c4.mxov", L"c:\\jobs\\\u00e4.MXOV"));
    EXPECT_TRUE(IsSamePath({}, L""));
    EXPECT_FALSE(IsSamePath(L"C:\\a.mxov", L"C:\\b.mxov"));
    EXPECT_FALSE(IsSamePath(L"C:\\a", L"C:\\a.mxov"));
}

TEST(ModulePath, NamesTheProgram) {
    const std::wstring path = ModulePath(nullptr);
    EXPECT_TRUE(path.ends_with(L"\\common_tests.exe")) << path.c_str();
    EXPECT_EQ(ModuleFolder(nullptr) + L"\\common_tests.exe", path);
    EXPECT_EQ(ModulePath(GetModuleHandleW(nullptr)), path);
    EXPECT_EQ(ModulePath(reinterpret_cast<HMODULE>(INT_PTR{-1})), L"");
}

TEST(FullPath, StartsFromTheCurrentFolder) {
    EXPECT_EQ(FullPath(L"a"), CurrentFolder() + L"a");
    EXPECT_EQ(FullPath(L"C:\\" + kLong + L"\\..\\b"), L"C:\\b");
    EXPECT_EQ(FullPath(L""), L"");
}

TEST(LongPath, ShortPathsBecomeFull) {
    EXPECT_EQ(LongPath(L"C:\\a\\.\\b/../c"), L"C:\\a\\c");
    EXPECT_EQ(LongPath(L""), L"");
    EXPECT_EQ(LongPath(L"a"), CurrentFolder() + L"a");
}

TEST(LongPath, LongPathsGetTheirPrefix) {
    EXPECT_EQ(LongPath(L"C:\\" + kLong + L"\\..\\" + kLong + L"/a"), L"\\\\?\\C:\\" + kLong + L"\\a");
    EXPECT_EQ(LongPath(L"\\\\server\\share\\" + kLong), L"\\\\?\\UNC\\server\\share\\" + kLong);
}

TEST(LongPath, APrefixStays) {
    EXPECT_EQ(LongPath(L"\\\\?\\C:\\a\\..\\" + kLong), L"\\\\?\\C:\\a\\..\\" + kLong);
    EXPECT_EQ(LongPath(L"\\\\.\\NUL"), L"\\\\.\\NUL");
}

TEST(ExtendedPath, PrefixesPathsOfAnyLength) {
    EXPECT_EQ(ExtendedPath(L"C:\\a"), L"\\\\?\\C:\\a");
    EXPECT_EQ(ExtendedPath(L"\\\\server\\share"), L"\\\\?\\UNC\\server\\share");
    EXPECT_EQ(ExtendedPath(L"\\\\?\\C:\\a"), L"\\\\?\\C:\\a");
}

TEST(LanguageFolder, PortugueseIsBrazilian) {
    EXPECT_EQ(LanguageFolder(L"Portuguese"), L"portuguese-brazilian");
    EXPECT_EQ(LanguageFolder(L"portuguese"), L"portuguese");
    EXPECT_EQ(LanguageFolder(L"German"), L"German");
}
