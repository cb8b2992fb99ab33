// Small questions about paths and files.
#pragma once

#include <string>

namespace viewer {

/// The absolute form of a path, taken from the current folder when it is relative.
[[nodiscard]] std::wstring FullPath(const std::wstring& path);

/// The form of an absolute path that is not limited to 260 characters.
[[nodiscard]] std::wstring LongForm(const std::wstring& path);

/// The part behind the last separator.
[[nodiscard]] std::wstring FileName(const std::wstring& path);

/// The file's name without its extension.
[[nodiscard]] std::wstring FileStem(const std::wstring& path);

/// Whether a file (not a folder) of that name exists.
[[nodiscard]] bool FileExists(const std::wstring& path);

/// Whether a folder of that name exists.
[[nodiscard]] bool FolderExists(const std::wstring& path);

/// Whether both texts name the same path but for case.
[[nodiscard]] bool SamePath(const std::wstring& left, const std::wstring& right);

/// The folder of the running program, without a separator at the end.
[[nodiscard]] std::wstring ProgramFolder();

/// Deletes a folder with everything in it, read-only files too; links inside are removed, never followed.
/// False when something of it is left.
bool RemoveFolder(const std::wstring& folder) noexcept;

/// The system's text for an error code, without a line end.
[[nodiscard]] std::wstring ErrorText(unsigned long code);

} // namespace viewer
