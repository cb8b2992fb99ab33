#include "package/RecentPackages.h"

#include <windows.h>

#include <gtest/gtest.h>

using namespace viewer;

namespace {

// A registry key for one test.
class RecentPackagesTest : public testing::Test {
protected:
    RecentPackagesTest() { RegDeleteTreeW(HKEY_CURRENT_USER, kKey); }
    ~RecentPackagesTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, kKey); }

    static constexpr wchar_t kKey[] = L"Software\\MXOVDocView\\Test\\Viewer";
};

using Names = std::vector<std::wstring>;

} // namespace

TEST_F(RecentPackagesTest, BeginsEmpty) {
    EXPECT_EQ(RecentPackages(kKey).Items(), Names{});
}

TEST_F(RecentPackagesTest, TheNewestComesFirstAndOnlyOnce) {
    RecentPackages recent(kKey);
    recent.Add(L"C:\\a.mxov");
    recent.Add(L"C:\\b.mxov");
    recent.Add(L"C:\\A.MXOV");
    EXPECT_EQ(recent.Items(), (Names{L"C:\\A.MXOV", L"C:\\b.mxov"}));
}

TEST_F(RecentPackagesTest, IsThereAtTheNextStart) {
    RecentPackages(kKey).Add(L"C:\\one & two\\\u00fc.mxov");
    RecentPackages(kKey).Add(L"C:\\b.mxov");
    EXPECT_EQ(RecentPackages(kKey).Items(), (Names{L"C:\\b.mxov", L"C:\\one & two\\\u00fc.mxov"}));
}

TEST_F(RecentPackagesTest, KeepsNoMoreThanItShows) {
    RecentPackages recent(kKey);
    for (int i = 1; i <= 12; ++i) {
        recent.Add(L"C:\\" + std::to_wstring(i) + L".mxov");
    }
    ASSERT_EQ(recent.Items().size(), RecentPackages::kMost);
    EXPECT_EQ(recent.Items().front(), L"C:\\12.mxov");
    EXPECT_EQ(recent.Items().back(), L"C:\\4.mxov");
    EXPECT_EQ(RecentPackages(kKey).Items(), recent.Items());
}

TEST_F(RecentPackagesTest, ARemovedOneIsGoneAtTheNextStart) {
    RecentPackages recent(kKey);
    recent.Add(L"C:\\a.mxov");
    recent.Add(L"C:\\b.mxov");
    recent.Remove(L"c:\\A.mxov");
    EXPECT_EQ(recent.Items(), Names{L"C:\\b.mxov"});
    recent.Remove(L"C:\\b.mxov");
    EXPECT_EQ(RecentPackages(kKey).Items(), Names{});
}

TEST_F(RecentPackagesTest, AValueOfAnotherKindIsIgnored) {
    const DWORD number = 7;
    RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"RecentPackages", REG_DWORD, &number, sizeof number);
    EXPECT_EQ(RecentPackages(kKey).Items(), Names{});
}
