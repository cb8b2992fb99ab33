// What this process knows about the folders that packages were unpacked into: it is what tells that somebody
// else changed a package file meanwhile, and that a folder's last save failed.
#pragma once

#include <string>

namespace mxovshare {

/// What tells one state of a package file from another, as one word: size, last write and identity. Empty for
/// a file that is not there or cannot be asked.
std::wstring StampOfPackage(const std::wstring& file);

/// Notes that `folder` holds what the package `file` held when its stamp was `stamp`.
void NoteFolder(const std::wstring& folder, const std::wstring& file, const std::wstring& stamp);

/// Notes how the saving of `folder` to the package `file` ended.
void NoteSave(const std::wstring& folder, const std::wstring& file, bool ok);

/// Asks the user whether to replace a package file that is not any more the one that `folder` came from.
/// Throws Cancelled when the user does not want that.
void ConfirmReplacement(const std::wstring& folder, const std::wstring& file);

} // namespace mxovshare
