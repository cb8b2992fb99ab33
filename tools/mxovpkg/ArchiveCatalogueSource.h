// The catalogue of a package that is not unpacked.
#pragma once

#include <mxovpackage.h>
#include <package/DiskCatalogueSource.h>

#include <map>

/// Answers from the package's directory and information file as if it were unpacked into kFolder. Other full
/// paths are looked up on the disk, where links lead.
class ArchiveCatalogueSource final : public CatalogueSource {
public:
    /// Stands for the package folder, with its trailing separator; no file system has such a name.
    static const std::wstring kFolder;

    ArchiveCatalogueSource(const std::vector<mxovshare::PackageEntry>& entries,
                           std::vector<mxovshare::InformationSection> sections);

    std::wstring Value(const std::wstring& section, const std::wstring& key) const override;
    std::vector<std::wstring> SectionNames(const std::wstring& prefix) const override;
    FileStatus Status(const std::wstring& path) const override;
    int FileSize(const std::wstring& path) const override;
    std::vector<std::wstring> FileNames(const std::wstring& folder) const override;

private:
    /// Names compare as on the disk, so what is listed comes in the order of the file system.
    struct ByName {
        bool operator()(const std::wstring& left, const std::wstring& right) const;
    };

    std::map<std::wstring, FileStatus, ByName> m_files; ///< by path relative to the package folder
    std::vector<mxovshare::InformationSection> m_sections;
    DiskCatalogueSource m_disk{{}}; ///< only asked about files
};
