#include "compare/PackageDifferences.h"

#include "mxovpackage.h"
#include "package/ValueText.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace viewer;

namespace {

ComparedPackages Between(const std::wstring& before, const std::wstring& after) {
    ComparedPackages packages;
    packages.before = before;
    packages.after = after;
    return packages;
}

// A package file, and the folder of a newer state of it.
class PackageDifferencesTest : public testing::Test {
protected:
    PackageDifferencesTest() {
        m_folder.Write(L"old\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\nGCode=NC\\1.nc\r\n"
                                           "[FILE_HISTORY_1]\r\nOperation=Created\r\nBy=A\r\n");
        m_folder.Write(L"old\\NC\\1.nc", "N10 G0 X1\nN20 M30\n");
        m_folder.Write(L"old\\NC\\gone.nc", "M30\n");
        m_folder.Write(L"old\\NC\\2.nc", "N10 M30\n");
        m_folder.Write(L"old\\a.txt", "the same");
        m_folder.Write(L"old\\notes.ini", "[A]\nKey=1\n");
        m_folder.Write(L"old\\photo.jpg", "1");
        EXPECT_TRUE(mxovshare::CreatePackage(m_folder / L"old", Package()).ok);
        m_folder.Write(L"new\\mxinfo.ini",
                       "[FILEINFO]\r\nMaxtlreVersion=Example 2025\r\nGCode=NC\\1.nc\r\n"
                       "[FILE_HISTORY_1]\r\nOperation=Created\r\nBy=A\r\n"
                       "[FILE_HISTORY_2]\r\nOperation=Updated\r\nBy=B\r\nTime=2024-01-01 00:00:00\r\n");
        m_folder.Write(L"new\\NC\\1.nc", "N5 G0 X2\nN10 M30\n");
        m_folder.Write(L"new\\NC\\2.nc", "N5 M30 (end)\n");
        m_folder.Write(L"new\\NC\\3.nc", "M0\n");
        m_folder.Write(L"new\\b.txt", "the same");
        m_folder.Write(L"new\\notes.ini", "[A]\nKey=2\n");
        m_folder.Write(L"new\\photo.jpg", "2");
        m_folder.Write(L"new\\c.txt", "12345");
    }

    [[nodiscard]] std::wstring Package() const { return m_folder / L"old.mxov"; }

    DifferenceReport CompareWith(const wchar_t* folder) {
        return ComparePackages(Between(Package(), m_folder / folder), m_progress);
    }

    static const DifferenceLine* Find(const std::vector<DifferenceLine>& lines, const wchar_t* kind,
                                      const wchar_t* name) {
        const auto found = std::ranges::find_if(
            lines, [&](const DifferenceLine& line) { return line.kind == kind && line.name == name; });
        return found != lines.end() ? &*found : nullptr;
    }

    // The details of the line of this kind and name.
    static std::wstring DetailsOf(const DifferenceReport& report, const wchar_t* kind, const wchar_t* name) {
        const DifferenceLine* line = Find(report.lines, kind, name);
        return line != nullptr ? line->details : std::wstring(L"none");
    }

    // The new text of a file.
    TextPairReport Read(const wchar_t* file, TextKind kind = TextKind::Plain) {
        const DifferenceLine line = {.kind = {}, .name = file, .details = {}, .file = file, .textKind = kind};
        return ReadTextPair(Between(Package(), m_folder / L"new"), line);
    }

    TempFolder m_folder;
    WorkProgress m_progress;
};

} // namespace

