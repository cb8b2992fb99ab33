#include "care/PackageCheck.h"

#include "care/CheckSource.h"
#include "care/FindingsWindow.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

// A package in a folder with a missing link and a file that nothing shows.
class PackageCheckTest : public testing::Test {
protected:
    PackageCheckTest() {
        m_folder.Write(L"mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n[REFERANCE_FILE_1]\r\n"
                                      "IsReferencedFile=YES\r\nFilePath=C:\\gone\\plan.pdf\r\n"
                                      "[REFERANCE_FILE_2]\r\nIsReferencedFile=NO\r\nFilePath=..\\x.pdf\r\n");
        m_folder.Write(L"SetupSheets\\setup.docx", "sheet");
        m_folder.Write(L"SetupSheets\\~$setup.docx", "lock");
    }

    TempFolder m_folder;
    WorkProgress m_progress;
};

} // namespace

TEST_F(PackageCheckTest, FindsWhatIsWrongWithTheFolderErrorsFirst) {
    const CheckReport report = CheckUnpacked(m_folder.PathWithSeparator(), m_progress);
    EXPECT_TRUE(report.ok);
    EXPECT_FALSE(report.cancelled);
    ASSERT_EQ(report.findings.size(), 3u);
    EXPECT_STREQ(report.findings[0].code, care::finding::kLeavesFolder);
    EXPECT_EQ(report.findings[0].section, L"REFERANCE_FILE_2");
    EXPECT_STREQ(report.findings[1].code, care::finding::kLinkMissing);
    EXPECT_EQ(report.findings[1].document, L"C:\\gone\\plan.pdf");
    EXPECT_STREQ(report.findings[2].code, care::finding::kNotShown);
    EXPECT_EQ(report.findings[2].document, L"SetupSheets\\setup.docx");
    EXPECT_EQ(FindingsSummary(L"a.mxov", report.findings), L"a.mxov: 1 error, 2 warnings");
}

TEST_F(PackageCheckTest, CancelledItReportsNothing) {
    m_progress.Cancel();
    const CheckReport report = CheckUnpacked(m_folder.PathWithSeparator(), m_progress);
    EXPECT_TRUE(report.cancelled);
    EXPECT_FALSE(report.ok);
    EXPECT_TRUE(report.findings.empty());
}

TEST_F(PackageCheckTest, AFolderThatIsGoneIsNamed) {
    const CheckReport report = CheckUnpacked(m_folder / L"none\\", m_progress);
    EXPECT_FALSE(report.ok || report.cancelled);
    EXPECT_NE(report.message.find(L"none"), std::wstring::npos);
}

TEST_F(PackageCheckTest, NothingFoundIsSaid) {
    EXPECT_EQ(FindingsSummary(L"a.mxov", {}), L"No problems were found in a.mxov.");
}

TEST_F(PackageCheckTest, EachPathIsAskedForOnce) {
    const std::wstring file = m_folder.Write(L"a.txt", "12345");
    const CheckSource source(m_folder / L"mxinfo.ini", m_progress);
    EXPECT_TRUE(source.Status(file).exists);
    ASSERT_TRUE(DeleteFileW(file.c_str()));
    EXPECT_TRUE(source.Status(file).exists) << "the first answer stays";
    EXPECT_EQ(source.FileSize(file), 5);
    EXPECT_EQ(m_progress.Current().name, file);
}
