// The folders that this process unpacked packages into: whether another process changed a package file since,
// and whether the folder's last save failed.
#pragma once

#include <string>

namespace mxovshare {

/// Identifies one state of a package file in one word: size, last write and identity. Empty for a file that
/// does not exist or cannot be queried.
std::wstring StampOfPackage(const std::wstring& file);

/// Records that `folder` holds the content of the package `file` as of `stamp`.
void RecordFolder(const std::wstring& folder, const std::wstring& file, const std::wstring& stamp);

/// What SetSaveRemarks stored for a folder and no save has used yet.
std::wstring SaveRemarks(const std::wstring& folder);

/// Records whether saving `folder` to the package `file` succeeded. A failure that cannot be recorded
/// because memory is exhausted counts for every folder.
void RecordSave(const std::wstring& folder, const std::wstring& file, bool ok) noexcept;

/// Asks the user before a save replaces a package file that others changed.
class ReplacementGuard {
public:
    /// Expects the state of `file` that `folder` was unpacked from or saved to, or its present state if this
    /// process never did either.
    ReplacementGuard(const std::wstring& folder, const std::wstring& file);

    /// Asks when the file exists in a state that is neither expected nor was confirmed before. Throws
    /// Cancelled when the user declines.
    void Confirm();

private:
    std::wstring m_file;
    std::wstring m_expected;
};

} // namespace mxovshare
