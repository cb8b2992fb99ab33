// Additional documents as changes of a package.
#pragma once

#include "care/Information.h"

#include <mxovchange.h>

namespace care {

/// What the section of an additional document holds.
struct Document {
    std::wstring section;
    bool isCopy = false;
    std::wstring description;
    std::wstring timestamp;
    std::wstring path;
};

/// Adds the keys of a document in the order in which the format has them.
void AddDocument(const Document& document, mxovshare::PackageChanges& changes);

} // namespace care
