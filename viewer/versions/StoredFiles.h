// The files that were new in one version, packed.
#pragma once

#include "mxovchange.h"
#include "versions/Version.h"

#include <care/Information.h>

#include <map>
#include <set>

namespace viewer {

/// Compared as the file system does.
using FileNames = std::set<std::wstring, care::NameLess>;

class StoredFiles {
public:
    /// Lists a package of them.
    [[nodiscard]] mxovshare::PackageResult Read(const std::wstring& contents);

    /// Whether it holds a file with its size and checksum.
    [[nodiscard]] bool Holds(const KeptFile& file) const;

    /// What removes all files from it but those of `names`.
    [[nodiscard]] mxovshare::PackageChanges Without(const FileNames& names) const;

    /// Bytes that some of its files take in it.
    [[nodiscard]] std::uint64_t PackedSize(const std::vector<std::wstring>& names) const;

    /// Bytes that all of them take.
    [[nodiscard]] std::uint64_t PackedSize() const;

private:
    std::map<std::wstring, mxovshare::PackageEntry, care::NameLess> m_files;
};

} // namespace viewer
