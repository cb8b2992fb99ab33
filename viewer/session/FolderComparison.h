// Whether a folder still holds what its package holds.
#pragma once

#include "mxovpackage.h"

#include <string>
#include <vector>

namespace viewer {

enum class FileChangeKind { Changed, Added, Removed };

/// A file of a folder that is not as its package has it.
struct FileChange {
    std::wstring name; ///< relative to the folder
    FileChangeKind kind = FileChangeKind::Changed;
};

/// Whether the control itself makes such a change: to the information file, and to copies that it attaches
/// and removes.
[[nodiscard]] bool IsControlChange(const FileChange& change);

/// The files below `folder` that differ from the package with these entries, by name. Fast: a file of the
/// entry's size and last write counts as the same, and only one of its size but another time is read. Locks
/// of office programs do not count.
[[nodiscard]] std::vector<FileChange> FindChanges(const std::wstring& folder,
                                                  const std::vector<mxovshare::PackageEntry>& entries);

/// The files below `folder` beside which an office program keeps a lock, relative to the folder.
[[nodiscard]] std::vector<std::wstring> FindOpenDocuments(const std::wstring& folder);

/// Whether the files below `folder` differ from those in the package in any name, size or content; all are
/// read. A package that is not there or cannot be read counts as different.
[[nodiscard]] bool DiffersFromPackage(const std::wstring& folder, const std::wstring& packageFile);

/// When a file below `folder` was last written, UTC; all zero when there is none.
[[nodiscard]] FILETIME LastWriteBelow(const std::wstring& folder);

} // namespace viewer
