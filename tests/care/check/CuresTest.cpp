#include "care/check/Cures.h"

#include "care/Links.h"
#include "common/Clock.h"
#include "common/Utf8.h"
#include "TempFolder.h"

#include <package/DiskCatalogueSource.h>
#include <package/PackageInformation.h>

#include <gtest/gtest.h>

#include <algorithm>

using namespace care;

namespace {

// A package in a folder: its files and its information file, which is the test's own.
class CuresTest : public testing::Test {
protected:
    CuresTest() {
        m_folder.Write(L"SetupSheets\\setup.docx", "sheet");
        m_folder.SetTime(L"SetupSheets\\setup.docx", {2024, 5, 3, 15, 6, 30, 0, 0});
    }

    void Write(const std::string& information) {
        m_folder.Write(L"mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n" + information);
    }

    static std::string Document(int number, const char* isLink, const std::string& path) {
        return "[REFERANCE_FILE_" + std::to_string(number) + "]\r\nIsReferencedFile=" + isLink +
               "\r\nDescription=-\r\nTimestamp=2001-02-03 04:05:06\r\nFilePath=" + path + "\r\n";
    }

    [[nodiscard]] PackageContent Content() const {
        PackageContent content;
        EXPECT_TRUE(mxovshare::ListFolder(m_folder.Path(), content.entries).ok);
        EXPECT_TRUE(mxovshare::ReadInformation(m_folder.Path(), content.sections).ok);
        return content;
    }

    [[nodiscard]] std::vector<Finding> Findings(const PackageContent& content,
                                                OtherComputers others = OtherComputers::Refused) const {
        std::vector<Finding> findings;
        const docview::DiskCatalogueSource source(docview::FindInformationFile(m_folder.PathWithSeparator()));
        const CheckedPackage package = {.entries = content.entries,
                                        .sections = content.sections,
                                        .source = source,
                                        .folder = m_folder.PathWithSeparator(),
                                        .others = others};
        FindFaults(package, common::SystemTime(),
                   [&findings](const Finding& finding) { findings.push_back(finding); });
        return findings;
    }

    // The changes that cure the first finding of this kind.
    [[nodiscard]] mxovshare::PackageChanges Cured(const wchar_t* code, Cure cure,
                                                  const std::wstring& path = {}) const {
        const PackageContent content = Content();
        const std::vector<Finding> findings = Findings(content);
        const auto found = std::ranges::find(findings, std::wstring_view(code), &Finding::code);
        if (found == findings.end()) {
            ADD_FAILURE() << "not found";
            return {};
        }
        const std::vector<Cure> cures = CuresOf(*found);
        EXPECT_NE(std::ranges::find(cures, cure), cures.end());
        EXPECT_TRUE(IsCurrent(*found, content));
        FindingCure edit(content, m_folder.PathWithSeparator());
        edit.Apply(cure, *found, path);
        return edit.Changes();
    }

    // "SECTION/KEY=VALUE" of each change, or "SECTION" of a removed one.
    static std::vector<std::wstring> Lines(const mxovshare::PackageChanges& changes) {
        std::vector<std::wstring> lines;
        for (const mxovshare::InformationChange& change : changes.information) {
            lines.push_back(change.key.empty() ? change.section
                                               : change.section + L"/" + change.key + L"=" + change.value);
        }
        return lines;
    }

    using Strings = std::vector<std::wstring>;

    TempFolder m_folder;
};

} // namespace

TEST_F(CuresTest, AFileThatNothingShowsIsAttachedOrRemoved) {
    Write(Document(3, "YES", "C:\\gone.pdf"));
    const mxovshare::PackageChanges attached = Cured(finding::kNotShown, Cure::Attach);
    EXPECT_EQ(Lines(attached),
              (Strings{L"REFERANCE_FILE_4/IsReferencedFile=NO", L"REFERANCE_FILE_4/Description=-",
                       L"REFERANCE_FILE_4/Timestamp=2024-05-15 06:30:00",
                       L"REFERANCE_FILE_4/FilePath=SetupSheets\\setup.docx"}));
    EXPECT_TRUE(attached.added.empty());
    const mxovshare::PackageChanges removed = Cured(finding::kNotShown, Cure::Remove);
    EXPECT_EQ(removed.removed, Strings{L"SetupSheets\\setup.docx"});
    EXPECT_TRUE(removed.information.empty());
}

