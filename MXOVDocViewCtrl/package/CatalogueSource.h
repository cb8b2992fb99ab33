// Where the catalogue is read from: an information file and the files that it names.
#pragma once

#include "FileStatus.h"

#include <string>
#include <vector>

namespace docview {

/// The reading side of a package. Paths are formed by the loader by plain concatenation from the package
/// folder it was given, so they may contain a doubled "\", which every source must accept as the file system
/// does.
class CatalogueSource {
public:
    CatalogueSource() = default;
    CatalogueSource(const CatalogueSource&) = delete;
    CatalogueSource& operator=(const CatalogueSource&) = delete;
    virtual ~CatalogueSource() = default;

    /// Value of a key of the information file; empty when section or key is absent.
    virtual std::wstring Value(const std::wstring& section, const std::wstring& key) const = 0;

    /// Names of all sections that begin with the prefix, in order of appearance.
    virtual std::vector<std::wstring> SectionNames(const std::wstring& prefix) const = 0;

    /// Existence, kind, size and time of a file or folder, in one query.
    virtual FileStatus Status(const std::wstring& path) const = 0;

    /// Size in bytes of a file whose status is not known: 0 for a missing one, 2147483647 for one that does
    /// not fit.
    virtual int FileSize(const std::wstring& path) const = 0;

    /// Names, without the folder, of the files directly inside a folder, in the order in which the file
    /// system lists them. Folders are left out; a folder that cannot be listed has no files.
    virtual std::vector<std::wstring> FileNames(const std::wstring& folder) const = 0;
};

} // namespace docview
