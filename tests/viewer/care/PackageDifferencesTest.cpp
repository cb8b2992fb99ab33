#include "care/PackageDifferences.h"

#include "mxovpackage.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace viewer;

namespace {

// A package file, and the folder of a newer state of it.
class PackageDifferencesTest : public testing::Test {
protected:
    PackageDifferencesTest() {
        m_folder.Write(L"old\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\nGCode=NC\\1.nc\r\n"
                                           "[FILE_HISTORY_1]\r\nOperation=Created\r\nBy=A\r\n");
        m_folder.Write(L"old\\NC\\1.nc", "N10 G0 X1\nN20 M30\n");
        m_folder.Write(L"old\\NC\\gone.nc", "M30\n");
        m_folder.Write(L"old\\a.txt", "the same");
        EXPECT_TRUE(mxovshare::CreatePackage(m_folder / L"old", Package()).ok);
        m_folder.Write(L"new\\mxinfo.ini",
                       "[FILEINFO]\r\nMaxtlreVersion=Example 2025\r\nGCode=NC\\1.nc\r\n"
                       "[FILE_HISTORY_1]\r\nOperation=Created\r\nBy=A\r\n"
                       "[FILE_HISTORY_2]\r\nOperation=Updated\r\nBy=B\r\nTime=2024-01-01 00:00:00\r\n");
        m_folder.Write(L"new\\NC\\1.nc", "N5 G0 X2\nN10 M30\n");
        m_folder.Write(L"new\\b.txt", "the same");
        m_folder.Write(L"new\\c.txt", "12345");
    }

    [[nodiscard]] std::wstring Package() const { return m_folder / L"old.mxov"; }

    // The details of the line of this kind and name.
    static std::wstring DetailsOf(const DifferenceReport& report, const wchar_t* kind, const wchar_t* name) {
        const auto found = std::ranges::find_if(
            report.lines, [&](const DifferenceLine& line) { return line.kind == kind && line.name == name; });
        return found != report.lines.end() ? found->details : std::wstring(L"none");
    }

    TempFolder m_folder;
    WorkProgress m_progress;
};

} // namespace

TEST_F(PackageDifferencesTest, FilesKeysAndHistoryAreListed) {
    const DifferenceReport report = CompareUnpacked(Package(), m_folder / L"new", m_progress);
    ASSERT_TRUE(report.result.ok) << report.result.message.c_str();
    EXPECT_EQ(report.lines.size(), 6u);
    EXPECT_EQ(DetailsOf(report, L"Changed", L"NC\\1.nc"),
              L"18 bytes \u2192 17 bytes\r\n- 1: N10 G0 X1\r\n+ 1: N5 G0 X2");
    EXPECT_EQ(DetailsOf(report, L"Removed", L"NC\\gone.nc"), L"4 bytes");
    EXPECT_EQ(DetailsOf(report, L"Renamed", L"b.txt"), L"From a.txt");
    EXPECT_EQ(DetailsOf(report, L"Added", L"c.txt"), L"5 bytes");
    EXPECT_EQ(DetailsOf(report, L"Changed", L"FILEINFO/MaxtlreVersion"), L"Example 2024 \u2192 Example 2025");
    EXPECT_EQ(DetailsOf(report, L"Added", L"FILE_HISTORY_2"), L"2024-01-01 00:00:00, B, Updated");
}

TEST_F(PackageDifferencesTest, ThePackageItselfDoesNotDiffer) {
    const DifferenceReport report = CompareUnpacked(Package(), m_folder / L"old", m_progress);
    EXPECT_TRUE(report.result.ok);
    EXPECT_TRUE(report.lines.empty());
}

TEST_F(PackageDifferencesTest, AFileThatIsNoPackageIsNamed) {
    const DifferenceReport report = CompareUnpacked(m_folder / L"old\\a.txt", m_folder / L"new", m_progress);
    EXPECT_FALSE(report.result.ok || report.result.cancelled);
    EXPECT_NE(report.result.message.find(L"a.txt"), std::wstring::npos);
}

TEST_F(PackageDifferencesTest, CancelledItListsNothing) {
    m_progress.Cancel();
    const DifferenceReport report = CompareUnpacked(Package(), m_folder / L"new", m_progress);
    EXPECT_TRUE(report.result.cancelled);
    EXPECT_TRUE(report.lines.empty());
}