TEST_F(PackageDifferencesTest, FilesKeysAndHistoryAreListed) {
    const DifferenceReport report = CompareWith(L"new");
    ASSERT_TRUE(report.result.ok) << report.result.message.c_str();
    EXPECT_EQ(report.lines.size(), 9u);
    EXPECT_EQ(DetailsOf(report, L"Content changed", L"1.nc"),
              ByteSizeText(18) + L" \u2192 " + ByteSizeText(17) +
                  L"\r\nNC\\1.nc\r\n- 1: N10 G0 X1\r\n+ 1: N5 G0 X2");
    EXPECT_EQ(DetailsOf(report, L"Document added", L"3.nc"), ByteSizeText(3) + L"\r\nNC\\3.nc");
    EXPECT_EQ(DetailsOf(report, L"Document removed", L"gone.nc"), ByteSizeText(4) + L"\r\nNC\\gone.nc");
    EXPECT_EQ(DetailsOf(report, L"Renamed", L"b.txt"), L"From a.txt");
    EXPECT_EQ(DetailsOf(report, L"Added", L"c.txt"), ByteSizeText(5) + L"\r\nc.txt");
    EXPECT_EQ(DetailsOf(report, L"Changed", L"Version"), L"Example 2024 \u2192 Example 2025");
    EXPECT_EQ(DetailsOf(report, L"History entry added", L"2024-01-01 00:00:00"), L"Updated, B");
}

TEST_F(PackageDifferencesTest, OnlyChangedTextsAreShownBesideEachOther) {
    const DifferenceReport report = CompareWith(L"new");
    const DifferenceLine* program = Find(report.lines, L"Content changed", L"1.nc");
    ASSERT_NE(program, nullptr);
    EXPECT_EQ(program->file, L"NC\\1.nc");
    EXPECT_EQ(program->textKind, TextKind::GCode);
    const DifferenceLine* notes = Find(report.lines, L"Content changed", L"notes.ini");
    ASSERT_NE(notes, nullptr);
    EXPECT_EQ(notes->textKind, TextKind::Plain);
    for (const auto& [kind, name] : {std::pair(L"Content changed", L"photo.jpg"), {L"Added", L"c.txt"}}) {
        const DifferenceLine* line = Find(report.lines, kind, name);
        ASSERT_NE(line, nullptr) << name;
        EXPECT_FALSE(line->textKind);
    }
}

TEST_F(PackageDifferencesTest, GCodeThatDiffersInNoiseAloneIsListedApart) {
    const DifferenceReport report = CompareWith(L"new");
    ASSERT_EQ(report.noise.size(), 1u);
    EXPECT_EQ(report.noise[0].kind, L"Only numbers, blanks or comments");
    EXPECT_EQ(report.noise[0].name, L"2.nc");
    EXPECT_EQ(report.noise[0].textKind, TextKind::GCode);
    EXPECT_EQ(Find(report.lines, L"Content changed", L"2.nc"), nullptr);
}

TEST_F(PackageDifferencesTest, ThePackageItselfDoesNotDiffer) {
    const DifferenceReport report = CompareWith(L"old");
    EXPECT_TRUE(report.result.ok);
    EXPECT_TRUE(report.lines.empty());
    EXPECT_TRUE(report.noise.empty());
}

TEST_F(PackageDifferencesTest, AFileThatIsNoPackageIsNamed) {
    const DifferenceReport report =
        ComparePackages(Between(m_folder / L"old\\a.txt", m_folder / L"new"), m_progress);
    EXPECT_FALSE(report.result.ok || report.result.cancelled);
    EXPECT_NE(report.result.message.find(L"a.txt"), std::wstring::npos);
}

TEST_F(PackageDifferencesTest, CancelledItListsNothing) {
    m_progress.Cancel();
    const DifferenceReport report = CompareWith(L"new");
    EXPECT_TRUE(report.result.cancelled);
    EXPECT_TRUE(report.lines.empty());
}

TEST_F(PackageDifferencesTest, TheTextsOfAFileAreRead) {
    const TextPairReport report = Read(L"NC\\1.nc", TextKind::GCode);
    ASSERT_TRUE(report.result.ok);
    EXPECT_EQ(report.texts.before, L"N10 G0 X1\nN20 M30\n");
    EXPECT_EQ(report.texts.after, L"N5 G0 X2\nN10 M30\n");
    EXPECT_EQ(report.texts.kind, TextKind::GCode);
}

TEST_F(PackageDifferencesTest, WhatHoldsNoTextIsRefused) {
    m_folder.Write(L"new\\notes.ini", std::string("a\0b", 3));
    const TextPairReport report = Read(L"notes.ini");
    EXPECT_FALSE(report.result.ok);
    EXPECT_EQ(report.result.message, L"notes.ini holds no text.");
    EXPECT_FALSE(Read(L"c.txt").result.ok);
}

