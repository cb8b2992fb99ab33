#include "FolderComparison.h"

#include "mxovpackage.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

namespace {

class FolderComparisonTest : public testing::Test {
protected:
    void SetUp() override {
        m_folder.Write(L"mxinfo.ini", "[FILEINFO]\r\n");
        m_folder.Write(L"GCode\\\u00e4.nc", "G0 X0\n");
        ASSERT_TRUE(CreateDirectoryW((m_folder / L"Empty").c_str(), nullptr));
        ASSERT_TRUE(mxovshare::CreatePackage(m_folder.Path(), Package()).ok);
    }
    std::wstring Package() const { return m_work / L"a.mxov"; }
    bool Differs() const { return DiffersFromPackage(m_folder.Path(), Package()); }

    TempFolder m_folder;
    TempFolder m_work;
};

} // namespace

TEST_F(FolderComparisonTest, WhatWasPackedIsTheSame) {
    EXPECT_FALSE(Differs());
    EXPECT_TRUE(RemoveDirectoryW((m_folder / L"Empty").c_str())); // of no interest
    EXPECT_FALSE(Differs());
}

TEST_F(FolderComparisonTest, ContentOfTheSameSizeAndTimeDiffers) {
    const SYSTEMTIME time = {2024, 5, 3, 15, 6, 30, 0, 0};
    m_folder.SetTime(L"GCode\\\u00e4.nc", time);
    ASSERT_TRUE(mxovshare::CreatePackage(m_folder.Path(), Package()).ok);
    m_folder.Write(L"GCode\\\u00e4.nc", "G0 X1\n");
    m_folder.SetTime(L"GCode\\\u00e4.nc", time);
    EXPECT_TRUE(Differs());
    m_folder.Write(L"GCode\\\u00e4.nc", "G0 X0\n");
    EXPECT_FALSE(Differs());
}

TEST_F(FolderComparisonTest, AFileMoreOrLessOrRenamedDiffers) {
    m_folder.Write(L"note.txt", "x");
    EXPECT_TRUE(Differs());
    ASSERT_TRUE(DeleteFileW((m_folder / L"GCode\\\u00e4.nc").c_str()));
    EXPECT_TRUE(Differs());
    ASSERT_TRUE(DeleteFileW((m_folder / L"note.txt").c_str()));
    EXPECT_TRUE(Differs());
}

TEST_F(FolderComparisonTest, WithoutAReadablePackageOrFolderItDiffers) {
    EXPECT_TRUE(DiffersFromPackage(m_work / L"none", Package()));
    m_work.Write(L"a.mxov", "no package");
    EXPECT_TRUE(Differs());
    ASSERT_TRUE(DeleteFileW(Package().c_str()));
    EXPECT_TRUE(Differs());
}

TEST_F(FolderComparisonTest, TheLastWriteIsThatOfTheNewestFile) {
    m_folder.SetTime(L"mxinfo.ini", {2023, 1, 1, 2, 0, 0, 0, 0});
    m_folder.SetTime(L"GCode\\\u00e4.nc", {2024, 5, 3, 15, 6, 30, 0, 0});
    const FILETIME last = LastWriteBelow(m_folder.Path());
    SYSTEMTIME time = {};
    ASSERT_TRUE(FileTimeToSystemTime(&last, &time));
    EXPECT_EQ(time.wYear, 2024);
    EXPECT_EQ(time.wHour, 6);
    EXPECT_EQ(LastWriteBelow(m_work / L"none").dwHighDateTime, 0u);
}
