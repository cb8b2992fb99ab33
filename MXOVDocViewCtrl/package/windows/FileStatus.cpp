#include "package/FileStatus.h"

#include "package/NoDiskPrompts.h"

namespace docview {

namespace {

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

FileStatus StatusOfFile(const std::wstring& path) {
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

} // namespace docview
