#include "core/Collections.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace {

using Numbers = CList<int, int>;

std::vector<int> Values(const Numbers& list) {
    std::vector<int> values;
    for (POSITION place = list.GetHeadPosition(); place;) {
        values.push_back(list.GetNext(place));
    }
    return values;
}

TEST(List, KeepsTheOrderOfInsertion) {
    Numbers list(10);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    list.AddTail(1);
    list.AddTail(2);
    list.AddTail(3);
    EXPECT_EQ(Values(list), (std::vector{1, 2, 3}));
    EXPECT_EQ(list.GetCount(), 3);
}

TEST(List, RemovesAnywhereAndLeavesOtherPositionsValid) {
    Numbers list;
    const POSITION one = list.AddTail(1);
    const POSITION two = list.AddTail(2);
    const POSITION three = list.AddTail(3);
    list.RemoveAt(two);
    EXPECT_EQ(Values(list), (std::vector{1, 3}));
    list.RemoveAt(three);
    list.AddTail(4);
    EXPECT_EQ(list.GetAt(one), 1);
    list.RemoveAt(one);
    EXPECT_EQ(Values(list), (std::vector{4}));
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    list.AddTail(5);
    EXPECT_EQ(Values(list), (std::vector{5}));
}

TEST(List, FindsByValue) {
    Numbers list;
    const POSITION first = list.AddTail(7);
    list.AddTail(8);
    const POSITION last = list.AddTail(7);
    EXPECT_EQ(list.Find(7), first);
    EXPECT_EQ(list.Find(7, first), last);
    EXPECT_EQ(list.Find(7, last), nullptr);
    EXPECT_EQ(list.Find(9), nullptr);
    list.GetAt(first) = 9;
    EXPECT_EQ(Values(list), (std::vector{9, 8, 7}));
}

TEST(Array, GrowsAndShrinks) {
    CArray<int, int> array;
    EXPECT_EQ(array.Add(1), 0);
    EXPECT_EQ(array.Add(2), 1);
    array.SetSize(4);
    EXPECT_EQ(array[3], 0);
    array[3] = 9;
    array.RemoveAt(0);
    array.RemoveAt(0, 2);
    EXPECT_EQ(array.GetCount(), 1);
    EXPECT_EQ(array.GetAt(0), 9);
    array.RemoveAll();
    EXPECT_TRUE(array.IsEmpty());
}

TEST(Array, RefusesPlacesOutside) {
    CArray<int, int> array;
    EXPECT_THROW(array.GetAt(0), std::out_of_range);
    EXPECT_THROW(array[-1], std::out_of_range);
}

} // namespace
