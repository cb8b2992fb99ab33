// What differs between two packages, in the words of their users.
#pragma once

#include "document/TextLines.h"

#include <care/compare/Comparison.h>

#include <optional>
#include <string>
#include <vector>

#include <windows.h>

namespace viewer {

/// One line of the list.
struct DifferenceLine {
    std::wstring kind;                     ///< such as "Document added"
    std::wstring name;                     ///< of the document, property or entry
    std::wstring details;                  ///< the first line is enough in a list
    std::wstring file = {};                ///< in both packages, of a changed text; empty for anything else
    std::optional<TextKind> textKind = {}; ///< of that text
};

/// Documents first, then properties and the history.
[[nodiscard]] std::vector<DifferenceLine> DescribeDifferences(const care::PackageContent& before,
                                                              const care::PackageContent& after,
                                                              const care::Comparison& comparison);

/// A changed file as one line.
[[nodiscard]] DifferenceLine DescribeChangedFile(const care::FileChange& change, UINT kind);

} // namespace viewer
