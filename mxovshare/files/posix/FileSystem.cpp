#include "files/FileSystem.h"

#include "common/Clock.h"
#include "common/LongPath.h"
#include "common/SystemError.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace mxovshare {

const DWORD kNoRoom = ENOSPC;

PathStatus StatusOfPath(const std::wstring& path) {
    struct stat about = {};
    if (stat(common::FilePath(path).c_str(), &about) != 0) {
        return {.error = common::LastError()};
    }
    return {.exists = true,
            .isFolder = S_ISDIR(about.st_mode),
            .size = static_cast<std::uint64_t>(about.st_size),
            .written = common::ToFileTime(about.st_mtim.tv_sec, about.st_mtim.tv_nsec)};
}

bool IsFolder(const std::wstring& path) {
    return StatusOfPath(path).isFolder;
}

DWORD MakeFolder(const std::wstring& path) {
    return mkdir(common::NewFilePath(path).c_str(), 0777) == 0 ? ERROR_SUCCESS : common::LastError();
}

void RemoveFolder(const std::wstring& path) {
    rmdir(common::FilePath(path).c_str());
}

void RemoveFile(const std::wstring& path) {
    unlink(common::FilePath(path).c_str());
}

std::optional<std::uint64_t> RoomIn(const std::wstring& folder) {
    struct statvfs about = {};
    if (statvfs(common::FilePath(folder).c_str(), &about) != 0) {
        return {};
    }
    return std::uint64_t{about.f_bavail} * about.f_frsize;
}

// No file is hidden but by its name.
common::UniqueHandle CreateNewFile(const std::wstring& path, bool /*isHidden*/, DWORD& error) {
    common::UniqueHandle file(
        open(common::NewFilePath(path).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
    error = file ? ERROR_SUCCESS : common::LastError();
    return file;
}

void SetWritten(HANDLE file, const FILETIME& written, bool /*isHidden*/) {
    const timespec time = common::ToTimeSpec(written);
    const timespec times[] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, time};
    futimens(file, times);
}

} // namespace mxovshare
