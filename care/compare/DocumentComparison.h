// Which additional documents differ between two packages.
#pragma once

#include "care/Documents.h"

#include <optional>

namespace care {

/// A document that only one package has, or whose link, kind, description or date differs.
struct DocumentChange {
    std::optional<Document> before;
    std::optional<Document> after;
};

/// Documents belong together when they have the same path, wherever they stand in the list; else when they
/// have the same section, and both are links or their files have the same name. In the order of the second
/// package, removed ones at the end.
std::vector<DocumentChange> CompareDocuments(const Sections& left, const Sections& right);

} // namespace care
