#include "package/Paths.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

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
