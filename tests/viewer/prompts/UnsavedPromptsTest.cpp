#include "prompts/UnsavedPrompts.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

std::wstring ListOf(int count) {
    std::vector<FileChange> changes;
    for (int i = 1; i <= count; ++i) {
        changes.push_back({std::to_wstring(i) + L".nc", FileChangeKind::Changed});
    }
    return ListOfChanges(changes);
}

} // namespace

TEST(UnsavedPrompts, TheListOfChangesStaysShort) {
    EXPECT_EQ(ListOf(0), L"");
    EXPECT_EQ(ListOf(2), L"1.nc\n2.nc\n");
    EXPECT_EQ(ListOf(10), L"1.nc\n2.nc\n3.nc\n4.nc\n5.nc\n6.nc\n7.nc\n8.nc\n9.nc\n10.nc\n");
    EXPECT_EQ(ListOf(11), L"1.nc\n2.nc\n3.nc\n4.nc\n5.nc\n6.nc\n7.nc\n8.nc\n9.nc\nand 2 more\n");
}

TEST(UnsavedPrompts, NewAndRemovedFilesAreCalledSo) {
    EXPECT_EQ(ListOfChanges({{L"a.txt", FileChangeKind::Added}, {L"GCode\\b.nc", FileChangeKind::Removed}}),
              L"a.txt (new)\nGCode\\b.nc (removed)\n");
}
