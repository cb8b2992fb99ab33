#include "DiskCatalogueSource.h"

#include "common/Handles.h"

#include <utility>

#include <mxovshare.h>

namespace docview {

namespace {

/// Suppresses the system's prompt for a disk while a path on an empty drive is checked.
class NoDiskPrompts {
public:
    NoDiskPrompts() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &m_previous); }
    ~NoDiskPrompts() { SetThreadErrorMode(m_previous, nullptr); }
    NoDiskPrompts(const NoDiskPrompts&) = delete;
    NoDiskPrompts& operator=(const NoDiskPrompts&) = delete;

private:
    DWORD m_previous = 0;
};

/// Whether an error means that the other computer, and not its file system, was the obstacle. The system
/// reports these only after it has waited.
bool IsTimeOut(DWORD error) {
    switch (error) {
    case ERROR_REM_NOT_LIST:
    case ERROR_BAD_NETPATH:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_UNEXP_NET_ERR:
    case ERROR_NETNAME_DELETED:
    case ERROR_SEM_TIMEOUT:
    case ERROR_NETWORK_UNREACHABLE:
    case ERROR_HOST_UNREACHABLE:
    case ERROR_CONNECTION_REFUSED:
        return true;
    default:
        return false;
    }
}

} // namespace

DiskCatalogueSource::DiskCatalogueSource(std::wstring informationFile)
    : m_informationFile(std::move(informationFile)) {}

std::wstring DiskCatalogueSource::Value(const std::wstring& section, const std::wstring& key) const {
    return mxovshare::INIFile::GetKeyValueFromINI(section, key, m_informationFile);
}

std::vector<std::wstring> DiskCatalogueSource::SectionNames(const std::wstring& prefix) const {
    return mxovshare::INIFile::GetSectionNamesFromINI(prefix, m_informationFile);
}

FileStatus DiskCatalogueSource::Status(const std::wstring& path) const {
    const NoDiskPrompts noPrompts;
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) {
        return {.noAnswer = IsTimeOut(GetLastError())};
    }
    return {.exists = true,
            .isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
            .size = (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow,
            .lastWrite = data.ftLastWriteTime};
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
