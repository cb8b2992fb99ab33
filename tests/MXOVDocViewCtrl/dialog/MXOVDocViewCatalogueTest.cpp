#include "DialogFixture.h"

#include "package/RecordLists.h"

#include <commctrl.h>

using namespace docview;

namespace {

class MXOVDocViewCatalogueTest : public DialogFixture {
protected:
    // Loads the package when nothing is left to paint.
    void LoadPainted() {
        m_dialog.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        Load();
    }
    /// A package with one document of every kind; two of the additional ones.
    void WritePackage(const std::string& version) {
        m_package.WriteSized(L"NC\\a.nc", 1025);
        m_package.SetTime(L"NC\\a.nc", {2024, 1, 0, 1, 9, 5, 3, 0});
        m_package.WriteSized(L"Setup\\sheet.pdf", 1024);
        m_package.SetTime(L"Setup\\sheet.pdf", {2023, 12, 0, 31, 23, 59, 59, 0});
        m_package.WriteSized(L"ReferanceFiles\\copy.txt", 0);
        Describe("[FILEINFO]\nMaxtlreVersion=" + version +
                 "\nCADFilePath=C:\\gone\\part.sldprt\nCADFileLastModifiedTime=long ago\n"
                 "GCode=NC\\a.nc\nSetupSheets=Setup\\sheet.pdf\n"
                 "[REFERANCE_FILE_1]\nIsReferencedFile=NO\nTimestamp=t1\nFilePath=ReferanceFiles\\copy.txt\n"
                 "[REFERANCE_FILE_3]\nIsReferencedFile=YES\nTimestamp=t3\nFilePath=C:\\gone\\link.txt\n");
    }

    void ExpectPackageRows() const {
        EXPECT_EQ(Rows(IDC_PART_LIST), (std::vector<ShownRow>{{L"part.sldprt", L"0 KB", L"long ago", 1}}));
        EXPECT_EQ(Rows(IDC_GCODE_LIST),
                  (std::vector<ShownRow>{{L"a.nc", L"2 KB", L"2024-01-01 09:05:03", 2}}));
        EXPECT_EQ(Rows(IDC_SETUP_LIST),
                  (std::vector<ShownRow>{{L"sheet.pdf", L"1 KB", L"2023-12-31 23:59:59", 2}}));
        EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST), (std::vector<ShownRow>{{L"copy.txt", L"0 KB", L"t1", 2},
                                                                    {L"link.txt", L"0 KB", L"t3", 1}}));
    }

    void ExpectAdditionalShown(bool shown) const {
        for (const int id : {IDC_ADD, IDC_DELETE, IDC_ADDITIONAL_BOX, IDC_ADDITIONAL_LIST}) {
            EXPECT_EQ(IsShown(id), shown) << id;
        }
    }
};

TEST_F(MXOVDocViewCatalogueTest, ShowsEveryDocumentAsItsRecordSays) {
    Create();
    WritePackage("Maxtlre 2021");
    Load();
    ExpectPackageRows();
    EXPECT_EQ(partAssemblyRecords.size(), 1U);
    EXPECT_EQ(gCodeRecords.size(), 1U);
    EXPECT_EQ(setupSheetRecords.size(), 1U);
    ASSERT_EQ(additionalRecords.size(), 2U);
    EXPECT_EQ(additionalRecords[1].sectionName, L"REFERANCE_FILE_3");
    ExpectAdditionalShown(true);
}

TEST_F(MXOVDocViewCatalogueTest, ReloadStartsFromEmptyLists) {
    Create();
    WritePackage("Maxtlre 2021");
    Load();
    Load();
    ExpectPackageRows();
    Describe("");
    Load();
    for (const int list : kLists) {
        EXPECT_TRUE(Rows(list).empty());
    }
    EXPECT_TRUE(additionalRecords.empty());
}

TEST_F(MXOVDocViewCatalogueTest, HidesTheAdditionalSectionOfAnOldPackageButLoadsIt) {
    Create();
    WritePackage("Maxtlre 2020");
    Load();
    ExpectAdditionalShown(false);
    ExpectPackageRows();
    WritePackage("Maxtlre 2021");
    Load();
    ExpectAdditionalShown(true);
}

TEST_F(MXOVDocViewCatalogueTest, LeavesTheListOfAFoldedSectionHidden) {
    Create();
    WritePackage("Maxtlre 2021");
    Load();
    ClickHeader(IDC_ADDITIONAL_BOX);
    ASSERT_FALSE(IsShown(IDC_ADDITIONAL_LIST));
    Load();
    EXPECT_FALSE(IsShown(IDC_ADDITIONAL_LIST));
    EXPECT_TRUE(IsShown(IDC_ADDITIONAL_BOX));
    EXPECT_TRUE(IsShown(IDC_ADD));
    EXPECT_TRUE(IsShown(IDC_DELETE));
    EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST).size(), 2U);
    ClickHeader(IDC_ADDITIONAL_BOX);
    EXPECT_TRUE(IsShown(IDC_ADDITIONAL_LIST));
}

TEST_F(MXOVDocViewCatalogueTest, LeavesTheListsOfOtherFoldedSectionsHidden) {
    Create();
    WritePackage("Maxtlre 2021");
    ClickHeader(IDC_GCODE_BOX);
    Load();
    EXPECT_FALSE(IsShown(IDC_GCODE_LIST));
    EXPECT_EQ(Rows(IDC_GCODE_LIST).size(), 1U);
}

