#include "package/PackageSummary.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

TEST(PackageSummary, ComesFromTheInformationFile) {
    const TempFolder folder;
    folder.Write(L"mxinfo.ini",
                 "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\nThumbnail=Preview\\part.bmp\r\n"
                 "[FILE_HISTORY_1]\r\nOperation=Created\r\nBy=Mill\r\nTime=2024-01-02 03:04:05\r\n"
                 "[FILE_HISTORY_2]\r\nOperation=Saved\r\nBy=Lathe\r\nTime=2024-02-03 04:05:06\r\n");
    const PackageSummary summary = ReadPackageSummary(folder.PathWithSeparator(), L"C:\\jobs\\bracket.mxov");
    EXPECT_EQ(summary.name, L"bracket");
    EXPECT_EQ(summary.version, L"Package Writer 2024");
    EXPECT_EQ(summary.previewFile, folder / L"Preview\\part.bmp");
    EXPECT_EQ(summary.lastChange, L"Saved by Lathe, 2024-02-03 04:05");
}

TEST(PackageSummary, TheInformationFileMayBePrivate) {
    const TempFolder folder;
    folder.Write(L"Private\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2019\r\n");
    EXPECT_EQ(ReadPackageSummary(folder.PathWithSeparator(), L"C:\\x.mxov").version, L"Package Writer 2019");
}

TEST(PackageSummary, WithoutAnInformationFileOnlyTheNameIsKnown) {
    const TempFolder folder;
    const PackageSummary summary = ReadPackageSummary(folder.PathWithSeparator(), L"C:\\x.mxov");
    EXPECT_EQ(summary.name, L"x");
    EXPECT_EQ(summary.version + summary.previewFile + summary.lastChange, L"");
}

TEST(PackageSummary, AHistoryEntryShowsWhatItHas) {
    const TempFolder folder;
    folder.Write(L"mxinfo.ini", "[FILE_HISTORY_1]\r\nOperation=Created\r\n");
    EXPECT_EQ(ReadPackageSummary(folder.PathWithSeparator(), L"C:\\x.mxov").lastChange, L"Created");
}

TEST(PackageSummary, ATimeOfAnotherFormStaysAsItIs) {
    const TempFolder folder;
    for (const std::string time : {"yesterday", "2024-02-03", "3.2.2024 04:05:06", "2024-02-03 04:05:0x"}) {
        folder.Write(L"mxinfo.ini", "[FILE_HISTORY_1]\r\nOperation=Saved\r\nTime=" + time + "\r\n");
        EXPECT_EQ(ReadPackageSummary(folder.PathWithSeparator(), L"C:\\x.mxov").lastChange,
                  L"Saved, " + std::wstring(time.begin(), time.end()));
    }
}

TEST(PackageSummary, PropertiesNameTheZonesOfTheirTimes) {
    const TempFolder folder;
    const std::wstring file = folder.Write(L"x.mxov", "package");
    const std::wstring text = PropertiesText(folder.PathWithSeparator(), file, {});
    EXPECT_NE(text.find(L"Path: " + file), std::wstring::npos);
    EXPECT_NE(text.find(L"(local time)"), std::wstring::npos);
    EXPECT_NE(text.find(L"document lists are UTC"), std::wstring::npos);
}
