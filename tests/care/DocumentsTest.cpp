#include "care/Documents.h"

#include <gtest/gtest.h>

using care::EntriesOfList;

TEST(Documents, AListHasEmptyEntriesButNoneBehindItsEnd) {
    EXPECT_TRUE(EntriesOfList(L"").empty());
    EXPECT_EQ(EntriesOfList(L"a.nc"), (std::vector<std::wstring>{L"a.nc"}));
    EXPECT_EQ(EntriesOfList(L";G\\a.nc;;b.nc;"), (std::vector<std::wstring>{L"", L"G\\a.nc", L"", L"b.nc"}));
}
