// Reads the catalogue from a package without unpacking it.
#pragma once

#include <mxovpackage.h>
#include <package/CatalogueSource.h>

#include <vector>

/// Uses the package's directory and information file as if it were unpacked into kFolder. Other paths that
/// begin with a drive, those of links, are looked up on the disk; no other computer is asked. Both must
/// outlive it.
class ArchiveCatalogueSource final : public docview::CatalogueSource {
public:
    /// Represents the package folder, with its trailing separator; no file system allows such a name.
    static const std::wstring kFolder;

    ArchiveCatalogueSource(const std::vector<mxovshare::PackageEntry>& entries,
                           const mxovshare::Information& information);

    std::wstring Value(const std::wstring& section, const std::wstring& key) const override;
    std::vector<std::wstring> SectionNames(const std::wstring& prefix) const override;
    docview::FileStatus Status(const std::wstring& path) const override;
    int FileSize(const std::wstring& path) const override;
    std::vector<std::wstring> FileNames(const std::wstring& folder) const override;

private:
    using Entries = std::vector<const mxovshare::PackageEntry*>;

    /// The first entry that does not sort before a path relative to the package folder.
    Entries::const_iterator LowerBound(const std::wstring& path) const;

    /// In the order of the file system. The entries of a folder are adjacent; the folder itself may have
    /// none.
    Entries m_entries;
    const mxovshare::Information& m_information;
};
