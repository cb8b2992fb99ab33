#include "mxovpackage.h"

#include "common/LongPath.h"
#include "FolderSnapshot.h"
#include "Listeners.h"
#include "pack/VerifiedEntryCache.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

using namespace mxovshare;

namespace {

std::string Noise(std::size_t size) {
    std::mt19937 generator(11);
    std::string bytes(size, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(generator());
    }
    return bytes;
}

void ExpectDone(const PackageResult& result) {
    EXPECT_TRUE(result.ok) << std::filesystem::path(result.message).string();
    EXPECT_FALSE(result.cancelled);
    EXPECT_EQ(result.message, L"");
}

std::vector<std::wstring> Names(const std::wstring& package) {
    std::vector<PackageEntry> entries;
    ExpectDone(ListPackage(package, entries));
    std::vector<std::wstring> names;
    names.reserve(entries.size());
    for (const PackageEntry& entry : entries) {
        names.push_back(entry.name);
    }
    return names;
}

// Packs `folder`, unpacks it again and expects to find the same.
void ExpectRoundTrip(const std::wstring& folder) {
    const TempFolder work;
    ExpectDone(CreatePackage(folder, work / L"p.mxov"));
    ExpectDone(VerifyPackage(work / L"p.mxov"));
    ExpectDone(UnpackPackage(work / L"p.mxov", work / L"out"));
    EXPECT_EQ(TakeSnapshot(work / L"out"), TakeSnapshot(folder));
    EXPECT_EQ(work.EntryCount(), 2);
    RemoveTree(work / L"out");
}

TEST(PackageRoundTrip, KeepsContentsNamesAndTimes) {
    const TempFolder folder;
    folder.Write(L"mxinfo.ini", "[FILEINFO]\r\n");
    folder.Write(L"GCode\\op10.nc", "G0 X0\r\n");
    folder.Write(L"empty.txt", "");
    folder.Write(L"noise.bin", Noise(3'000'000));
    folder.Write(L"zeros.bin", std::string(3'000'000, '\0'));
    folder.Write(L" blank first.txt", "x");
    folder.Write(L".hidden by dot", "x");
    folder.Write(L"\u0427\u0435\u0440\u0442\u0435\u0436\\\u56F3\u9762 \U0001F527.pdf", "drawing");
    folder.Write(L"e\u0301 and \u00E9.txt", "composed");
    folder.Write(L"a;b=c[d]'#&%.txt", "x");
    folder.SetTime(L"GCode\\op10.nc", {1999, 2, 0, 28, 23, 59, 58, 123});
    folder.SetTime(L"empty.txt", {2048, 12, 0, 31, 0, 0, 1, 0});
    ExpectRoundTrip(folder.Path());
}

TEST(PackageRoundTrip, KeepsEmptyFolders) {
    const TempFolder folder;
    std::filesystem::create_directories(folder / L"a\\b");
    std::filesystem::create_directories(folder / L"c");
    folder.Write(L"c\\file.txt", "x");
    ExpectRoundTrip(folder.Path());
    const TempFolder work;
    ExpectDone(CreatePackage(folder.Path(), work / L"p.mxov"));
    EXPECT_EQ(Names(work / L"p.mxov"), (std::vector<std::wstring>{L"a\\b", L"c\\file.txt"}));
}

TEST(PackageRoundTrip, TakesAnEmptyFolderAsWell) {
    const TempFolder folder;
    ExpectRoundTrip(folder.Path());
}

TEST(PackageRoundTrip, TakesHiddenFilesAndUnpacksReadOnlyOnesWritable) {
    const TempFolder folder;
    SetFileAttributesW(folder.Write(L"hidden.txt", "h").c_str(), FILE_ATTRIBUTE_HIDDEN);
    SetFileAttributesW(folder.Write(L"fixed.txt", "r").c_str(), FILE_ATTRIBUTE_READONLY);
    ExpectRoundTrip(folder.Path());
    const TempFolder work;
    ExpectDone(CreatePackage(folder.Path(), work / L"p.mxov"));
    ExpectDone(UnpackPackage(work / L"p.mxov", work / L"out"));
    EXPECT_EQ(GetFileAttributesW((work / L"out\\fixed.txt").c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
    SetFileAttributesW((folder / L"fixed.txt").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(PackageRoundTrip, TakesPathsOfAnyLength) {
    const TempFolder folder;
    std::wstring path = folder.Path();
    for (int i = 0; i < 4; ++i) {
        path += L"\\" + std::wstring(100, static_cast<wchar_t>(L'a' + i));
        ASSERT_TRUE(CreateDirectoryW(common::LongPath(path).c_str(), nullptr));
    }
    path += L"\\" + std::wstring(200, L'f') + L".txt";
    const HANDLE file =
        CreateFileW(common::LongPath(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
    ExpectRoundTrip(folder.Path());
    RemoveTree(folder.Path());
}

TEST(PackageRoundTrip, PutsTheInformationFileFirstAndTheRestInOrder) {
    const TempFolder folder;
    for (const wchar_t* name :
         {L"b.txt", L"A.txt", L"Private\\mxinfo.ini", L"c\\d.txt", L"MxInfo.ini", L"a-b.txt"}) {
        folder.Write(name, "x");
    }
    const TempFolder work;
    ExpectDone(CreatePackage(folder.Path(), work / L"p.mxov"));
    EXPECT_EQ(Names(work / L"p.mxov"),
              (std::vector<std::wstring>{L"MxInfo.ini", L"Private\\mxinfo.ini", L"a-b.txt", L"A.txt",
                                         L"b.txt", L"c\\d.txt"}));
}

TEST(PackageRoundTrip, MakesTheSamePackageFromTheSameFolder) {
    const TempFolder folder;
    folder.Write(L"mxinfo.ini", "[FILEINFO]");
    folder.Write(L"noise.bin", Noise(10'000));
    const TempFolder work;
    ExpectDone(CreatePackage(folder.Path(), work / L"1.mxov"));
    ExpectDone(CreatePackage(folder.PathWithSeparator(), work / L"2.mxov"));
    EXPECT_EQ(work.Read(L"1.mxov"), work.Read(L"2.mxov"));
}

TEST(PackageRoundTrip, LeavesThePackageItselfOut) {
    const TempFolder folder;
    folder.Write(L"a.txt", "x");
    ExpectDone(CreatePackage(folder.Path(), folder / L"p.mxov"));
    ExpectDone(CreatePackage(folder.Path(), folder / L"P.MXOV"));
    EXPECT_EQ(Names(folder / L"p.mxov"), std::vector<std::wstring>{L"a.txt"});
}

TEST(PackageRoundTrip, TellsItsProgressToTheEnd) {
    const TempFolder folder;
    folder.Write(L"a.bin", Noise(2'500'000));
    folder.Write(L"b.txt", "text");
    const TempFolder work;
    RecordingProgress packing, unpacking, verifying, copying, proving;
    ExpectDone(CreatePackage(folder.Path(), work / L"p.mxov", &packing));
    ExpectDone(UnpackPackage(work / L"p.mxov", work / L"out", &unpacking));
    ExpectDone(VerifyPackage(work / L"p.mxov", &verifying));
    ExpectDone(CreatePackage(folder.Path(), work / L"p.mxov", &copying));
    VerifiedEntryCache::Instance().Clear();
    ExpectDone(CreatePackage(folder.Path(), work / L"p.mxov", &proving));
    for (const RecordingProgress* progress : {&packing, &unpacking, &verifying}) {
        ASSERT_GE(progress->calls.size(), 4u);
        progress->ExpectToTheEnd();
    }
    copying.ExpectToTheEnd();
    proving.ExpectToTheEnd();
    EXPECT_EQ(unpacking.calls.back().total, 2'500'004u);
    EXPECT_EQ(unpacking.calls.back().name, L"b.txt");
}

} // namespace
