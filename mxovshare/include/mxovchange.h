// Changing package files without unpacking them, for hosts and tools. Nothing here throws.
#pragma once

#include "mxovpackage.h"

#include <functional>

namespace mxovshare {

/// Sets a key of the information file; without a key removes the section.
struct InformationChange {
    std::wstring section;
    std::wstring key;
    std::wstring value;
};

/// A file that is packed under `name`, relative to the package folder and separated by "\". It replaces the
/// entry of that name.
struct AddedFile {
    std::wstring name;
    std::wstring path;
};

/// The changes of one ChangePackage.
struct PackageChanges {
    std::vector<AddedFile> added;
    std::vector<std::wstring> removed;          ///< names of files as ListPackage lists them
    std::vector<InformationChange> information; ///< applied in order
    std::wstring operation;                     ///< of the history entry to be added; empty for none
    std::wstring remarks;                       ///< of the same entry
};

/// Writes the package `file` with some changes to `target`, which may be the same file. The new package is
/// written beside the target, read back, verified, and replaces it in one step; on failure or cancel the
/// target stays as it was. The packed data of unchanged entries is copied. Fails when the target is the same
/// file and another program changed it meanwhile. A package without an information file gets one when a key
/// of it is set.
MXOVSHARE_API PackageResult ChangePackage(const std::wstring& file, const std::wstring& target,
                                          const PackageChanges& changes,
                                          PackageProgress* progress = nullptr) noexcept;

/// Lists what a package contains, and its information file. `path` is a package file, or a folder as
/// CreatePackage would pack it, whose entries have a checksum and no packed size.
MXOVSHARE_API PackageResult ReadContent(const std::wstring& path, std::vector<PackageEntry>& entries,
                                        Information& information,
                                        PackageProgress* progress = nullptr) noexcept;

/// Passes the content of some files to `take`, in the order of their names, which are as ReadContent lists
/// them. Fails for a file that is longer than `limit` bytes or that is missing.
MXOVSHARE_API PackageResult
ReadContentFiles(const std::wstring& path, const std::vector<std::wstring>& names, std::uint64_t limit,
                 const std::function<void(const std::wstring& name, std::string bytes)>& take) noexcept;

} // namespace mxovshare
