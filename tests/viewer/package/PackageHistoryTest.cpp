#include "package/PackageHistory.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

TEST(PackageHistory, TheNewestEntryComesFirstWithItsRemarks) {
    const TempFolder folder;
    folder.Write(L"mxinfo.ini",
                 "[FILE_HISTORY_1]\r\nOperation=Created\r\nTime=2024-05-14 08:52:10\r\nBy=M. Keller\r\n"
                 "Remarks=Not yet run\r\n[FILE_HISTORY_2]\r\nOperation=Released\r\n");
    const std::vector<HistoryLine> lines = ReadHistory(folder.PathWithSeparator());
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], (HistoryLine{L"", L"Released", L"", L""}));
    EXPECT_EQ(lines[1], (HistoryLine{L"2024-05-14 08:52:10", L"Created", L"M. Keller", L"Not yet run"}));
}

TEST(PackageHistory, APackageWithoutHistoryHasNone) {
    const TempFolder folder;
    EXPECT_TRUE(ReadHistory(folder.PathWithSeparator()).empty());
}
