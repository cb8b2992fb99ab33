#include "versions/VersionLimits.h"

#include "versions/Version.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

using Ids = std::vector<std::wstring>;

// Noon of a day in 2026 is far from midnight wherever the user is.
std::wstring At(WORD month, WORD day, WORD minute) {
    const SYSTEMTIME local = {2026, month, 0, day, 12, minute, 0, 0};
    SYSTEMTIME utc = {};
    FILETIME time = {};
    EXPECT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc));
    EXPECT_TRUE(SystemTimeToFileTime(&utc, &time));
    return VersionId(time);
}

} // namespace

TEST(SurplusVersions, AsManyAsMayStayDoStay) {
    const Ids ids = {At(1, 1, 0), At(1, 1, 1), At(1, 1, 2)};
    EXPECT_EQ(SurplusVersions(ids, 3), Ids{});
    EXPECT_EQ(SurplusVersions({}, 3), Ids{});
}

TEST(SurplusVersions, OlderOnesStayOnceADayTheLastOne) {
    const Ids ids = {At(1, 1, 0), At(1, 1, 1), At(1, 2, 0), At(2, 2, 0),
                     At(2, 2, 1), At(2, 2, 2), At(2, 3, 0), At(2, 3, 1)};
    EXPECT_EQ(SurplusVersions(ids, 2), (Ids{ids[0], ids[3], ids[4]}));
    EXPECT_EQ(SurplusVersions(ids, 0), (Ids{ids[0], ids[3], ids[4], ids[6]}));
}

TEST(SurplusVersions, TheLastOneOfADayStaysAlsoWhenNewerOnesOfThatDayAreThere) {
    const Ids ids = {At(3, 1, 0), At(3, 1, 1), At(3, 1, 2), At(3, 1, 3)};
    EXPECT_EQ(SurplusVersions(ids, 2), Ids{ids[0]});
}