TEST_F(CuresTest, AMissingLinkIsPointedAtAnotherFileOrRemoved) {
    Write(Document(1, "YES", "C:\\gone.pdf"));
    EXPECT_EQ(Lines(Cured(finding::kLinkMissing, Cure::Find, L"D:\\here.pdf")),
              Strings{L"REFERANCE_FILE_1/FilePath=D:\\here.pdf"});
    EXPECT_EQ(Lines(Cured(finding::kLinkMissing, Cure::Remove)), Strings{L"REFERANCE_FILE_1"});
}

TEST_F(CuresTest, AMissingPartKeepsItsKeys) {
    Write("CADFilePath=C:\\gone.sldprt\r\n");
    EXPECT_EQ(Lines(Cured(finding::kLinkMissing, Cure::Find, L"D:\\here.sldprt")),
              Strings{L"FILEINFO/CADFilePath=D:\\here.sldprt"});
    EXPECT_EQ(Lines(Cured(finding::kLinkMissing, Cure::Remove)),
              (Strings{L"FILEINFO/CADFilePath=", L"FILEINFO/CADFileLastModifiedTime=",
                       L"FILEINFO/CADFileDescription="}));
}

TEST_F(CuresTest, AMissingCopyComesBackUnderItsNameOrAnother) {
    Write(Document(1, "NO", "ReferanceFiles\\plan.pdf"));
    const std::wstring plan = m_folder.Write(L"SetupSheets\\plan.pdf", "plan");
    m_folder.SetTime(L"SetupSheets\\plan.pdf", {2024, 5, 3, 15, 6, 31, 0, 0});
    const mxovshare::PackageChanges back = Cured(finding::kCopyMissing, Cure::Find, plan);
    ASSERT_EQ(back.added.size(), 1u);
    EXPECT_EQ(back.added[0].name, L"ReferanceFiles\\plan.pdf");
    EXPECT_EQ(back.added[0].path, plan);
    EXPECT_EQ(Lines(back), (Strings{L"REFERANCE_FILE_1/Timestamp=2024-05-15 06:31:00",
                                    L"REFERANCE_FILE_1/FilePath=ReferanceFiles\\plan.pdf"}));
    const std::wstring other = m_folder / L"SetupSheets\\setup.docx";
    EXPECT_EQ(Lines(Cured(finding::kCopyMissing, Cure::Find, other)).back(),
              L"REFERANCE_FILE_1/FilePath=ReferanceFiles\\setup.docx");
}

TEST_F(CuresTest, ACopyOfALinkTakesAFreeName) {
    const std::wstring link = m_folder.Write(L"Temp\\plan.pdf", "plan");
    m_folder.SetTime(L"Temp\\plan.pdf", {2024, 5, 3, 15, 6, 31, 0, 0});
    m_folder.Write(L"ReferanceFiles\\plan.pdf", "another");
    Write(Document(1, "YES", common::ToUtf8(link)));
    const mxovshare::PackageChanges copied = Cured(finding::kPersonalFolder, Cure::MakeCopy);
    ASSERT_EQ(copied.added.size(), 1u);
    EXPECT_EQ(copied.added[0].name, L"ReferanceFiles\\plan (2).pdf");
    EXPECT_EQ(copied.added[0].path, link);
    EXPECT_EQ(Lines(copied), (Strings{L"REFERANCE_FILE_1/IsReferencedFile=NO",
                                      L"REFERANCE_FILE_1/Timestamp=2024-05-15 06:31:00",
                                      L"REFERANCE_FILE_1/FilePath=ReferanceFiles\\plan (2).pdf"}));
    EXPECT_EQ(Lines(Cured(finding::kLinkNewer, Cure::SetDate)),
              Strings{L"REFERANCE_FILE_1/Timestamp=2024-05-15 06:31:00"});
}

TEST_F(CuresTest, OneOfTwoDocumentsOnAFileIsRemovedOrGetsACopy) {
    m_folder.Write(L"ReferanceFiles\\plan.pdf", "plan");
    Write(Document(1, "NO", "ReferanceFiles\\plan.pdf") + Document(2, "NO", "ReferanceFiles\\plan.pdf"));
    const mxovshare::PackageChanges removed = Cured(finding::kShared, Cure::Remove);
    EXPECT_EQ(Lines(removed), Strings{L"REFERANCE_FILE_2"});
    EXPECT_TRUE(removed.removed.empty()) << "the other document shows the file";
    const mxovshare::PackageChanges copied = Cured(finding::kShared, Cure::MakeCopy);
    ASSERT_EQ(copied.added.size(), 1u);
    EXPECT_EQ(copied.added[0].name, L"ReferanceFiles\\plan (2).pdf");
    EXPECT_EQ(copied.added[0].path, m_folder / L"ReferanceFiles\\plan.pdf");
}

