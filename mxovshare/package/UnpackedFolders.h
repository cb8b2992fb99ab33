// The folders that this process unpacked packages into: whether another process changed a package file since,
// and whether the folder's last save failed.
#pragma once

#include <string>

namespace mxovshare {

/// The stamp of a package file that the folder was unpacked from or saved to; empty for another file.
std::wstring RecordedStamp(const std::wstring& folder, const std::wstring& file);

/// Records that `folder` holds the content of the package `file` as of `stamp`.
void RecordFolder(const std::wstring& folder, const std::wstring& file, const std::wstring& stamp);

/// What SetSaveRemarks stored for a folder and no save has used yet.
std::wstring SaveRemarks(const std::wstring& folder);

/// Records whether saving `folder` to the package `file` succeeded. A failure that cannot be recorded
/// because memory is exhausted counts for every folder.
void RecordSave(const std::wstring& folder, const std::wstring& file, bool ok) noexcept;

} // namespace mxovshare
