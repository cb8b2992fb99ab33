#include "package/Attachment.h"

#include "package/Paths.h"
#include "TempFolder.h"

#include <mxovshare.h>

#include <gtest/gtest.h>

using namespace viewer;

namespace {

// An unpacked package beside files to attach.
class AttachmentTest : public testing::Test {
protected:
    AttachmentTest() { WriteInformation("Package Writer 2024"); }

    void WriteInformation(const std::string& version) const {
        m_folder.Write(
            L"package\\mxinfo.ini",
            "[FILEINFO]\r\nMaxtlreVersion=" + version +
                "\r\n[REFERANCE_FILE_4]\r\nIsReferencedFile=NO\r\nFilePath=ReferanceFiles\\old.pdf\r\n");
    }
    [[nodiscard]] std::wstring Package() const { return m_folder / L"package\\"; }
    [[nodiscard]] std::wstring Value(const wchar_t* section, const wchar_t* key) const {
        return mxovshare::INIFile::GetKeyValueFromINI(section, key, Package() + L"mxinfo.ini");
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(AttachmentTest, ALinkPointsAtTheFile) {
    const std::wstring plan = m_folder.Write(L"plan.pdf", "plan");
    m_folder.SetTime(L"plan.pdf", {2024, 5, 3, 15, 6, 30, 8, 0});
    EXPECT_EQ(AttachDocuments(Package(), {plan}, AttachMode::Link), L"");
    EXPECT_EQ(Value(L"REFERANCE_FILE_5", L"IsReferencedFile"), L"YES");
    EXPECT_EQ(Value(L"REFERANCE_FILE_5", L"FilePath"), plan);
    EXPECT_EQ(Value(L"REFERANCE_FILE_5", L"Description"), L"-");
    EXPECT_EQ(Value(L"REFERANCE_FILE_5", L"Timestamp"), L"2024-05-15 06:30:08");
    EXPECT_FALSE(FolderExists(Package() + L"ReferanceFiles"));
}

TEST_F(AttachmentTest, CopiesOfOneNameAreKeptSideBySide) {
    const std::wstring first = m_folder.Write(L"a\\plan.v2.pdf", "first");
    const std::wstring second = m_folder.Write(L"b\\plan.v2.pdf", "second");
    EXPECT_EQ(AttachDocuments(Package(), {first, second}, AttachMode::Copy), L"");
    EXPECT_EQ(m_folder.Read(L"package\\ReferanceFiles\\plan.v2.pdf"), "first");
    EXPECT_EQ(m_folder.Read(L"package\\ReferanceFiles\\plan.v2 (2).pdf"), "second");
    EXPECT_EQ(Value(L"REFERANCE_FILE_5", L"FilePath"), L"ReferanceFiles\\plan.v2.pdf");
    EXPECT_EQ(Value(L"REFERANCE_FILE_6", L"FilePath"), L"ReferanceFiles\\plan.v2 (2).pdf");
    EXPECT_EQ(Value(L"REFERANCE_FILE_6", L"IsReferencedFile"), L"NO");
}

TEST_F(AttachmentTest, WhatCannotBeAttachedIsNamedAndTheRestIsAttached) {
    const std::wstring plan = m_folder.Write(L"plan.pdf", "plan");
    m_folder.Write(L"drawings\\x.txt", "x");
    const std::wstring message =
        AttachDocuments(Package(), {m_folder / L"drawings", m_folder / L"gone.pdf", plan}, AttachMode::Copy);
    EXPECT_NE(message.find(L"drawings is a folder"), std::wstring::npos);
    EXPECT_NE(message.find(L"gone.pdf cannot be copied"), std::wstring::npos);
    EXPECT_EQ(message.find(L"plan.pdf"), std::wstring::npos);
    EXPECT_EQ(Value(L"REFERANCE_FILE_5", L"FilePath"), L"ReferanceFiles\\plan.pdf");
    EXPECT_EQ(Value(L"REFERANCE_FILE_6", L"FilePath"), L"");
}

TEST_F(AttachmentTest, OldPackagesTakeNoDocuments) {
    EXPECT_TRUE(TakesDocuments(Package()));
    WriteInformation("Package Writer 2020");
    EXPECT_FALSE(TakesDocuments(Package()));
}
