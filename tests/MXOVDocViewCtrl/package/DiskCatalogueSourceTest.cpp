#include "package/DiskCatalogueSource.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace docview;

namespace {

TEST(DiskCatalogueSource, TellsExistenceKindSizeAndTime) {
    const TempFolder folder;
    const std::wstring file = folder.WriteSized(L"file", 1234);
    const SYSTEMTIME time = {2020, 2, 0, 29, 1, 2, 3, 0};
    folder.SetTime(L"file", time);
    FILETIME expected = {};
    ASSERT_TRUE(SystemTimeToFileTime(&time, &expected));
    const DiskCatalogueSource source(L"");
    const FileStatus status = source.Status(file);
    EXPECT_TRUE(status.exists);
    EXPECT_FALSE(status.isFolder);
    EXPECT_EQ(status.size, 1234U);
    EXPECT_EQ(CompareFileTime(&status.lastWrite, &expected), 0);
    EXPECT_TRUE(source.Status(folder.Path()).isFolder);
    EXPECT_FALSE(source.Status(folder / L"missing").exists);
    EXPECT_FALSE(source.Status(L"").exists);
}

TEST(DiskCatalogueSource, AgreesWithTheLibraryOnSizes) {
    const TempFolder folder;
    const DiskCatalogueSource source(L"");
    for (const unsigned long long size : {0ULL, 1ULL, 1025ULL, 70000ULL}) {
        const std::wstring file = folder.WriteSized(L"file", size);
        EXPECT_EQ(static_cast<std::uint64_t>(source.FileSize(file)), source.Status(file).size);
    }
    EXPECT_EQ(source.FileSize(folder / L"missing"), 0);
}

TEST(DiskCatalogueSource, ListsFilesAndNoFolders) {
    const TempFolder folder;
    folder.Write(L"b", "");
    folder.Write(L"a.txt", "");
    folder.Write(L"inner\\c", "");
    const DiskCatalogueSource source(L"");
    std::vector<std::wstring> names = source.FileNames(folder.Path());
    std::ranges::sort(names);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"a.txt", L"b"}));
    EXPECT_TRUE(source.FileNames(folder / L"missing").empty());
    EXPECT_TRUE(source.FileNames(folder / L"b").empty());
}

TEST(DiskCatalogueSource, LeavesTheErrorModeAsItWas) {
    const DWORD before = GetThreadErrorMode();
    const DiskCatalogueSource source(L"");
    source.Status(L"A:\\file");
    source.FileNames(L"A:\\");
    EXPECT_EQ(GetThreadErrorMode(), before);
}

TEST(DiskCatalogueSource, ReadsTheInformationFile) {
    const TempFolder folder;
    const DiskCatalogueSource source(folder.Write(L"mxinfo.ini", "[A_2]\nKey=value\n[B]\n[A_1]\n"));
    EXPECT_EQ(source.Value(L"A_2", L"Key"), L"value");
    EXPECT_EQ(source.Value(L"A_2", L"Other"), L"");
    EXPECT_EQ(source.Value(L"C", L"Key"), L"");
    EXPECT_EQ(source.SectionNames(L"A"), (std::vector<std::wstring>{L"A_2", L"A_1"}));
}

} // namespace
