#include "earlier/TakingBack.h"

#include "earlier/VersionChanges.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace viewer;

namespace {

using Names = std::vector<std::wstring>;

KeptFile File(const wchar_t* name, std::uint32_t crc32) {
    return {name, 10, crc32, L"01DC000000000001"};
}

// A version with two programs and a plan, and what became of them since.
class TakingBackTest : public testing::Test {
protected:
    TakingBackTest() {
        m_version.files = {File(L"GCode\\a.nc", 1), File(L"GCode\\b.nc", 2), File(L"mxinfo.ini", 3),
                           File(L"ReferanceFiles\\plan.pdf", 4)};
        EXPECT_TRUE(m_then.Parse("[FILE_HISTORY_1]\r\nOperation=Created\r\nBy=A\r\n"
                                 "[REFERANCE_FILE_1]\r\nIsReferencedFile=NO\r\nDescription=The plan\r\n"
                                 "Timestamp=2024-01-01 00:00:00\r\nFilePath=ReferanceFiles\\plan.pdf\r\n"));
        Version open;
        open.files = {File(L"GCode\\a.nc", 9), File(L"gcode\\B.nc", 2), File(L"mxinfo.ini", 8),
                      File(L"new.txt", 5)};
        m_open = ContentOf(open);
        EXPECT_TRUE(
            m_open.sections.Parse("[FILE_HISTORY_1]\r\nOperation=Created\r\nBy=A\r\n[FILE_HISTORY_2]"
                                  "\r\nOperation=Updated\r\nBy=B\r\n"
                                  "[REFERANCE_FILE_1]\r\nIsReferencedFile=NO\r\nFilePath=new.txt\r\n"));
    }

    [[nodiscard]] static Names NamesOf(const mxovshare::PackageChanges& changes) {
        Names names;
        for (const mxovshare::AddedFile& added : changes.added) {
            EXPECT_EQ(added.path, L"C:\\restored\\" + added.name);
            names.push_back(added.name);
        }
        return names;
    }

    [[nodiscard]] static Names LinesOf(const mxovshare::PackageChanges& changes) {
        Names lines;
        for (const mxovshare::InformationChange& change : changes.information) {
            lines.push_back(change.section + L"/" + change.key + L"=" + change.value);
        }
        return lines;
    }

    Version m_version;
    care::Sections m_then;
    care::PackageContent m_open;
    RestoredVersion m_restored{m_version, L"C:\\restored", m_then};
};

} // namespace

TEST_F(TakingBackTest, AllComesBackAndTheHistoryStays) {
    const mxovshare::PackageChanges changes = TakeAllBack(m_restored, m_open);
    EXPECT_EQ(NamesOf(changes), (Names{L"GCode\\a.nc", L"mxinfo.ini", L"ReferanceFiles\\plan.pdf"}));
    EXPECT_EQ(changes.removed, Names{L"new.txt"});
    EXPECT_EQ(LinesOf(changes), (Names{L"FILE_HISTORY_2/Operation=Updated", L"FILE_HISTORY_2/By=B"}));
}

TEST_F(TakingBackTest, AHistoryThatIsShorterNowStaysShort) {
    ASSERT_TRUE(m_then.Parse("[FILE_HISTORY_1]\r\nOperation=Made\r\n[FILE_HISTORY_2]\r\nBy=B\r\n"
                             "[FILE_HISTORY_3]\r\nBy=C\r\n"));
    EXPECT_EQ(LinesOf(TakeAllBack(m_restored, m_open)),
              (Names{L"FILE_HISTORY_3/=", L"FILE_HISTORY_1/Operation=Created", L"FILE_HISTORY_1/By=A",
                     L"FILE_HISTORY_2/Operation=Updated", L"FILE_HISTORY_2/By=B"}));
}

TEST_F(TakingBackTest, AFileComesBackAlone) {
    const mxovshare::PackageChanges changes = TakeFileBack(m_restored, L"GCode\\a.nc", m_open);
    EXPECT_EQ(NamesOf(changes), Names{L"GCode\\a.nc"});
    EXPECT_TRUE(changes.information.empty() && changes.removed.empty());
}

TEST_F(TakingBackTest, ADocumentThatIsNoLongerListedIsListedAgain) {
    const mxovshare::PackageChanges changes = TakeFileBack(m_restored, L"ReferanceFiles\\plan.pdf", m_open);
    EXPECT_EQ(NamesOf(changes), Names{L"ReferanceFiles\\plan.pdf"});
    const Names lines = LinesOf(changes);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], L"REFERANCE_FILE_2/IsReferencedFile=NO");
    EXPECT_NE(std::ranges::find(lines, L"REFERANCE_FILE_2/Description=The plan"), lines.end());
    EXPECT_NE(std::ranges::find(lines, L"REFERANCE_FILE_2/FilePath=ReferanceFiles\\plan.pdf"), lines.end());
}

TEST_F(TakingBackTest, ADocumentThatIsListedStaysAsItIsListed) {
    ASSERT_TRUE(m_open.sections.Parse("[REFERANCE_FILE_7]\r\nIsReferencedFile=NO\r\n"
                                      "FilePath=referancefiles\\PLAN.pdf\r\n"));
    EXPECT_TRUE(TakeFileBack(m_restored, L"ReferanceFiles\\plan.pdf", m_open).information.empty());
}

TEST_F(TakingBackTest, TheInformationFileMayLieInItsFolder) {
    EXPECT_EQ(InformationNameOf(m_version), L"mxinfo.ini");
    m_version.files[2].name = L"private\\MXINFO.INI";
    EXPECT_EQ(InformationNameOf(m_version), L"private\\MXINFO.INI");
    m_version.files.clear();
    EXPECT_EQ(InformationNameOf(m_version), L"");
}

TEST_F(TakingBackTest, WhatChangedIsSaidInOneLine) {
    Version after = m_version;
    EXPECT_EQ(ChangesText(m_version, after), L"Properties or history");
    after.files[2].crc32 = 30;
    EXPECT_EQ(ChangesText(m_version, after), L"Properties or history");
    after.files[0].crc32 = 10;
    after.files[1].crc32 = 20;
    after.files[3] = File(L"plan2.pdf", 40);
    EXPECT_EQ(ChangesText(m_version, after), L"Changed: a.nc, b.nc; Added: plan2.pdf; Removed: plan.pdf");
}

TEST_F(TakingBackTest, AVersionIsTheSameWithTheSameFilesOnly) {
    EXPECT_FALSE(IsSame(m_version, m_open));
    EXPECT_TRUE(IsSame(m_version, ContentOf(m_version)));
    Version other = m_version;
    other.files[2].crc32 = 30;
    EXPECT_FALSE(IsSame(m_version, ContentOf(other)));
    other = m_version;
    other.files.push_back(File(L"new.txt", 5));
    EXPECT_FALSE(IsSame(m_version, ContentOf(other)));
}
