// What the commands read of a package.
#pragma once

#include <mxovchange.h>

#include <optional>
#include <string>
#include <vector>

/// The directory and the information file of a package.
struct PackageView {
    std::vector<mxovshare::PackageEntry> entries;
    std::vector<mxovshare::InformationSection> sections;
};

/// Reads them; prints the reason and returns nothing when that fails.
std::optional<PackageView> ReadPackage(const std::wstring& file);

/// Changes a package into `target`, showing progress; prints the reason and returns false when that fails.
bool WriteChanged(const std::wstring& file, const std::wstring& target,
                  const mxovshare::PackageChanges& changes);

/// "4 files, 1 empty folder, 303512 bytes"
std::wstring Summary(const std::vector<mxovshare::PackageEntry>& entries);