namespace {

// A package with additional documents, compared with a later state of its information file.
class DocumentLinesTest : public testing::Test {
protected:
    // Each line of the list as one word.
    std::wstring Listed(const std::string& before, const std::string& after,
                        const std::vector<std::wstring>& newFiles = {}) {
        m_folder.Write(L"old\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n" + before);
        m_folder.Write(L"new\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n" + after);
        for (const std::wstring& file : newFiles) {
            m_folder.Write(L"new\\" + file, "new");
        }
        EXPECT_TRUE(mxovshare::CreatePackage(m_folder / L"old", m_folder / L"old.mxov").ok);
        WorkProgress progress;
        const DifferenceReport report =
            ComparePackages(Between(m_folder / L"old.mxov", m_folder / L"new"), progress);
        std::wstring text;
        for (const DifferenceLine& line : report.lines) {
            text += line.kind + L"|" + line.name + L"|" + line.details + L"\n";
        }
        return text;
    }

    static std::string Additional(const std::string& path, bool isCopy, const std::string& description = "-",
                                  const std::string& date = "2024-01-01 00:00:00") {
        return std::string("[REFERANCE_FILE_1]\r\nIsReferencedFile=") + (isCopy ? "NO" : "YES") +
               "\r\nDescription=" + description + "\r\nTimestamp=" + date + "\r\nFilePath=" + path + "\r\n";
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(DocumentLinesTest, AnAddedDocumentIsOneLine) {
    EXPECT_EQ(Listed("", Additional("ReferanceFiles\\plan.txt", true), {L"ReferanceFiles\\plan.txt"}),
              L"Document added|plan.txt|Copy in the package: ReferanceFiles\\plan.txt\n");
    EXPECT_EQ(Listed("", Additional("C:\\jobs\\list.pdf", false, "Tools")),
              L"Document added|list.pdf|Link to C:\\jobs\\list.pdf\r\nTools\nAdded|plan.txt|" +
                  ByteSizeText(3) + L"\r\nReferanceFiles\\plan.txt\n");
}

TEST_F(DocumentLinesTest, ARemovedDocumentIsOneLine) {
    EXPECT_EQ(Listed(Additional("C:\\jobs\\list.pdf", false), ""),
              L"Document removed|list.pdf|Link to C:\\jobs\\list.pdf\n");
}

TEST_F(DocumentLinesTest, LinksDescriptionsAndDatesChange) {
    EXPECT_EQ(Listed(Additional("C:\\a\\plan.pdf", false), Additional("C:\\b\\plan.pdf", false)),
              L"Link changed|plan.pdf|C:\\a\\plan.pdf \u2192 C:\\b\\plan.pdf\n");
    EXPECT_EQ(Listed(Additional("C:\\a.pdf", false, "Old"), Additional("C:\\a.pdf", false, "")),
              L"Description changed|a.pdf|Old \u2192 (none)\n");
    EXPECT_EQ(Listed(Additional("C:\\a.pdf", false, "-", "1"), Additional("C:\\a.pdf", false, "-", "2")),
              L"Date changed|a.pdf|1 \u2192 2\n");
}

TEST_F(DocumentLinesTest, ALinkBecomesACopy) {
    EXPECT_EQ(Listed(Additional("C:\\plan.txt", false), Additional("ReferanceFiles\\plan.txt", true),
                     {L"ReferanceFiles\\plan.txt"}),
              L"Link became a copy|plan.txt|C:\\plan.txt \u2192 ReferanceFiles\\plan.txt\n");
}

TEST_F(DocumentLinesTest, ThePartHasWordsOfItsOwnAndUnknownKeysHaveTheirNames) {
    EXPECT_EQ(Listed("CADFilePath=C:\\a.prt\r\n[OTHER]\r\nKey=1\r\n", "CADFilePath=C:\\b.prt\r\n"),
              L"Link changed|Part|C:\\a.prt \u2192 C:\\b.prt\nRemoved|OTHER/Key|1\n");
}
