// Names for copies of documents in a package.
#pragma once

#include "care/Information.h"

#include <set>

namespace care {

/// Hands out names in the folder of copies that no other file or document of the package has.
class CopyNames {
public:
    CopyNames(const Sections& sections, const std::vector<mxovshare::PackageEntry>& entries);

    /// "ReferanceFiles\plan.pdf", or "ReferanceFiles\plan (2).pdf" if that is taken, and so on.
    std::wstring Take(const std::wstring& fileName);
    /// Whether a path relative to the package folder is taken.
    bool IsTaken(const std::wstring& path) const { return m_taken.contains(path); }

private:
    std::set<std::wstring, NameLess> m_taken;
};

} // namespace care
