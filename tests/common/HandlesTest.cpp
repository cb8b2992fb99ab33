#include "common/Handles.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <type_traits>

using common::OwnFile;
using common::OwnSearch;
using common::UniqueBitmap;
using common::UniqueHandle;
using common::UniqueSearch;
using common::UniqueWindow;

static_assert(!std::is_copy_constructible_v<UniqueHandle> &&
              !std::is_convertible_v<UniqueHandle, UniqueSearch>);

TEST(Handles, AnInvalidHandleIsNoHandle) {
    EXPECT_FALSE(OwnFile(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(OwnSearch(INVALID_HANDLE_VALUE));
}

TEST(Handles, CloseWhatTheyOwn) {
    const TempFolder folder;
    const std::wstring path = folder.Write(L"held.txt", "x");
    {
        const UniqueHandle held =
            OwnFile(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(held);
        EXPECT_FALSE(DeleteFileW(path.c_str()));
    }
    EXPECT_TRUE(DeleteFileW(path.c_str()));
}

TEST(Handles, ASearchFindsFiles) {
    const TempFolder folder;
    folder.Write(L"a.txt", "");
    WIN32_FIND_DATAW found = {};
    EXPECT_TRUE(OwnSearch(FindFirstFileW((folder / L"*.txt").c_str(), &found)));
    EXPECT_STREQ(found.cFileName, L"a.txt");
    EXPECT_FALSE(OwnSearch(FindFirstFileW((folder / L"*.doc").c_str(), &found)));
}

TEST(Handles, DeleteGdiObjectsAndWindows) {
    HBITMAP bitmap = nullptr;
    HWND window = nullptr;
    {
        const UniqueBitmap ownBitmap(CreateBitmap(2, 2, 1, 1, nullptr));
        const UniqueWindow ownWindow(
            CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 9, 9, HWND_MESSAGE, nullptr, nullptr, nullptr));
        bitmap = ownBitmap.get();
        window = ownWindow.get();
        EXPECT_EQ(GetObjectType(bitmap), static_cast<DWORD>(OBJ_BITMAP));
        EXPECT_TRUE(IsWindow(window));
    }
    EXPECT_EQ(GetObjectType(bitmap), 0u);
    EXPECT_FALSE(IsWindow(window));
}
