#include "care/PortableCopy.h"

#include "common/Utf8.h"
#include "package/Paths.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace viewer;

namespace {

// An unpacked package with a link to a file and one to none.
class PortableCopyTest : public testing::Test {
protected:
    void WritePackage(const std::string& version) {
        const std::wstring link = m_folder.Write(L"outside\\plan.pdf", "a plan");
        m_folder.Write(
            L"package\\mxinfo.ini",
            "[FILEINFO]\r\nMaxtlreVersion=" + version +
                "\r\n[REFERANCE_FILE_1]\r\nIsReferencedFile=YES\r\nFilePath=" + common::ToUtf8(link) +
                "\r\n[REFERANCE_FILE_2]\r\nIsReferencedFile=YES\r\nFilePath=C:\\gone\\b.pdf\r\n");
    }

    [[nodiscard]] PortableCopy Save() {
        return WritePortableCopy(m_folder / L"package", m_folder / L"out.mxov", m_progress);
    }

    TempFolder m_folder;
    WorkProgress m_progress;
};

} // namespace

TEST_F(PortableCopyTest, LinkedDocumentsBecomeCopiesAndTheFolderStays) {
    WritePackage("Example 2024");
    const std::string before = m_folder.Read(L"package\\mxinfo.ini");
    const PortableCopy copy = Save();
    ASSERT_TRUE(copy.result.ok) << copy.result.message.c_str();
    EXPECT_EQ(m_folder.Read(L"package\\mxinfo.ini"), before);
    std::vector<mxovshare::PackageEntry> entries;
    ASSERT_TRUE(mxovshare::ListPackage(m_folder / L"out.mxov", entries).ok);
    EXPECT_TRUE(std::ranges::any_of(entries, [](const mxovshare::PackageEntry& entry) {
        return entry.name == L"ReferanceFiles\\plan.pdf" && entry.size == 6;
    }));
    mxovshare::Information information;
    ASSERT_TRUE(mxovshare::ReadInformation(m_folder / L"out.mxov", information).ok);
    EXPECT_EQ(information.Value(L"REFERANCE_FILE_1", L"IsReferencedFile"), L"NO");
    EXPECT_EQ(information.Value(L"REFERANCE_FILE_1", L"FilePath"), L"ReferanceFiles\\plan.pdf");
    EXPECT_EQ(information.Value(L"FILE_HISTORY_1", L"Operation"), L"Saved as portable copy");
    EXPECT_EQ(copy.size, m_folder.Read(L"out.mxov").size());
    const std::wstring summary = PortableSummary(copy);
    EXPECT_NE(summary.find(L"outside\\plan.pdf\n"), std::wstring::npos);
    EXPECT_NE(summary.find(L"C:\\gone\\b.pdf does not exist\n"), std::wstring::npos);
    EXPECT_NE(summary.find(L"Size: "), std::wstring::npos);
    EXPECT_EQ(summary.find(L"2021"), std::wstring::npos);
}

TEST_F(PortableCopyTest, AVersionThatHidesThemIsNamed) {
    WritePackage("Example 2020");
    const PortableCopy copy = Save();
    ASSERT_TRUE(copy.result.ok);
    EXPECT_NE(PortableSummary(copy).find(L"2021"), std::wstring::npos);
}

TEST_F(PortableCopyTest, CancelledOrFailedItLeavesTheTarget) {
    WritePackage("Example 2024");
    m_folder.Write(L"out.mxov", "old");
    m_progress.Cancel();
    const PortableCopy cancelled = Save();
    EXPECT_TRUE(cancelled.result.cancelled);
    EXPECT_EQ(m_folder.Read(L"out.mxov"), "old");
    WorkProgress progress;
    const PortableCopy failed =
        WritePortableCopy(m_folder / L"package", m_folder / L"none\\out.mxov", progress);
    EXPECT_FALSE(failed.result.ok || failed.result.cancelled);
    EXPECT_FALSE(failed.result.message.empty());
}

TEST_F(PortableCopyTest, WithoutLinksTheSummarySaysSo) {
    m_folder.Write(L"package\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n");
    const PortableCopy copy = Save();
    ASSERT_TRUE(copy.result.ok);
    EXPECT_TRUE(PortableSummary(copy).starts_with(L"There were no linked documents to copy.\n\nSize: "));
}
