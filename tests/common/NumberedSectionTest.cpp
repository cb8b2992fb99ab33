#include "common/NumberedSection.h"

#include <gtest/gtest.h>

#include <vector>

using common::NextSection;

TEST(NumberedSection, IsOneHigherThanTheHighest) {
    const auto names = []() -> std::vector<std::wstring> {
        ADD_FAILURE() << "the names do not matter";
        return {};
    };
    EXPECT_EQ(NextSection(L"FILE", 0, names), L"FILE_1");
    EXPECT_EQ(NextSection(L"FILE", 2147483646, names), L"FILE_2147483647");
}

TEST(NumberedSection, IsTheHighestFreeOneAtTheLimit) {
    std::vector<std::wstring> names = {L"FILE", L"file_2147483647", L"FILE_1", L"FILE_2147483646"};
    EXPECT_EQ(NextSection(L"FILE", 2147483647, [&] { return names; }), L"FILE_2147483645");
}
