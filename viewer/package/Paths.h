// Names and existence of files and folders.
#pragma once

#include <string>
#include <vector>

#include <windows.h>

namespace viewer {

/// The part behind the last separator.
[[nodiscard]] std::wstring FileName(const std::wstring& path);

/// The part before the last separator.
[[nodiscard]] std::wstring ParentFolder(const std::wstring& path);

/// The file's name without its extension.
[[nodiscard]] std::wstring FileStem(const std::wstring& path);

/// Whether a path has the extension of package files.
[[nodiscard]] bool IsPackageName(const std::wstring& path);

/// Whether a file (not a folder) of that name exists.
[[nodiscard]] bool FileExists(const std::wstring& path);

/// Whether a folder of that name exists.
[[nodiscard]] bool FolderExists(const std::wstring& path);

/// When a file was last written, UTC; all zero when it cannot be found.
[[nodiscard]] FILETIME LastWriteOf(const std::wstring& file);

/// A file or folder in a folder.
struct FolderEntry {
    std::wstring name;
    bool isFolder = false;
    bool isLink = false; ///< to a file or folder elsewhere
};

/// The entries of a folder, without "." and ".."; none when it cannot be listed.
[[nodiscard]] std::vector<FolderEntry> EntriesOf(const std::wstring& folder);

/// Creates a folder, and those above it that do not exist. False when it does not exist afterwards.
bool MakeFolders(const std::wstring& folder);

/// Deletes a folder with everything in it, read-only files too; links inside are removed, never followed.
/// False when something of it is left.
bool RemoveFolder(const std::wstring& folder) noexcept;

} // namespace viewer