TEST_F(CuresTest, AMissingPreviewIsABitmapAgainOrNone) {
    Write("Thumbnail=Preview\\part.bmp\r\n");
    EXPECT_EQ(Lines(Cured(finding::kPreviewMissing, Cure::Remove)), Strings{L"FILEINFO/Thumbnail="});
    EXPECT_THROW(
        static_cast<void>(Cured(finding::kPreviewMissing, Cure::Find, m_folder / L"SetupSheets\\setup.docx")),
        Refusal);
}

TEST_F(CuresTest, WhatCannotBeCuredOffersNothing) {
    Write("[FILE_HISTORY_1]\r\nTime=2024-01-02 00:00:00\r\n[FILE_HISTORY_2]\r\nTime=2024-01-01 00:00:00\r\n");
    const PackageContent content = Content();
    const std::vector<Finding> findings = Findings(content);
    const auto found = std::ranges::find(findings, std::wstring_view(finding::kHistoryOrder), &Finding::code);
    ASSERT_NE(found, findings.end());
    EXPECT_TRUE(CuresOf(*found).empty());
}

TEST_F(CuresTest, AFindingIsOutdatedOnceItsDocumentIsAnother) {
    Write(Document(1, "YES", "C:\\gone.pdf"));
    const std::vector<Finding> findings = Findings(Content());
    Write(Document(1, "YES", "C:\\else.pdf"));
    ASSERT_TRUE(DeleteFileW((m_folder / L"SetupSheets\\setup.docx").c_str()));
    const PackageContent now = Content();
    EXPECT_EQ(findings.size(), 2u);
    EXPECT_TRUE(std::ranges::none_of(findings, [&now](const Finding& f) { return IsCurrent(f, now); }));
}

TEST_F(CuresTest, LinksToOtherComputersAreFollowedWhenTheyAreAsked) {
    Write(Document(1, "YES", "\\\\no-such-computer\\share\\a.pdf") +
          Document(2, "NO", "\\\\no-such-computer\\b.pdf"));
    const PackageContent content = Content();
    const auto codeOf = [&](OtherComputers others, const wchar_t* section) {
        const std::vector<Finding> findings = Findings(content, others);
        const auto found = std::ranges::find(findings, section, &Finding::section);
        return found != findings.end() ? std::wstring(found->code) : std::wstring();
    };
    EXPECT_EQ(codeOf(OtherComputers::Refused, L"REFERANCE_FILE_1"), finding::kOtherComputer);
    EXPECT_EQ(codeOf(OtherComputers::Asked, L"REFERANCE_FILE_1"), finding::kLinkMissing);
    EXPECT_EQ(codeOf(OtherComputers::Asked, L"REFERANCE_FILE_2"), finding::kOtherComputer);
}

TEST(MovedWith, FollowsTheFolderThatMoved) {
    const std::wstring from = L"C:\\old\\jobs\\sub\\plan.pdf";
    const std::wstring to = L"D:\\new\\JOBS\\sub\\plan.pdf";
    EXPECT_EQ(MovedWith(L"C:\\old\\jobs\\sub\\b.pdf", from, to), L"D:\\new\\jobs\\sub\\b.pdf");
    EXPECT_EQ(MovedWith(L"c:/old/other/c.pdf", from, to), L"D:\\new/other/c.pdf");
    EXPECT_FALSE(MovedWith(L"C:\\older\\c.pdf", from, to));
    EXPECT_FALSE(MovedWith(L"E:\\old\\c.pdf", from, to));
    EXPECT_FALSE(MovedWith(L"C:\\old\\b.pdf", L"C:\\old\\plan.pdf", L"D:\\new\\plan-2.pdf"))
        << "a file of another name says nothing about its neighbours";
    EXPECT_FALSE(MovedWith(L"b.pdf", L"plan.pdf", L"D:\\plan.pdf"));
}
