#include "files/FolderSearch.h"

#include "common/LongPath.h"
#include "files/FileFailure.h"
#include "files/FolderPath.h"

#include <string_view>

namespace mxovshare {

namespace {

bool IsDots(std::wstring_view name) {
    return name == L"." || name == L"..";
}

} // namespace

FolderSearch::FolderSearch(const std::wstring& folder)
    : m_folder(folder),
      m_search(common::OwnSearch(FindFirstFileExW(common::LongPath(JoinPath(folder, L"*")).c_str(),
                                                  FindExInfoBasic, &m_data, FindExSearchNameMatch, nullptr,
                                                  FIND_FIRST_EX_LARGE_FETCH))) {
    Check(m_search != nullptr);
}

void FolderSearch::Next() {
    Check(FindNextFileW(m_search.get(), &m_data) != FALSE);
}

void FolderSearch::Check(bool found) {
    while (found && IsDots(m_data.cFileName)) {
        found = FindNextFileW(m_search.get(), &m_data) != FALSE;
    }
    m_found = found;
    const DWORD error = found ? ERROR_SUCCESS : GetLastError();
    if (error != ERROR_SUCCESS && error != ERROR_NO_MORE_FILES && error != ERROR_FILE_NOT_FOUND) {
        ThrowFileFailure(L"cannot list", m_folder, error);
    }
}

} // namespace mxovshare
