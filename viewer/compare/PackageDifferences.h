// What differs between a package and what is open.
#pragma once

#include "compare/DifferenceLines.h"
#include "compare/TextPair.h"
#include "session/WorkProgress.h"

namespace viewer {

/// Package files, or the folders of unpacked ones.
struct ComparedPackages {
    std::wstring before;
    std::wstring after;
    std::wstring beforeTitle; ///< above its texts
    std::wstring afterTitle;
    std::wstring summary; ///< above the list of differences
};

struct DifferenceReport {
    mxovshare::PackageResult result;
    std::vector<DifferenceLine> lines;
    std::vector<DifferenceLine> noise; ///< G-code that differs in numbers, comments and blanks only
};

/// Compares the packages. G-code is compared line by line without numbers, comments and blanks. Reads every
/// file of a folder.
[[nodiscard]] DifferenceReport ComparePackages(const ComparedPackages& packages, WorkProgress& progress);

struct TextPairReport {
    mxovshare::PackageResult result;
    TextPair texts;
};

/// Reads both texts of a line that has some. Fails for files above 16 MB and for those that hold no text.
[[nodiscard]] TextPairReport ReadTextPair(const ComparedPackages& packages, const DifferenceLine& line);

} // namespace viewer
