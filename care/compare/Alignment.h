// Two texts beside each other, line by line. Platform-free.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace care {

enum class RowKind { Same, Removed, Added, Changed };

/// What stands in one row. Lines count from 1; 0 is a gap, where only the other text has a line.
struct AlignedRow {
    RowKind kind = RowKind::Same;
    std::size_t left = 0;
    std::size_t right = 0;
    bool operator==(const AlignedRow&) const = default;
};

/// Every line of both texts once, in order. Equal lines share a row, as do lines that take the place of each
/// other. `isPlain` is as for LinesOf; lines that hold nothing but noise are never different.
std::vector<AlignedRow> AlignTexts(std::string_view left, std::string_view right, bool isPlain);

} // namespace care
