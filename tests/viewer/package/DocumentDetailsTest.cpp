#include "package/DocumentDetails.h"

#include "common/Paths.h"
#include "TempFolder.h"

#include <mxovshare.h>

#include <gtest/gtest.h>

using namespace viewer;

namespace {

// An unpacked package with a document in each list, and one more outside.
class DocumentDetailsTest : public testing::Test {
protected:
    DocumentDetailsTest() {
        const std::wstring part = m_folder.Write(L"part.sldprt", "part");
        const std::wstring link = m_folder.Write(L"link.txt", "linked");
        m_folder.Write(L"package\\GCode\\a.nc", "N10\r\n");
        m_folder.Write(L"package\\GCode\\b.nc", "N20 G0\r\n");
        m_folder.Write(L"package\\SetupSheets\\setup.xml", "<a/>");
        m_folder.Write(L"package\\ReferanceFiles\\copy.txt", "copied");
        m_folder.Write(L"outside.txt", "outside");
        m_folder.Write(L"package\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\n"
                                               "GCode=GCode\\a.nc\r\nSetupSheets=SetupSheets\\setup.xml\r\n"
                                               "[REFERANCE_FILE_1]\r\nIsReferencedFile=YES\r\n"
                                               "[REFERANCE_FILE_2]\r\nIsReferencedFile=NO\r\n"
                                               "FilePath=ReferanceFiles\\copy.txt\r\n"
                                               "[REFERANCE_FILE_3]\r\nIsReferencedFile=NO\r\n"
                                               "FilePath=..\\outside.txt\r\n");
        Set(L"FILEINFO", L"CADFilePath", part);
        Set(L"REFERANCE_FILE_1", L"FilePath", link);
    }

    void Set(const wchar_t* section, const wchar_t* key, const std::wstring& value) const {
        mxovshare::INIFile::AddRecordToINI(section, key, value, Package() + L"mxinfo.ini");
    }
    [[nodiscard]] std::wstring Package() const { return m_folder / L"package\\"; }
    [[nodiscard]] DocumentDetails Find(int list, int row) const {
        return FindDocument(Package(), {list, row}).value();
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(DocumentDetailsTest, EachListHasItsDocuments) {
    const DocumentDetails part = Find(0, 0);
    EXPECT_EQ(part.path, m_folder / L"part.sldprt");
    EXPECT_TRUE(part.isLink && part.exists && !part.isProgram);
    const DocumentDetails program = Find(1, 1);
    EXPECT_EQ(program.name, L"b.nc");
    EXPECT_EQ(program.size, 8U);
    EXPECT_TRUE(program.isProgram && program.exists && !program.isLink);
    EXPECT_TRUE(common::IsSamePath(program.path, Package() + L"GCode\\b.nc"));
    EXPECT_TRUE(common::IsSamePath(Find(2, 0).path, Package() + L"SetupSheets\\setup.xml"));
    EXPECT_EQ(Find(3, 0).path, m_folder / L"link.txt");
    EXPECT_EQ(Find(3, 1).path, Package() + L"ReferanceFiles\\copy.txt");
    EXPECT_EQ(Find(3, 1).section, L"REFERANCE_FILE_2");
}

TEST_F(DocumentDetailsTest, RowsThatAreNotThereHaveNoDocument) {
    for (const DocumentRow row : {DocumentRow{0, 1}, {1, 2}, {3, -1}, {3, 9}, {7, 0}}) {
        EXPECT_FALSE(FindDocument(Package(), row));
    }
}

TEST_F(DocumentDetailsTest, ACopyOutsideThePackageIsNotRead) {
    EXPECT_FALSE(Find(3, 2).exists);
    EXPECT_EQ(Find(3, 2).path, L"");
}

TEST_F(DocumentDetailsTest, AMissingLinkKeepsItsPath) {
    DeleteFileW((m_folder / L"link.txt").c_str());
    const DocumentDetails link = Find(3, 0);
    EXPECT_FALSE(link.exists);
    EXPECT_EQ(link.path, m_folder / L"link.txt");
}

TEST_F(DocumentDetailsTest, LinksArePointedElsewhere) {
    const std::wstring other = m_folder.Write(L"other.txt", "other");
    Relink(Package(), Find(3, 0), other);
    Relink(Package(), Find(0, 0), other);
    EXPECT_EQ(Find(3, 0).path, other);
    EXPECT_EQ(Find(0, 0).path, other);
    EXPECT_EQ(Find(3, 1).path, Package() + L"ReferanceFiles\\copy.txt");
}

TEST_F(DocumentDetailsTest, AChangedFileIsInAnotherState) {
    const DocumentDetails before = Find(1, 0);
    EXPECT_TRUE(IsSameState(before, Find(1, 0)));
    m_folder.Write(L"package\\GCode\\a.nc", "N10 G0\r\n");
    EXPECT_FALSE(IsSameState(before, Find(1, 0)));
    EXPECT_FALSE(IsSameState(before, Find(1, 1)));
}