TEST_F(MXOVDocViewCatalogueTest, PaintsTheListsAgainAfterFilling) {
    Create();
    WritePackage("Maxtlre 2021");
    LoadPainted();
    for (const int list : kLists) {
        EXPECT_TRUE(GetUpdateRect(Item(list), nullptr, FALSE)) << list;
    }
}

TEST_F(MXOVDocViewCatalogueTest, DoesNotPaintListsThatStayEmpty) {
    Create();
    Describe("[FILEINFO]\r\nMaxtlreVersion=Maxtlre 2021\r\n[REFERANCE_FILE_1]\r\nFilePath=C:\\a.pdf\r\n");
    LoadPainted();
    for (const int list : kLists) {
        EXPECT_EQ(GetUpdateRect(Item(list), nullptr, FALSE) != FALSE, list == IDC_ADDITIONAL_LIST) << list;
    }
    Describe("[FILEINFO]\r\nMaxtlreVersion=Maxtlre 2021\r\n");
    LoadPainted();
    EXPECT_TRUE(GetUpdateRect(Item(IDC_ADDITIONAL_LIST), nullptr, FALSE));
}

TEST_F(MXOVDocViewCatalogueTest, ReloadClearsTheModifiedStateAndDisablesDelete) {
    Create();
    WritePackage("Maxtlre 2021");
    Load();
    Command(IDC_UPDATE);
    Select(IDC_ADDITIONAL_LIST, 0);
    Notify(IDC_ADDITIONAL_LIST, NM_CLICK);
    ASSERT_TRUE(IsEnabled(IDC_SAVE));
    ASSERT_TRUE(IsEnabled(IDC_DELETE));
    Load();
    EXPECT_FALSE(IsEnabled(IDC_SAVE));
    EXPECT_FALSE(IsEnabled(IDC_DELETE));
}

TEST_F(MXOVDocViewCatalogueTest, ClearAllEmptiesRecordsAndListsAndNothingElse) {
    Create();
    WritePackage("Maxtlre 2021");
    Load();
    Command(IDC_UPDATE);
    m_dialog.ClearAll();
    for (const int list : kLists) {
        EXPECT_TRUE(Rows(list).empty());
    }
    EXPECT_TRUE(partAssemblyRecords.empty());
    EXPECT_TRUE(gCodeRecords.empty());
    EXPECT_TRUE(setupSheetRecords.empty());
    EXPECT_TRUE(additionalRecords.empty());
    EXPECT_TRUE(IsEnabled(IDC_SAVE));
    ExpectAdditionalShown(true);
    m_dialog.LoadCatalogue(); // the paths are still there
    ExpectPackageRows();
}

TEST_F(MXOVDocViewCatalogueTest, LoadsWithoutAWindowAndShowsThePackageOnceThereIsOne) {
    WritePackage("Maxtlre 2020");
    Load();
    EXPECT_EQ(additionalRecords.size(), 2U);
    m_dialog.SetSize(10, 20);
    m_dialog.SaveOnClose();
    Create();
    ExpectPackageRows();
    ExpectAdditionalShown(false);
    EXPECT_FALSE(IsEnabled(IDC_SAVE));
}

TEST_F(MXOVDocViewCatalogueTest, WhatWasClearedStaysClearedInANewWindow) {
    Create();
    WritePackage("Maxtlre 2021");
    Load();
    m_dialog.ClearAll();
    m_dialog.DestroyWindow();
    Create();
    for (const int list : kLists) {
        EXPECT_TRUE(Rows(list).empty());
    }
    EXPECT_TRUE(additionalRecords.empty());
    m_dialog.LoadCatalogue();
    ExpectPackageRows();
}

TEST_F(MXOVDocViewCatalogueTest, ANewWindowReadsNothingAndLeavesTheRecords) {
    Create();
    WritePackage("Maxtlre 2021");
    Load();
    additionalRecords.resize(3);
    additionalRecords.front().fileName = L"of another control";
    Describe("");
    m_dialog.DestroyWindow();
    Create();
    ExpectPackageRows();
    ASSERT_EQ(additionalRecords.size(), 3U);
    EXPECT_EQ(additionalRecords.front().fileName, L"of another control");
}

TEST_F(MXOVDocViewCatalogueTest, ANewWindowShowsWhatWasAddedAndNotWhatWasDeleted) {
    Create();
    WritePackage("Maxtlre 2021");
    Load();
    std::vector<ShownRow> rows = Rows(IDC_ADDITIONAL_LIST);
    ASSERT_EQ(rows.size(), 2U);
    Select(IDC_ADDITIONAL_LIST, 0);
    Command(IDC_DELETE);
    rows.erase(rows.begin());
    m_dialog.DestroyWindow();
    Create();
    EXPECT_EQ(Rows(IDC_ADDITIONAL_LIST), rows);
}

TEST_F(MXOVDocViewCatalogueTest, KeepsTheModifiedStateInANewWindow) {
    Create();
    WritePackage("Maxtlre 2021");
    Load();
    Command(IDC_UPDATE);
    m_dialog.DestroyWindow();
    Create();
    ExpectPackageRows();
    EXPECT_TRUE(IsEnabled(IDC_SAVE));
}

} // namespace
