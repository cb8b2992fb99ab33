#include "files/FolderSearch.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "files/FileFailure.h"
#include "files/FolderPath.h"

#include <string_view>

namespace mxovshare {

struct FolderSearch::Search {
    explicit Search(const std::wstring& folder)
        : handle(common::OwnSearch(FindFirstFileExW(common::LongPath(JoinPath(folder, L"*")).c_str(),
                                                    FindExInfoBasic, &data, FindExSearchNameMatch, nullptr,
                                                    FIND_FIRST_EX_LARGE_FETCH))) {}

    bool IsAtDots() const {
        const std::wstring_view name = data.cFileName;
        return name == L"." || name == L"..";
    }
    bool Next() { return FindNextFileW(handle.get(), &data) != FALSE; }

    WIN32_FIND_DATAW data = {};
    common::UniqueSearch handle;
};

namespace {

void Describe(const WIN32_FIND_DATAW& data, FolderEntry& entry) {
    entry.name = data.cFileName;
    entry.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry.isRedirected = (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    entry.isLink = entry.isRedirected && (data.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
                                          data.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
    entry.attributes = static_cast<std::uint8_t>(data.dwFileAttributes);
    entry.size = std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
    entry.written = data.ftLastWriteTime;
}

} // namespace

FolderSearch::FolderSearch(const std::wstring& folder)
    : m_folder(folder), m_search(std::make_unique<Search>(folder)) {
    Take(m_search->handle != nullptr);
}

FolderSearch::~FolderSearch() = default;

void FolderSearch::Next() {
    Take(m_search->Next());
}

void FolderSearch::Take(bool found) {
    while (found && m_search->IsAtDots()) {
        found = m_search->Next();
    }
    m_found = found;
    const DWORD error = found ? ERROR_SUCCESS : GetLastError();
    if (error != ERROR_SUCCESS && error != ERROR_NO_MORE_FILES && error != ERROR_FILE_NOT_FOUND) {
        ThrowFileFailure(L"cannot list", m_folder, error);
    }
    if (found) {
        Describe(m_search->data, m_entry);
    }
}

} // namespace mxovshare
