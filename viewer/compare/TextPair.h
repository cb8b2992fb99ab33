// Two texts of one document, arranged to be shown beside each other.
#pragma once

#include "document/TextLines.h"

namespace viewer {

struct TextPair {
    std::wstring before;
    std::wstring after;
    TextKind kind = TextKind::Plain;
};

/// Rows that differ without an equal one between them.
struct RowRange {
    std::size_t first = 0;
    std::size_t end = 0; ///< behind the last one
    bool operator==(const RowRange&) const = default;
};

/// Both columns have the same number of rows.
struct TextColumns {
    std::vector<TextLine> before;
    std::vector<TextLine> after;
    std::vector<RowRange> differences;
};

/// Aligns two texts. In G-code, numbers of blocks, comments and blanks count only with `isPlain`.
[[nodiscard]] TextColumns ArrangeTexts(const TextPair& texts, bool isPlain);

} // namespace viewer
