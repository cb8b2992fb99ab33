// The catalogue of a package that is not unpacked.
#pragma once

#include <mxovpackage.h>
#include <package/DiskCatalogueSource.h>

#include <vector>

/// Answers from the package's directory and information file as if it were unpacked into kFolder. Other full
/// paths are looked up on the disk, where links lead.
class ArchiveCatalogueSource final : public CatalogueSource {
public:
    /// Stands for the package folder, with its trailing separator; no file system has such a name.
    static const std::wstring kFolder;

    ArchiveCatalogueSource(std::vector<mxovshare::PackageEntry> entries,
                           std::vector<mxovshare::InformationSection> sections);

    std::wstring Value(const std::wstring& section, const std::wstring& key) const override;
    std::vector<std::wstring> SectionNames(const std::wstring& prefix) const override;
    FileStatus Status(const std::wstring& path) const override;
    int FileSize(const std::wstring& path) const override;
    std::vector<std::wstring> FileNames(const std::wstring& folder) const override;

private:
    using Entries = std::vector<mxovshare::PackageEntry>;

    /// The first entry that is not before a path relative to the package folder.
    Entries::const_iterator LowerBound(const std::wstring& path) const;

    /// In the order of the file system. What lies in a folder stands together; the folder itself may have no
    /// entry.
    Entries m_entries;
    std::vector<mxovshare::InformationSection> m_sections; ///< in their order in the file
    std::vector<std::size_t> m_sectionsByName;             ///< their numbers
    DiskCatalogueSource m_disk{{}};                        ///< only asked about files
};
