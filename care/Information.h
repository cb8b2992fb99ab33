// Questions about the information file of a package that was read into memory.
#pragma once

#include <mxovpackage.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace care {

using Section = mxovshare::InformationSection;
using Sections = mxovshare::Information;

/// Compares names as the file system does: less than, equal to or greater than 0.
int CompareNames(std::wstring_view left, std::wstring_view right) noexcept;

/// Orders names in that way.
struct NameLess {
    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept {
        return CompareNames(left, right) < 0;
    }
};

/// A package, as its directory and its information file show it.
struct PackageContent {
    std::vector<mxovshare::PackageEntry> entries;
    Sections sections;
};

/// The value of a key; empty without one. Names compare without regard to case.
std::wstring ValueOf(const Section& section, std::wstring_view key);

/// The keys and values of a section, sorted by key; they point into it.
std::vector<const std::pair<std::wstring, std::wstring>*> ValuesByKey(const Section& section);

/// Whether a section describes an additional document.
bool IsAdditional(const Section& section);
/// Whether an additional document lies in the package; otherwise it is a link.
bool IsCopy(const Section& section);

/// The name of a new section, numbered one higher than the highest "PREFIX_n".
std::wstring NextSection(const Sections& sections, const std::wstring& prefix);

/// The part of a path behind the last "\" or "/".
std::wstring LastName(const std::wstring& path);

/// Whether a name begins with a prefix, without regard to case.
bool HasPrefix(std::wstring_view text, std::wstring_view prefix);

} // namespace care
