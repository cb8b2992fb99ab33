#include "care/FileSearch.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

TEST(FileSearch, FindsANameBelowAFolder) {
    const TempFolder folder;
    folder.Write(L"plan.pdf.bak", "");
    folder.Write(L"deep\\er\\PLAN.pdf", "");
    folder.Write(L"other\\plan.pdf", "");
    folder.Write(L"other\\plan.pdf.txt", "");
    ASSERT_TRUE(CreateDirectoryW((folder / L"other\\more").c_str(), nullptr));
    ASSERT_TRUE(CreateDirectoryW((folder / L"other\\more\\plan.pdf").c_str(), nullptr));
    WorkProgress progress;
    EXPECT_EQ(FindBelow(folder.PathWithSeparator(), L"plan.pdf", progress),
              (std::vector{folder / L"deep\\er\\PLAN.pdf", folder / L"other\\plan.pdf"}));
    EXPECT_TRUE(FindBelow(folder / L"none", L"plan.pdf", progress).empty());
}

TEST(FileSearch, EndsWithAMenuFull) {
    const TempFolder folder;
    for (int i = 0; i < 30; ++i) {
        folder.Write(std::to_wstring(i) + L"\\plan.pdf", "");
    }
    WorkProgress progress;
    EXPECT_EQ(FindBelow(folder.Path(), L"plan.pdf", progress).size(), 20u);
}

TEST(FileSearch, CancelledItLooksNoFurther) {
    const TempFolder folder;
    folder.Write(L"plan.pdf", "");
    WorkProgress progress;
    progress.Cancel();
    EXPECT_TRUE(FindBelow(folder.Path(), L"plan.pdf", progress).empty());
}
