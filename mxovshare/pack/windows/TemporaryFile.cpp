#include "pack/TemporaryFile.h"

#include "files/FileFailure.h"

namespace mxovshare {

TemporaryFile::TemporaryFile() {
    wchar_t folder[MAX_PATH + 1] = {};
    wchar_t path[MAX_PATH] = {};
    if (GetTempPathW(static_cast<DWORD>(std::size(folder)), folder) == 0 ||
        GetTempFileNameW(folder, L"mxo", 0, path) == 0) {
        ThrowFileFailure(L"cannot create a temporary file in", folder, GetLastError());
    }
    m_path = path;
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    m_handle = common::OwnFile(CreateFileW(path, GENERIC_READ | GENERIC_WRITE | DELETE, kShareAll, nullptr,
                                           CREATE_ALWAYS,
                                           FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    if (!m_handle) {
        const DWORD error = GetLastError();
        DeleteFileW(path);
        ThrowFileFailure(L"cannot create", m_path, error);
    }
    m_file.emplace(m_handle.get(), m_path);
}

} // namespace mxovshare
