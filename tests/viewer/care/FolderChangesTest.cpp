#include "care/FolderChanges.h"

#include "mxovpackage.h"
#include "package/Paths.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

class FolderChangesTest : public testing::Test {
protected:
    FolderChangesTest() { m_package.Write(L"mxinfo.ini", "[A]\r\nKey=1\r\n[B]\r\nKey=2\r\n"); }

    TempFolder m_package;
    TempFolder m_outside;
    mxovshare::PackageChanges m_changes;
};

} // namespace

TEST_F(FolderChangesTest, FilesAndKeysAreChanged) {
    m_package.Write(L"old.txt", "old");
    ASSERT_TRUE(SetFileAttributesW((m_package / L"old.txt").c_str(), FILE_ATTRIBUTE_READONLY));
    m_changes.added = {{L"ReferanceFiles\\a.txt", m_outside.Write(L"b.txt", "new")}};
    m_changes.removed = {L"old.txt"};
    m_changes.information = {{L"A", L"Key", L"3"}, {L"B", {}, {}}, {L"C", L"Key", L"4"}};
    EXPECT_EQ(ApplyToFolder(m_package.PathWithSeparator(), m_changes), L"");
    EXPECT_EQ(m_package.Read(L"ReferanceFiles\\a.txt"), "new");
    EXPECT_FALSE(FileExists(m_package / L"old.txt"));
    mxovshare::Information information;
    ASSERT_TRUE(mxovshare::ReadInformation(m_package.Path(), information).ok);
    EXPECT_EQ(information.SectionNames({}), (std::vector<std::wstring>{L"A", L"C"}));
    EXPECT_EQ(information.Value(L"A", L"Key") + information.Value(L"C", L"Key"), L"34");
}

TEST_F(FolderChangesTest, WithoutAFileNothingIsChanged) {
    m_changes.added = {{L"ReferanceFiles\\a.txt", m_outside / L"none.txt"}};
    m_changes.removed = {L"mxinfo.ini"};
    m_changes.information = {{L"A", L"Key", L"3"}};
    const std::wstring failure = ApplyToFolder(m_package.PathWithSeparator(), m_changes);
    EXPECT_TRUE(failure.starts_with(L"none.txt cannot be copied into the package: ")) << failure.c_str();
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), "[A]\r\nKey=1\r\n[B]\r\nKey=2\r\n");
}
