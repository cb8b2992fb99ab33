#include "session/FolderComparison.h"

#include "common/Handles.h"
#include "mxovpackage.h"
#include "package/Paths.h"
#include "prompts/UnsavedPrompts.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace viewer;

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

    // The changes as the question lists them.
    std::wstring Changes() const {
        std::vector<mxovshare::PackageEntry> entries;
        EXPECT_TRUE(mxovshare::ListPackage(Package(), entries).ok);
        return ListOfChanges(FindChanges(m_folder.Path(), entries));
    }

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

TEST_F(FolderComparisonTest, NothingChangedInWhatWasPackedOrUnpacked) {
    EXPECT_EQ(Changes(), L"");
    const std::wstring unpacked = m_work / L"unpacked";
    ASSERT_TRUE(mxovshare::UnpackPackage(Package(), unpacked).ok);
    std::vector<mxovshare::PackageEntry> entries;
    ASSERT_TRUE(mxovshare::ListPackage(Package(), entries).ok);
    EXPECT_EQ(ListOfChanges(FindChanges(unpacked, entries)), L"");
}

TEST_F(FolderComparisonTest, ChangesAreNamedWithWhatTheyAre) {
    m_folder.Write(L"Setup\\b.txt", "x");
    m_folder.Write(L"GCode\\\u00e4.nc", "G0 X10\n");
    ASSERT_TRUE(DeleteFileW((m_folder / L"mxinfo.ini").c_str()));
    EXPECT_EQ(Changes(), L"GCode\\\u00e4.nc\nmxinfo.ini (removed)\nSetup\\b.txt (new)\n");
}

TEST_F(FolderComparisonTest, OfAnotherTimeOnlyTheContentCounts) {
    m_folder.SetTime(L"GCode\\\u00e4.nc", {2024, 5, 3, 15, 6, 30, 0, 0});
    EXPECT_EQ(Changes(), L"");
    m_folder.Write(L"GCode\\\u00e4.nc", "G0 X1\n");
    m_folder.SetTime(L"GCode\\\u00e4.nc", {2024, 5, 3, 15, 6, 30, 0, 0});
    EXPECT_EQ(Changes(), L"GCode\\\u00e4.nc\n");
}

TEST_F(FolderComparisonTest, ANameOfAnotherCaseIsTheSameFile) {
    ASSERT_TRUE(
        MoveFileW((m_folder / L"GCode\\\u00e4.nc").c_str(), (m_folder / L"GCode\\\u00c4.NC").c_str()));
    EXPECT_EQ(Changes(), L"");
}

TEST_F(FolderComparisonTest, LocksOfOfficeProgramsAreNoDocuments) {
    m_folder.Write(L"SetupSheets\\~$sheet.docx", "lock");
    m_folder.Write(L"SetupSheets\\.~lock.sheet.odt#", "lock");
    EXPECT_EQ(Changes(), L"");
    ASSERT_TRUE(mxovshare::CreatePackage(m_folder.Path(), Package()).ok);
    ASSERT_TRUE(DeleteFileW((m_folder / L"SetupSheets\\~$sheet.docx").c_str()));
    EXPECT_EQ(Changes(), L"");
}

TEST_F(FolderComparisonTest, DocumentsWithALockAreOpen) {
    for (const wchar_t* name : {L"plan.docx", L"SetupSheets\\long name.docx", L"SetupSheets\\tools.xlsx",
                                L"SetupSheets\\sheet.odt", L"SetupSheets\\plan.docx"}) {
        m_folder.Write(name, "x");
    }
    EXPECT_TRUE(FindOpenDocuments(m_folder.Path()).empty());
    for (const wchar_t* name : {L"SetupSheets\\~$ng name.docx", L"SetupSheets\\~$tools.xlsx",
                                L"SetupSheets\\.~lock.sheet.odt#", L"~$plan.docx", L"~$gone.docx", L"~$"}) {
        m_folder.Write(name, "lock");
    }
    std::vector<std::wstring> open = FindOpenDocuments(m_folder.Path());
    std::ranges::sort(open);
    EXPECT_EQ(open, (std::vector<std::wstring>{L"SetupSheets\\long name.docx", L"SetupSheets\\sheet.odt",
                                               L"SetupSheets\\tools.xlsx", L"plan.docx"}));
}

TEST_F(FolderComparisonTest, PathsMayBeLong) {
    std::wstring deep = L"\\\\?\\" + m_folder.Path();
    for (int i = 0; i < 12; ++i) {
        deep += L"\\a folder with a long name " + std::to_wstring(i);
        ASSERT_TRUE(CreateDirectoryW(deep.c_str(), nullptr));
    }
    const auto append = [file = deep + L"\\a.txt"] {
        const common::UniqueHandle handle =
            common::OwnFile(CreateFileW(file.c_str(), FILE_APPEND_DATA, 0, nullptr, OPEN_ALWAYS, 0, nullptr));
        DWORD written = 0;
        return handle && WriteFile(handle.get(), "x", 1, &written, nullptr);
    };
    ASSERT_TRUE(append());
    EXPECT_TRUE(Changes().ends_with(L"\\a.txt (new)\n"));
    ASSERT_TRUE(mxovshare::CreatePackage(m_folder.Path(), Package()).ok);
    EXPECT_FALSE(Differs());
    ASSERT_TRUE(append());
    EXPECT_TRUE(Changes().ends_with(L"\\a.txt\n"));
    EXPECT_TRUE(RemoveFolder(m_folder / L"a folder with a long name 0"));
}
