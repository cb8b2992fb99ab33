// Whether a folder still holds what its package holds.
#pragma once

#include <windows.h>

#include <string>

/// Whether the files below `folder` differ from those in the package in any name, size or content. A package
/// that is not there or cannot be read counts as different.
[[nodiscard]] bool DiffersFromPackage(const std::wstring& folder, const std::wstring& packageFile);

/// When a file below `folder` was last written, UTC; all zero when there is none.
[[nodiscard]] FILETIME LastWriteBelow(const std::wstring& folder);
