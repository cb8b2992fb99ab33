// Names and existence of files and folders.
#pragma once

#include <string>

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

/// Deletes a folder with everything in it, read-only files too; links inside are removed, never followed.
/// False when something of it is left.
bool RemoveFolder(const std::wstring& folder) noexcept;

} // namespace viewer
