// The catalogue of a package that was unpacked into a folder.
#pragma once

#include "CatalogueSource.h"

namespace docview {

/// Reads an information file through the host's shared library and asks the file system about its documents.
class DiskCatalogueSource final : public CatalogueSource {
public:
    /// The file need not exist: every value is then empty.
    explicit DiskCatalogueSource(std::wstring informationFile);

    std::wstring Value(const std::wstring& section, const std::wstring& key) const override;
    std::vector<std::wstring> SectionNames(const std::wstring& prefix) const override;
    FileStatus Status(const std::wstring& path) const override;
    int FileSize(const std::wstring& path) const override;
    std::vector<std::wstring> FileNames(const std::wstring& folder) const override;

private:
    std::wstring m_informationFile;
};

} // namespace docview
