// The paths of a package to files outside it.
#pragma once

#include "care/Information.h"

#include <optional>

namespace care {

/// A key of the information file that holds a path to a file outside the package.
struct Link {
    std::wstring section;
    std::wstring key;
    std::wstring path;
    std::wstring description; ///< of the document
};

/// The part first, then the linked documents in their order. Empty paths are left out.
std::vector<Link> LinksOf(const Sections& sections);

/// A link and the path that it gets.
struct Relinked {
    Link link;
    std::wstring path;
};

/// The links to `from` or below it, with `to` in its place. Both are full paths; case, kind and number of
/// separators at the end of `from` do not matter.
std::vector<Relinked> Relink(const Sections& sections, const std::wstring& from, const std::wstring& to);

/// Where the file `other` lies now if it moved together with `from`, which is `to` now; none unless it lay
/// below the folder that moved.
std::optional<std::wstring> MovedWith(const std::wstring& other, const std::wstring& from,
                                      const std::wstring& to);

/// Whether a path begins with a drive and its root, or with the name of another computer.
bool IsFullPath(std::wstring_view path);

} // namespace care
