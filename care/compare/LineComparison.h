// Comparing two texts line by line. Platform-free.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace care {

/// A line of a text for the comparison.
struct ComparedLine {
    std::string key;        ///< what has to be equal
    std::size_t number = 0; ///< from 1, in its file
    std::string_view text;
};

/// A line that only one of the texts has.
struct LineDifference {
    bool isRemoved = false; ///< of the first text, else of the second
    std::size_t number = 0;
    std::string text;
};

/// The lines that differ, in order: removed ones before those that take their place. When two texts differ in
/// more than `most` lines beyond their common beginning and end, everything between is taken for different.
std::vector<LineDifference> CompareLines(const std::vector<ComparedLine>& left,
                                         const std::vector<ComparedLine>& right, std::size_t most = 2000);

} // namespace care
