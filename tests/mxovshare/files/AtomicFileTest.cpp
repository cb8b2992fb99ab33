#include "files/AtomicFile.h"

#include "../ini/ChildProcess.h"
#include "../ini/LongFolder.h"
#include "common/LongPath.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>
#include <thread>

namespace mxovshare {
namespace {

bool Put(AtomicFile& file, std::string_view bytes) {
    return file.Write(bytes.data(), bytes.size());
}

bool Replace(const std::wstring& path, std::string_view bytes) {
    AtomicFile file(path);
    return Put(file, bytes) && file.Commit();
}

HANDLE Open(const std::wstring& path, DWORD share) {
    return CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
}

TEST(AtomicFile, CreatesAndReplaces) {
    const TempFolder folder;
    EXPECT_TRUE(Replace(folder / L"a.txt", "one"));
    EXPECT_EQ(folder.Read(L"a.txt"), "one");
    EXPECT_TRUE(Replace(folder / L"a.txt", ""));
    EXPECT_EQ(folder.Read(L"a.txt"), "");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(AtomicFile, TargetIsUntouchedUntilCommit) {
    const TempFolder folder;
    const std::wstring target = folder.Write(L"a.txt", "old");
    {
        AtomicFile file(target);
        ASSERT_TRUE(Put(file, "new"));
        EXPECT_EQ(folder.Read(L"a.txt"), "old");
        EXPECT_EQ(folder.EntryCount(), 2);
    }
    EXPECT_EQ(folder.Read(L"a.txt"), "old");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(AtomicFile, CanBeWrittenInPlaceAndReadBack) {
    const TempFolder folder;
    AtomicFile file(folder / L"a.bin");
    ASSERT_TRUE(Put(file, "0123456789"));
    SetFilePointer(file.Handle(), 2, nullptr, FILE_BEGIN);
    ASSERT_TRUE(Put(file, "XY"));
    char bytes[10] = {};
    DWORD count = 0;
    SetFilePointer(file.Handle(), 0, nullptr, FILE_BEGIN);
    EXPECT_TRUE(ReadFile(file.Handle(), bytes, 10, &count, nullptr));
    EXPECT_EQ(std::string_view(bytes, count), "01XY456789");
    ASSERT_TRUE(file.Commit());
    EXPECT_EQ(folder.Read(L"a.bin"), "01XY456789");
}

TEST(AtomicFile, LargeContentArrivesWhole) {
    const TempFolder folder;
    std::string bytes(40 << 20, '\0');
    for (std::size_t i = 0; i < bytes.size(); i += 997) {
        bytes[i] = static_cast<char>(i >> 9);
    }
    ASSERT_TRUE(Replace(folder / L"a.bin", bytes));
    EXPECT_EQ(folder.Read(L"a.bin"), bytes);
}

TEST(AtomicFile, ReadOnlyTargetStaysAndTheFailureIsTold) {
    const TempFolder folder;
    const std::wstring target = folder.Write(L"a.txt", "old");
    SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_READONLY);
    AtomicFile file(target);
    EXPECT_EQ(file.Error(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    EXPECT_FALSE(Put(file, "new"));
    EXPECT_FALSE(file.Commit());
    SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(folder.Read(L"a.txt"), "old");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(AtomicFile, ATargetThatTurnsReadOnlyMeanwhileStays) {
    const TempFolder folder;
    const std::wstring target = folder.Write(L"a.txt", "old");
    AtomicFile file(target);
    ASSERT_TRUE(Put(file, "new"));
    SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(file.Commit());
    SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(folder.Read(L"a.txt"), "old");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(AtomicFile, HiddenTargetStaysHidden) {
    const TempFolder folder;
    const std::wstring target = folder.Write(L"a.txt", "old");
    SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    const DWORD before = GetFileAttributesW(target.c_str());
    ASSERT_TRUE(Replace(target, "new"));
    EXPECT_EQ(GetFileAttributesW(target.c_str()), before);
    EXPECT_EQ(folder.Read(L"a.txt"), "new");
}

TEST(AtomicFile, LockedTargetStays) {
    const TempFolder folder;
    const std::wstring target = folder.Write(L"a.txt", "old");
    const common::UniqueHandle lock = common::OwnFile(Open(target, FILE_SHARE_READ));
    AtomicFile file(target, 20);
    ASSERT_TRUE(Put(file, "new"));
    EXPECT_FALSE(file.Commit());
    EXPECT_NE(file.Error(), static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_EQ(folder.Read(L"a.txt"), "old");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(AtomicFile, WaitsForALockThatGoesAway) {
    const TempFolder folder;
    const std::wstring target = folder.Write(L"a.txt", "old");
    HANDLE lock = Open(target, FILE_SHARE_READ);
    AtomicFile file(target);
    ASSERT_TRUE(Put(file, "new"));
    const auto unlock = [](void* handle) -> DWORD {
        Sleep(500);
        CloseHandle(handle);
        return 0;
    };
    const common::UniqueHandle thread(CreateThread(nullptr, 0, unlock, lock, 0, nullptr));
    EXPECT_TRUE(file.Commit());
    WaitForSingleObject(thread.get(), INFINITE);
    EXPECT_EQ(folder.Read(L"a.txt"), "new");
}

TEST(AtomicFile, AFolderIsNoTarget) {
    const TempFolder folder;
    folder.Write(L"sub\\x", "");
    EXPECT_FALSE(Replace(folder / L"sub", "new"));
    EXPECT_FALSE(Replace(folder / L"missing\\a.txt", "new"));
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(AtomicFile, TwoWritersOfOneTargetDoNotMix) {
    const TempFolder folder;
    const std::wstring target = folder / L"a.txt";
    AtomicFile first(target);
    ASSERT_TRUE(Put(first, "first"));
    AtomicFile second(target, 20);
    EXPECT_FALSE(Put(second, "second"));
    EXPECT_FALSE(second.Commit());
    EXPECT_TRUE(first.Commit());
    EXPECT_EQ(folder.Read(L"a.txt"), "first");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(AtomicFile, ASecondOwnerWaitsForTheFirst) {
    const TempFolder folder;
    const std::wstring target = folder / L"a.txt";
    std::optional<AtomicFile> first(target);
    ASSERT_TRUE(Put(*first, "first"));
    std::thread owner([&first] {
        Sleep(100);
        EXPECT_TRUE(first->Commit());
        first.reset();
    });
    EXPECT_TRUE(Replace(target, "second"));
    owner.join();
    EXPECT_EQ(folder.Read(L"a.txt"), "second");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(AtomicFile, PathsMayBeLong) {
    LongFolder folder(400);
    const std::wstring path = folder / L"a.txt";
    EXPECT_TRUE(Replace(path, "one"));
    EXPECT_TRUE(Replace(path, "two"));
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    EXPECT_TRUE(GetFileAttributesExW(common::LongPath(path).c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(data.nFileSizeLow, 3U);
    EXPECT_EQ(GetFileAttributesW(AtomicFile::TemporaryPath(path).c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(AtomicFile, NamesMayBeAsLongAsAFileSystemTakes) {
    const TempFolder folder;
    const std::wstring name(255, L'n');
    EXPECT_TRUE(Replace(folder / name, "one"));
    EXPECT_EQ(folder.EntryCount(), 1);
    EXPECT_NE(AtomicFile::TemporaryPath(folder / name),
              AtomicFile::TemporaryPath(folder / (name.substr(1) + L'm')));
}

TEST(AtomicFileChild, DISABLED_DiesHalfWay) {
    const std::wstring target = FileForChild();
    if (target.empty()) {
        return;
    }
    AtomicFile file(target);
    if (Put(file, "half of it")) {
        TerminateProcess(GetCurrentProcess(), 5);
    }
}

TEST(AtomicFile, WhatACrashLeftBehindIsGoneAfterTheNextWrite) {
    const TempFolder folder;
    const std::wstring target = folder.Write(L"a.txt", "old");
    SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_HIDDEN);
    ASSERT_EQ(RunChild(L"AtomicFileChild.*", target), 5U);
    EXPECT_EQ(folder.Read(L"a.txt"), "old");
    ASSERT_EQ(folder.EntryCount(), 2);
    SetFileAttributesW(AtomicFile::TemporaryPath(target).c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(Replace(target, "new"));
    EXPECT_EQ(folder.Read(L"a.txt"), "new");
    EXPECT_EQ(folder.EntryCount(), 1);
}

} // namespace
} // namespace mxovshare
