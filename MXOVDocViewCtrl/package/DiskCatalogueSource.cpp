#include "DiskCatalogueSource.h"

#include "common/Handles.h"
#include "NoDiskPrompts.h"

#include <utility>

#include <mxovshare.h>

namespace docview {

DiskCatalogueSource::DiskCatalogueSource(std::wstring informationFile)
    : m_informationFile(std::move(informationFile)) {}

std::wstring DiskCatalogueSource::Value(const std::wstring& section, const std::wstring& key) const {
    return mxovshare::INIFile::GetKeyValueFromINI(section, key, m_informationFile);
}

std::vector<std::wstring> DiskCatalogueSource::SectionNames(const std::wstring& prefix) const {
    return mxovshare::INIFile::GetSectionNamesFromINI(prefix, m_informationFile);
}

FileStatus DiskCatalogueSource::Status(const std::wstring& path) const {
    return StatusOfFile(path);
}

int DiskCatalogueSource::FileSize(const std::wstring& path) const {
    return mxovshare::File::GetFileSize(path);
}

std::vector<std::wstring> DiskCatalogueSource::FileNames(const std::wstring& folder) const {
    const NoDiskPrompts noPrompts;
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW data = {};
    const common::UniqueSearch search = common::OwnSearch(FindFirstFileW((folder + L"\\*").c_str(), &data));
    if (!search) {
        return names;
    }
    do {
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            names.emplace_back(data.cFileName);
        }
    } while (FindNextFileW(search.get(), &data));
    return names;
}

} // namespace docview
