#include "package/Paths.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace viewer;

TEST(Paths, NamesAndStems) {
    EXPECT_EQ(FileName(L"C:\\jobs\\bracket.mxov"), L"bracket.mxov");
    EXPECT_EQ(FileName(L"C:/jobs/bracket.mxov"), L"bracket.mxov");
    EXPECT_EQ(FileName(L"bracket.mxov"), L"bracket.mxov");
    EXPECT_EQ(FileStem(L"C:\\jobs.old\\bracket.v2.mxov"), L"bracket.v2");
    EXPECT_EQ(FileStem(L"C:\\jobs.old\\bracket"), L"bracket");
    EXPECT_EQ(FileStem(L"C:\\.mxov"), L".mxov");
}

TEST(Paths, AFolderIsNoFile) {
    const TempFolder folder;
    EXPECT_FALSE(FileExists(folder.Path()));
    EXPECT_FALSE(FileExists(folder / L"a.txt"));
    EXPECT_TRUE(FileExists(folder.Write(L"a.txt", "")));
}

TEST(Paths, ListsFilesAndFolders) {
    const TempFolder folder;
    folder.Write(L"a.txt", "a");
    folder.Write(L"inner\\b.txt", "b");
    std::vector<FolderEntry> entries = EntriesOf(folder.Path());
    ASSERT_EQ(entries.size(), 2U);
    std::ranges::sort(entries, {}, &FolderEntry::name);
    EXPECT_EQ(entries[0].name, L"a.txt");
    EXPECT_FALSE(entries[0].isFolder);
    EXPECT_EQ(entries[1].name, L"inner");
    EXPECT_TRUE(entries[1].isFolder);
    EXPECT_FALSE(entries[0].isLink || entries[1].isLink);
    EXPECT_TRUE(EntriesOf(folder / L"missing").empty());
}

TEST(Paths, CreatesTheFoldersAboveToo) {
    const TempFolder folder;
    EXPECT_TRUE(MakeFolders(folder / L"a\\b/c\\"));
    EXPECT_TRUE(FolderExists(folder / L"a\\b\\c"));
    EXPECT_TRUE(MakeFolders(folder / L"a\\b"));
    folder.Write(L"file", "");
    EXPECT_FALSE(MakeFolders(folder / L"file\\d"));
    EXPECT_FALSE(MakeFolders(L""));
}

TEST(Paths, RemovesAFolderWithReadOnlyFilesAndDeepFolders) {
    const TempFolder folder;
    folder.Write(L"package\\a.txt", "a");
    const std::wstring readOnly = folder.Write(L"package\\inner\\b.txt", "b");
    SetFileAttributesW(readOnly.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    std::wstring deep = L"\\\\?\\" + folder.Path() + L"\\package";
    for (int i = 0; i < 12; ++i) {
        deep += L"\\a folder with a long name " + std::to_wstring(i);
        ASSERT_TRUE(CreateDirectoryW(deep.c_str(), nullptr));
    }
    EXPECT_TRUE(RemoveFolder(folder / L"package"));
    EXPECT_EQ(folder.EntryCount(), 0);
}

TEST(Paths, AMissingFolderCountsAsRemoved) {
    const TempFolder folder;
    EXPECT_TRUE(RemoveFolder(folder / L"package"));
}

TEST(Paths, TellsWhenSomethingIsLeft) {
    const TempFolder folder;
    const std::wstring held = folder.Write(L"package\\held.txt", "x");
    const HANDLE file = CreateFileW(held.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(RemoveFolder(folder / L"package"));
    CloseHandle(file);
    EXPECT_TRUE(RemoveFolder(folder / L"package"));
}
