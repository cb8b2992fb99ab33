#include "package/PackagePath.h"

#include <gtest/gtest.h>

using namespace docview;

TEST(PackagePath, KnowsWhatLeavesTheFolder) {
    for (const wchar_t* path : {L"..", L"..\\victim\\thesis.docx", L"../victim", L"a\\..\\..\\x", L"\\..\\x",
                                L".\\..\\x", L"a/../b/../../x", L".. \\x", L"..\\a\\b"}) {
        EXPECT_TRUE(LeavesPackageFolder(path)) << path;
    }
    for (const wchar_t* path : {L"", L"ReferanceFiles\\a.txt", L"a\\..\\b", L"..a\\b", L"a..\\b", L".\\a",
                                L"C:\\jobs\\..\\a.txt", L"\\\\server\\share", L"a\\b\\..\\..\\c"}) {
        EXPECT_FALSE(LeavesPackageFolder(path)) << path;
    }
}

TEST(PackagePath, KnowsOtherComputersAndDevices) {
    for (const wchar_t* path : {L"\\\\server\\share\\a.txt", L"//server/share", L"\\/server\\share",
                                L"\\\\?\\C:\\a", L"\\\\.\\nul"}) {
        EXPECT_TRUE(IsNetworkPath(path)) << path;
    }
    for (const wchar_t* path : {L"", L"\\", L"\\a", L"C:\\\\a", L"a\\\\b"}) {
        EXPECT_FALSE(IsNetworkPath(path)) << path;
    }
}
