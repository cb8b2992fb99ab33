// Reading and changing packages, with reports of failures.
#pragma once

#include <care/compare/Comparison.h>

#include <mxovchange.h>

#include <optional>
#include <string>
#include <vector>

/// Reads directory and information file of a package file or of the folder of an unpacked one; prints the
/// reason and returns nothing when that fails.
std::optional<care::PackageContent> ReadPackage(const std::wstring& path);

/// Reads the content of some files of it; prints the reason and returns nothing when that fails.
std::optional<care::Texts> ReadTexts(const std::wstring& path, const std::vector<std::wstring>& names);

/// Changes a package into `target`, showing progress; prints the reason and returns false when that fails.
bool WriteChanged(const std::wstring& file, const std::wstring& target,
                  const mxovshare::PackageChanges& changes);

/// "4 files, 1 empty folder, 303512 bytes"
std::wstring Summary(const std::vector<mxovshare::PackageEntry>& entries);
