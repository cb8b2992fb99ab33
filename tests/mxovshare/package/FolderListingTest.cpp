#include "mxovpackage.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace mxovshare;

namespace {

std::vector<PackageEntry> Listed(const std::wstring& folder) {
    std::vector<PackageEntry> files;
    EXPECT_TRUE(ListFolder(folder, files).ok);
    std::ranges::sort(files, {}, &PackageEntry::name);
    return files;
}

} // namespace

TEST(FolderListing, FilesComeWithNameSizeAndTime) {
    const TempFolder folder;
    folder.Write(L"a.txt", "12345");
    folder.Write(L"deep\\er\\b.txt", "");
    folder.SetTime(L"a.txt", {2024, 5, 3, 15, 6, 30, 0, 0});
    ASSERT_TRUE(CreateDirectoryW((folder / L"empty").c_str(), nullptr));
    const std::vector<PackageEntry> files = Listed(folder.Path());
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].name, L"a.txt");
    EXPECT_EQ(files[0].size, 5u);
    EXPECT_FALSE(files[0].isFolder);
    SYSTEMTIME time = {};
    ASSERT_TRUE(FileTimeToSystemTime(&files[0].modified, &time));
    EXPECT_EQ(time.wYear, 2024);
    EXPECT_EQ(time.wMinute, 30);
    EXPECT_EQ(files[1].name, L"deep\\er\\b.txt");
}

TEST(FolderListing, AFolderThatCannotBeListedIsNamed) {
    const TempFolder folder;
    std::vector<PackageEntry> files(1);
    const PackageResult result = ListFolder(folder / L"none", files);
    EXPECT_FALSE(result.ok);
    EXPECT_NE(result.message.find(L"none"), std::wstring::npos);
    EXPECT_TRUE(files.empty());
}

TEST(FolderListing, TheInformationFileIsReadInItsFolder) {
    const TempFolder folder;
    Information information;
    information.SetValue(L"old", L"key", L"value");
    ASSERT_FALSE(information.empty());
    EXPECT_TRUE(ReadInformation(folder.Path(), information).ok);
    EXPECT_TRUE(information.empty());
    folder.Write(L"Private\\mxinfo.ini", "[FILEINFO]\r\nThumbnail=a.bmp\r\n");
    EXPECT_TRUE(ReadInformation(folder.Path(), information).ok);
    EXPECT_EQ(information.SectionNames({}), std::vector<std::wstring>{L"FILEINFO"});
    folder.Write(L"mxinfo.ini", "[OTHER]\r\nKey=1\r\n");
    EXPECT_TRUE(ReadInformation(folder.Path(), information).ok);
    EXPECT_EQ(information.SectionNames({}), std::vector<std::wstring>{L"OTHER"});
}

TEST(FolderListing, AChecksumIsThatOfThePackageEntry) {
    const TempFolder folder;
    const std::wstring content = folder.WriteSized(L"source\\large.bin", 300000);
    const std::wstring empty = folder.Write(L"source\\empty.txt", "");
    ASSERT_TRUE(CreatePackage(folder / L"source", folder / L"a.mxov").ok);
    std::vector<PackageEntry> entries;
    ASSERT_TRUE(ListPackage(folder / L"a.mxov", entries).ok);
    ASSERT_EQ(entries.size(), 2u);
    std::ranges::sort(entries, {}, &PackageEntry::name);
    std::uint32_t checksum = 1;
    EXPECT_TRUE(ReadChecksum(empty, checksum).ok);
    EXPECT_EQ(checksum, entries[0].crc32);
    EXPECT_TRUE(ReadChecksum(content, checksum).ok);
    EXPECT_EQ(checksum, entries[1].crc32);
    EXPECT_FALSE(ReadChecksum(folder / L"none", checksum).ok);
}

TEST(FolderListing, TheStampOfAPackageChangesWithTheFile) {
    const TempFolder folder;
    folder.Write(L"source\\a.txt", "a");
    const std::wstring package = folder / L"a.mxov";
    EXPECT_EQ(StampOfPackageFile(package), L"");
    ASSERT_TRUE(CreatePackage(folder / L"source", package).ok);
    const std::wstring first = StampOfPackageFile(package);
    EXPECT_NE(first, L"");
    EXPECT_EQ(StampOfPackageFile(package), first);
    ASSERT_TRUE(UnpackPackage(package, folder / L"unpacked").ok);
    EXPECT_EQ(StampOfFolder(folder / L"unpacked"), first);
    folder.Write(L"source\\a.txt", "ab");
    ASSERT_TRUE(CreatePackage(folder / L"source", package).ok);
    EXPECT_NE(StampOfPackageFile(package), first);
}

TEST(FolderListing, OfficeLocksBelongToTheirDocuments) {
    EXPECT_TRUE(IsOfficeLockOf(L"~$plan.docx", L"plan.docx"));
    EXPECT_TRUE(IsOfficeLockOf(L"~$PLAN.docx", L"plan.DOCX"));
    EXPECT_TRUE(IsOfficeLockOf(L"~$ng name.docx", L"long name.docx"));
    EXPECT_TRUE(IsOfficeLockOf(L".~lock.sheet.odt#", L"sheet.odt"));
    EXPECT_FALSE(IsOfficeLockOf(L"~$plan.docx", L"other.docx"));
    EXPECT_FALSE(IsOfficeLockOf(L"~$", L"~$"));
    EXPECT_FALSE(IsOfficeLockOf(L"~$", L"ab"));
    EXPECT_FALSE(IsOfficeLockOf(L".~lock.sheet.odt", L"sheet.odt"));
    EXPECT_FALSE(IsOfficeLockOf(L".~lock.#", L"sheet.odt"));
    EXPECT_FALSE(IsOfficeLockOf(L"plan.docx", L"plan.docx"));
}
