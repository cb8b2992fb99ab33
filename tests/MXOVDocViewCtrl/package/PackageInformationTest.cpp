#include "package/PackageInformation.h"

#include "FakeCatalogueSource.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace docview;

namespace {

TEST(FindInformationFile, PrefersTheFileInTheFolderItself) {
    const TempFolder folder;
    const std::wstring file = folder.Write(L"mxinfo.ini", "");
    folder.Write(L"Private\\mxinfo.ini", "");
    EXPECT_EQ(FindInformationFile(folder.Path()), file);
    EXPECT_EQ(FindInformationFile(folder.PathWithSeparator()), folder.Path() + L"\\\\mxinfo.ini");
}

TEST(FindInformationFile, FallsBackToThePrivateFolder) {
    const TempFolder folder;
    const std::wstring file = folder.Write(L"Private\\mxinfo.ini", "");
    EXPECT_EQ(FindInformationFile(folder.PathWithSeparator()), file);
}

TEST(FindInformationFile, RunsTheLastNameTogetherWithPrivateWhenTheSeparatorIsMissing) {
    const TempFolder folder;
    folder.Write(L"Private\\mxinfo.ini", "");
    EXPECT_EQ(FindInformationFile(folder.Path()), folder.Path() + L"Private\\mxinfo.ini");
}

TEST(FindInformationFile, DoesNotTestTheFallBack) {
    EXPECT_EQ(FindInformationFile(L"C:\\no such folder\\"), L"C:\\no such folder\\Private\\mxinfo.ini");
}

TEST(IsRecentVersion, ReadsTheLastWordAsAYear) {
    EXPECT_TRUE(IsRecentVersion(L"Maxtlre 2021"));
    EXPECT_TRUE(IsRecentVersion(L"Maxtlre 2021.5"));
    EXPECT_TRUE(IsRecentVersion(L"Maxtlre CAM Works 2024"));
    EXPECT_FALSE(IsRecentVersion(L"Maxtlre 2020"));
    EXPECT_FALSE(IsRecentVersion(L"Maxtlre 2020.99"));
    EXPECT_FALSE(IsRecentVersion(L"Maxtlre -2021"));
}

TEST(IsRecentVersion, NeedsTwoWords) {
    EXPECT_FALSE(IsRecentVersion(L""));
    EXPECT_FALSE(IsRecentVersion(L"   "));
    EXPECT_FALSE(IsRecentVersion(L"2021"));
    EXPECT_FALSE(IsRecentVersion(L"  2021  "));
    EXPECT_FALSE(IsRecentVersion(L"Maxtlre\t2021"));
}

TEST(IsRecentVersion, SplitsAtRunsOfBlanks) {
    EXPECT_TRUE(IsRecentVersion(L"  Maxtlre    2022   "));
    EXPECT_FALSE(IsRecentVersion(L"Maxtlre 2022 beta"));
}

TEST(IsRecentVersion, TakesTheLeadingNumberOnly) {
    EXPECT_TRUE(IsRecentVersion(L"Maxtlre 2021SP3"));
    EXPECT_TRUE(IsRecentVersion(L"Maxtlre 2021-beta"));
    EXPECT_TRUE(IsRecentVersion(L"Maxtlre +2.021e3"));
    EXPECT_TRUE(IsRecentVersion(L"Maxtlre 1e999"));
    EXPECT_FALSE(IsRecentVersion(L"Maxtlre v2021"));
    EXPECT_FALSE(IsRecentVersion(L"Maxtlre inf"));
    EXPECT_FALSE(IsRecentVersion(L"Maxtlre 0x7E5"));
}

TEST(ReadSummary, JoinsTheThumbnailWithoutASeparator) {
    FakeCatalogueSource source;
    source.sections = {{L"FILEINFO", {{L"Thumbnail", L"preview.bmp"}}}};
    EXPECT_EQ(ReadSummary(source, L"C:\\P\\").thumbnailPath, L"C:\\P\\preview.bmp");
    EXPECT_EQ(ReadSummary(source, L"C:\\P").thumbnailPath, L"C:\\Ppreview.bmp");
}

TEST(ReadSummary, HasNoThumbnailWithoutTheKey) {
    const FakeCatalogueSource source;
    EXPECT_EQ(ReadSummary(source, L"C:\\P\\").thumbnailPath, L"");
}

TEST(ReadSummary, ListsTheHistoryInTheOrderOfItsSections) {
    FakeCatalogueSource source;
    source.sections = {
        {L"FILE_HISTORY_2",
         {{L"Operation", L"Updated"}, {L"Time", L"noon"}, {L"By", L"Ada"}, {L"Remarks", L"r"}}},
        {L"FILEINFO", {}},
        {L"FILE_HISTORY_1", {{L"Operation", L"Created"}}}};
    const std::vector<HistoryEntry> history = ReadSummary(source, L"").history;
    ASSERT_EQ(history.size(), 2U);
    EXPECT_EQ(history[0].operation, L"Updated");
    EXPECT_EQ(history[0].time, L"noon");
    EXPECT_EQ(history[0].by, L"Ada");
    EXPECT_EQ(history[0].remarks, L"r");
    EXPECT_EQ(history[1].operation, L"Created");
    EXPECT_EQ(history[1].time, L"");
}

TEST(AdditionalSection, IsNumberedOneHigherThanTheLast) {
    const FakeCatalogueSource source;
    EXPECT_EQ(AdditionalSection(source, 0), L"REFERANCE_FILE_1");
    EXPECT_EQ(AdditionalSection(source, 3), L"REFERANCE_FILE_4");
    EXPECT_EQ(AdditionalSection(source, 2147483646), L"REFERANCE_FILE_2147483647");
}

TEST(AdditionalSection, TakesTheHighestFreeNumberAboveTheLargest) {
    FakeCatalogueSource source;
    source.sections = {{L"REFERANCE_FILE_2147483647", {}}, {L"REFERANCE_FILE_7", {}}};
    EXPECT_EQ(AdditionalSection(source, 2147483647), L"REFERANCE_FILE_2147483646");
    source.sections.push_back({L"REFERANCE_FILE_2147483646", {}});
    EXPECT_EQ(AdditionalSection(source, 2147483647), L"REFERANCE_FILE_2147483645");
}

} // namespace
